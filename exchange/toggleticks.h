// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QAbstractItemView;

/// For the space bar: ticks those of the chosen rows that have a box in a column, or takes their ticks away
/// when all of them are ticked. Without a chosen row it is the current one.
void toggleTicks(const QAbstractItemView& list, int column);
