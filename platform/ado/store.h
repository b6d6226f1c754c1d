// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ado {

/// Makes an empty file that its owner alone can read. False when it cannot be written.
bool makeOwnersFile(const QString& path);

/// Makes a new database file from a script of statements in the store's own SQL, separated by semicolons, and
/// puts it under the password. An older file of that path is replaced only when the new one is whole. Throws
/// Failure with the script's line in its description.
void createStore(const QString& path, const QByteArray& script, const QString& password);

} // namespace ado
