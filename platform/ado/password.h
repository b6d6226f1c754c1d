// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ado {

class Session;

/// Stores a salted SHA-256 of the password in the database, in the table `database_password`. It prevents
/// mistakes, not attacks: the data itself is not encrypted.
void setPassword(Session& session, const QString& password);

/// Throws Failure with number::password ("Not a valid password.") when the database has another password. A
/// database without a password opens with any.
void requirePassword(Session& session, const QString& password);

} // namespace ado
