// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

/// Runs the filling of a work table, or other writes whose rows stay when a later one fails, as one
/// transaction on cnnMain, so that they cost one sync of the disk. When a step fails, what was written before
/// it is committed all the same and the failure is thrown on; when the commit fails, all of it is rolled back
/// and the commit's failure is thrown.
void toFillWorkTable(const std::function<void()>& fill);
void toWriteTogether(const std::function<void()>& write);
