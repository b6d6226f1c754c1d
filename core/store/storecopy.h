// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <functional>

namespace ado {
class Connection;
}

/// Called before each thousand rows with the name of their table; false cancels.
using CopyStep = std::function<bool(const QString& table)>;

/// How often copyAllRows calls its step.
int countCopySteps(ado::Connection& from);

/// Replaces the rows of all tables of a store by those of another one of the same version, in one transaction
/// on each side: what is copied is one state of the source, and the target changes wholly or not at all.
/// Keys, those given to deleted rows too, and the order of entry are kept; work tables are left out. Throws
/// Failure, also when a table has another number of rows afterwards. False when `step` has cancelled.
bool copyAllRows(ado::Connection& from, ado::Connection& to, const CopyStep& step = {});
