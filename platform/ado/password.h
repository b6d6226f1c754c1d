// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ado {

class Session;

/// Keeps a salted SHA-256 of the password in the database, in a table of its own, `database_password`. It
/// keeps out mistakes and not attackers: the data itself is not encrypted.
void setPassword(Session& session, const QString& password);

/// Throws Failure number::password ("Not a valid password.") when the database is kept under another
/// password. A database without a password opens with any.
void requirePassword(Session& session, const QString& password);

} // namespace ado
