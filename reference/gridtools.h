// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <vector>

namespace forms {
class MSHFlexGrid;
}

/// Writes the headings into row 0, from column 1 on, centred. `shares` are the widths of the columns from 0
/// on, as fractions of the grid's width; 0 hides a column.
void setHeadsAndWidths(forms::MSHFlexGrid* grid, const QStringList& heads, const std::vector<double>& shares,
                       bool bold = true);

/// Leaves the header row and one empty row.
void emptyGrid(forms::MSHFlexGrid* grid);

/// The first row from 1 with a blank cell in a column; 0 if there is none.
int findBlank(const forms::MSHFlexGrid* grid, int column);
