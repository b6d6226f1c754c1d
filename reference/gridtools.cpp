// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/gridtools.h"

#include "platform/forms/flexgrid.h"

#include <cmath>

void setHeadsAndWidths(forms::MSHFlexGrid* grid, const QStringList& heads, const std::vector<double>& shares,
                       bool bold) {
    grid->setCols(static_cast<int>(shares.size()));
    for (std::size_t i = 0; i < shares.size(); ++i)
        grid->setColWidth(static_cast<int>(i),
                          static_cast<int>(std::nearbyint(grid->gridWidth() * shares[i])));
    const int row = grid->Row();
    const int col = grid->Col();
    for (int i = 1; i < grid->Cols(); ++i) {
        grid->setTextMatrix(0, i, heads.value(i - 1));
        grid->moveTo(0, i);
        grid->setCellAlignment(forms::MSHFlexGrid::centred);
        grid->setCellFontBold(bold);
    }
    grid->moveTo(row, col);
}

void emptyGrid(forms::MSHFlexGrid* grid) {
    grid->setRows(2);
    for (int i = 1; i < grid->Cols(); ++i)
        grid->setTextMatrix(1, i, {});
}

int findBlank(const forms::MSHFlexGrid* grid, int column) {
    for (int row = 1; row < grid->Rows(); ++row) {
        if (grid->TextMatrix(row, column).trimmed().isEmpty())
            return row;
    }
    return 0;
}
