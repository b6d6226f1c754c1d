// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ado {

class Connection;

/// Creates an empty file that only its owner can read. False when it cannot be written.
bool makeOwnersFile(const QString& path);

/// Creates a new database file with the password from a script of statements in the store's own SQL,
/// separated by semicolons. An existing file is replaced only when the new one is complete. Throws Failure
/// with the script's line in its description.
void createStore(const QString& path, const QByteArray& script, const QString& password);

/// Runs such a script on an open connection in one transaction: all of it or, after a failure, nothing.
/// Throws Failure as createStore does.
void runScript(Connection& connection, const QByteArray& script);

} // namespace ado
