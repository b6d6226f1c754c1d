// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QString>

namespace ado {

/// Requests of SQLConfigDataSource.
enum DataSourceRequest { AddSystemSource = 4 };

/// Writes a data source into the user's registry of data sources, an ini file in the user's configuration
/// folder with a section for each source. AddSystemSource replaces the section; other requests fail. driver:
/// the driver's name and a NUL. attributes: "DSN=name", NUL, then for a file "DBQ=path", NUL, and for a
/// server "SERVER=host[:port],..." or "SOCKET=path", "DATABASE=name" and "UID=user", a NUL after each; for
/// hosts "SSLCA=path" may name the file of the authority that has signed their certificates, otherwise the
/// system's authorities are asked.
/// Returns 1 on success and 0 on failure; the name is then unresolved, since an older entry would lead to
/// another store.
int SQLConfigDataSource(int request, const QString& driver, const QString& attributes);

/// The attributes of a data source by their names in capitals; none when there is none of that name. An entry
/// that this program has written is valid for its whole run, even if another program rewrites it.
QMap<QString, QString> dataSource(const QString& name);

/// Path of the registry.
QString dataSourceRegistry();

} // namespace ado
