// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ado {

/// Requests of SQLConfigDataSource.
enum DataSourceRequest { AddSystemSource = 4 };

/// Writes a data source into the user's registry of data sources, an ini file in the user's configuration
/// folder with a section for each source. AddSystemSource replaces the section; other requests fail. driver:
/// the driver's name and a NUL. attributes: "DSN=name", NUL, "DBQ=path", NUL. Returns 1 on success and 0 on
/// failure; the name is then unresolved, since an older entry would lead to another file.
int SQLConfigDataSource(int request, const QString& driver, const QString& attributes);

/// The database file of a data source; empty when there is none of that name. An entry that this program has
/// written is valid for its whole run, even if another program rewrites it.
QString dataSourcePath(const QString& name);

/// Path of the registry.
QString dataSourceRegistry();

} // namespace ado
