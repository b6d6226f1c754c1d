// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace ado {
class Connection;
}

/// The version of the stores that this program writes.
inline constexpr int storeVersion = 2;

/// Opens a connection. The store of a server must have this program's version, since only its administrator
/// can change that; a file is brought up to date at the start. Throws Failure, also recorded in the
/// connection's errors.
void openStore(ado::Connection& store);
