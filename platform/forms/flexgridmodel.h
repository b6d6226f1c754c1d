// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QColor>

#include <vector>

namespace forms {

/// The cells of a grid with its fixed row 0 and, where it has one, its fixed column 0. Views see the fixed
/// ones as headers.
class FlexGridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    struct Cell {
        QString text;
        bool centred = false;
        bool bold = false;
        QColor back; ///< invalid: the view's own
    };

    using QAbstractTableModel::QAbstractTableModel;

    int rows() const { return static_cast<int>(cells.size()); }
    int columns() const { return columnTotal; }
    int fixedColumns() const { return fixed; }
    void setRows(int count);
    void setColumns(int count, int fixedCount);
    void removeRow(int row);
    bool contains(int row, int column) const {
        return row >= 0 && row < rows() && column >= 0 && column < columnTotal;
    }
    const Cell& cell(int row, int column) const;
    /// Changes a cell; outside the grid nothing is changed.
    template <class Change> void change(int row, int column, Change what) {
        if (!contains(row, column))
            return;
        what(cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]);
        emitChanged(row, column);
    }
    /// The view's index of a cell; invalid for a fixed one.
    QModelIndex indexOf(int row, int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    using Row = std::vector<Cell>;
    void emitChanged(int row, int column);

    std::vector<Row> cells{std::vector<Row>(2, Row(2))};
    int columnTotal = 2;
    int fixed = 1;
};

} // namespace forms
