// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/flexgridmodel.h"

#include <QFont>

namespace forms {
namespace {

QVariant valueOf(const FlexGridModel::Cell& cell, int role) {
    switch (role) {
    case Qt::DisplayRole:
        return cell.text;
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(
            Qt::Alignment(cell.centred ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter));
    case Qt::FontRole: {
        QFont font;
        font.setBold(cell.bold);
        return font;
    }
    case Qt::BackgroundRole:
        return cell.back.isValid() ? QVariant(cell.back) : QVariant();
    case Qt::ForegroundRole: // keeps the text of a coloured cell readable in a dark theme
        return cell.back.isValid() ? QVariant(QColor(Qt::black)) : QVariant();
    default:
        return {};
    }
}

} // namespace

void FlexGridModel::setRows(int count) {
    count = qMax(1, count);
    const int before = rows();
    if (count > before) {
        beginInsertRows({}, before - 1, count - 2);
        cells.resize(static_cast<std::size_t>(count), Row(static_cast<std::size_t>(columnTotal)));
        endInsertRows();
    } else if (count < before) {
        beginRemoveRows({}, count - 1, before - 2);
        cells.resize(static_cast<std::size_t>(count));
        endRemoveRows();
    }
}

void FlexGridModel::setColumns(int count, int fixedCount) {
    beginResetModel();
    columnTotal = count;
    fixed = fixedCount;
    for (Row& row : cells)
        row.resize(static_cast<std::size_t>(count));
    endResetModel();
}

void FlexGridModel::removeRow(int row) {
    if (row < 1 || row >= rows())
        return;
    beginRemoveRows({}, row - 1, row - 1);
    cells.erase(cells.begin() + row);
    endRemoveRows();
}

const FlexGridModel::Cell& FlexGridModel::cell(int row, int column) const {
    static const Cell outside;
    return contains(row, column) ? cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]
                                 : outside;
}

void FlexGridModel::emitChanged(int row, int column) {
    if (row == 0) {
        if (column >= fixed)
            Q_EMIT headerDataChanged(Qt::Horizontal, column - fixed, column - fixed);
    } else if (column < fixed) {
        Q_EMIT headerDataChanged(Qt::Vertical, row - 1, row - 1);
    } else {
        const QModelIndex changed = indexOf(row, column);
        Q_EMIT dataChanged(changed, changed);
    }
}

QModelIndex FlexGridModel::indexOf(int row, int column) const {
    return row >= 1 && column >= fixed && contains(row, column) ? index(row - 1, column - fixed)
                                                                : QModelIndex();
}

int FlexGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows() - 1;
}

int FlexGridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columnTotal - fixed;
}

QVariant FlexGridModel::data(const QModelIndex& index, int role) const {
    return index.isValid() ? valueOf(cell(index.row() + 1, index.column() + fixed), role) : QVariant();
}

QVariant FlexGridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal)
        return valueOf(cell(0, section + fixed), role);
    return valueOf(cell(section + 1, 0), role);
}

} // namespace forms
