// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/table.h"

class QAbstractItemView;

namespace forms {

/// What a grid, list or tree shows, column by column as on the screen: without hidden columns, a tick as Yes
/// or No, a node of a tree below its parents' texts. A list without a head is headed by its accessible
/// name.
tables::Table tableOf(const QAbstractItemView& view);

/// The marked cells, or the chosen rows with all their columns, without headings. Nothing marked: the whole
/// table.
tables::Table chosenIn(const QAbstractItemView& view);

} // namespace forms
