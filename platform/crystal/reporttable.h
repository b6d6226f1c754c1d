// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/crystal/report.h"
#include "platform/tables/table.h"

namespace crystal {

/// The rows of a report with the texts of their groups in front, headed by the labels of groups and columns.
/// Means are left out; texts that equal those of the row above are not.
tables::Table tableOf(const Report& report);

} // namespace crystal
