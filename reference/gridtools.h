// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <vector>

namespace forms {
class MSHFlexGrid;
}

/// Writes the heads into row 0, centred and, unless told otherwise, bold, from column 1 on, and gives each
/// column from 0 on its share of the grid's width; 0 hides the column.
void setHeadsAndWidths(forms::MSHFlexGrid* grid, const QStringList& heads, const std::vector<double>& shares,
                       bool bold = true);

/// Two rows, the cells of row 1 empty.
void emptyGrid(forms::MSHFlexGrid* grid);

/// The first row from 1 whose cell of that column is blank; 0 when there is none.
int findBlank(const forms::MSHFlexGrid* grid, int column);
