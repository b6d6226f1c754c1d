// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <vector>

namespace ado {
class Recordset;
}
namespace forms {
class MSHFlexGrid;
}

/// Writes the heads into row 0, centred and, unless told otherwise, bold, from column 1 on, and gives each
/// column from 0 on its share of the grid's width; 0 hides the column.
void toSetHeadsAndWidths(forms::MSHFlexGrid* grid, const QStringList& heads,
                         const std::vector<double>& shares, bool bold = true);

/// Two rows, the cells of row 1 empty.
void toEmptyGrid(forms::MSHFlexGrid* grid);

/// One grid row a record, its fields in columns 1 onward. A Null or empty field empties its cell: what the
/// cell held belongs to the row's earlier owner.
void toFillGridFrom(forms::MSHFlexGrid* grid, ado::Recordset& records,
                    const std::vector<const char*>& fields);

/// The first row from 1 whose cell of that column is blank; 0 when there is none.
int toFindBlank(const forms::MSHFlexGrid* grid, int column);

/// The key in a column of the current row; empty for a row that is not stored.
QString currentKey(const forms::MSHFlexGrid* grid, int keyColumn);

/// Puts the cursor on the row with that key, since a reload may have moved it; stays for a key that the grid
/// does not hold.
void goToKey(forms::MSHFlexGrid* grid, int keyColumn, const QString& key);
