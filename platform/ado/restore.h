// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ado {

/// Replaces the content of a database file by that of another one, as one transaction: other programs that
/// have it open see the old content or the new one. Throws Failure, with the file unchanged; also when
/// another program has locked it.
void restoreStore(const QString& path, const QString& from);

} // namespace ado
