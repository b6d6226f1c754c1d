// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/failure/failure.h"

#include <optional>
#include <vector>

namespace chart {

/// The figures of a chart in rows and columns, both numbered from 1. A cell without a value is Null: nothing
/// is drawn for it. Fresh cells are Null. A cell outside the array throws Failure.
class DataArray {
public:
    explicit DataArray(int rows = 0, int columns = 0)
        : rowCount(rows), columnCount(columns),
          cells(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns)) {}

    int rows() const { return rowCount; }
    int columns() const { return columnCount; }
    std::optional<double>& at(int row, int column) { return cells[indexOf(row, column)]; }
    const std::optional<double>& at(int row, int column) const { return cells[indexOf(row, column)]; }

    /// The same cells in an array of another size; cells outside it are lost.
    DataArray resized(int rows, int columns) const {
        DataArray result(rows, columns);
        for (int row = 1; row <= std::min(rows, rowCount); ++row) {
            for (int column = 1; column <= std::min(columns, columnCount); ++column)
                result.at(row, column) = at(row, column);
        }
        return result;
    }

private:
    std::size_t indexOf(int row, int column) const {
        if (row < 1 || row > rowCount || column < 1 || column > columnCount)
            throw Failure::ofSubscript();
        return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(columnCount) +
               static_cast<std::size_t>(column - 1);
    }

    int rowCount;
    int columnCount;
    std::vector<std::optional<double>> cells;
};

} // namespace chart
