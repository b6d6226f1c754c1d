// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <vector>

namespace forms {

/// The rows of a ListView and its column heads.
class ListViewModel : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Pixels; 0 leaves it to the view.
    void setRowHeight(int height) { rowHeight = height; }
    void setHeads(const QStringList& columnHeads);
    void setRows(std::vector<QStringList> newRows);
    bool shows(const std::vector<QStringList>& otherRows) const { return rows == otherRows; }
    void addRow(const QStringList& row);
    /// Rows are numbered as they were set, places as they are shown; the same until the user sorts them.
    int rowAt(int place) const { return isPlace(place) ? order[std::size_t(place)] : -1; }
    QModelIndex indexOfRow(int row) const;
    /// Empty outside the list.
    QString text(int row, int column) const;
    /// By the values of a column: numbers (with sign, commas or MB), dates (dd/mm/yyyy, with or without the
    /// time) or texts, the rows without one at the end. A column below 0 restores the order in which they
    /// were set. Rows that are set later are sorted as well.
    void sort(int column, Qt::SortOrder sortOrder) override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QStringList heads;
    bool isPlace(int place) const { return place >= 0 && std::size_t(place) < order.size(); }
    void arrange();

    int rowHeight = 0;
    std::vector<QStringList> rows;
    std::vector<int> order; ///< the row at each place
    int sortColumn = -1;
    Qt::SortOrder direction = Qt::AscendingOrder;
};

} // namespace forms
