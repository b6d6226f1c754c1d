// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/listviewmodel.h"

#include <QSize>

namespace forms {

void ListViewModel::setHeads(const QStringList& columnHeads) {
    beginResetModel();
    heads = columnHeads;
    rows.clear();
    endResetModel();
}

void ListViewModel::setRows(std::vector<QStringList> newRows) {
    beginResetModel();
    rows = std::move(newRows);
    endResetModel();
}

void ListViewModel::addRow(const QStringList& row) {
    beginInsertRows({}, rowCount(), rowCount());
    rows.push_back(row);
    endInsertRows();
}

QString ListViewModel::text(int row, int column) const {
    return row >= 0 && row < rowCount() ? rows[static_cast<std::size_t>(row)].value(column) : QString();
}

int ListViewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

int ListViewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(heads.size());
}

QVariant ListViewModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::SizeHintRole && rowHeight > 0)
        return QSize(0, rowHeight);
    return role == Qt::DisplayRole ? QVariant(text(index.row(), index.column())) : QVariant();
}

QVariant ListViewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    return role == Qt::DisplayRole ? QVariant(heads.value(section)) : QVariant();
}

} // namespace forms
