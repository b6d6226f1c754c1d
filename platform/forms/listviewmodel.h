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
    /// Empty outside the list.
    QString text(int row, int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QStringList heads;
    int rowHeight = 0;
    std::vector<QStringList> rows;
};

} // namespace forms
