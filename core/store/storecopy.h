// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace ado {
class Connection;
}

/// Replaces the rows of all tables of a store by those of another one of the same version, in one transaction
/// on each side: what is copied is one state of the source, and the target changes wholly or not at all. Keys
/// and the order of entry are kept; work tables are left out. Throws Failure, also when a table has another
/// number of rows afterwards.
void copyAllRows(ado::Connection& from, ado::Connection& to);
