// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/listviewmodel.h"

#include "platform/tables/table.h"

#include <QCollator>
#include <QDate>
#include <QSize>

#include <algorithm>
#include <numeric>

namespace forms {
namespace {

/// The values of a column, by row.
std::vector<QVariant> valuesOf(const std::vector<QStringList>& rows, int column) {
    tables::Table table;
    table.headings << QString();
    for (const QStringList& row : rows)
        table.rows.push_back({row.value(column)});
    tables::recogniseColumns(table);
    std::vector<QVariant> values;
    for (const QVariantList& row : table.rows)
        values.push_back(row[0].toString().isEmpty() ? QVariant() : row[0]);
    return values;
}

class Before {
public:
    Before(std::vector<QVariant> columnValues, Qt::SortOrder order)
        : values(std::move(columnValues)), isAscending(order == Qt::AscendingOrder) {
        texts.setCaseSensitivity(Qt::CaseInsensitive);
    }
    bool operator()(int left, int right) const {
        const QVariant& one = values[std::size_t(left)];
        const QVariant& other = values[std::size_t(right)];
        if (!one.isValid() || !other.isValid())
            return one.isValid() && !other.isValid();
        const int difference = compare(one, other);
        return isAscending ? difference < 0 : difference > 0;
    }

private:
    int compare(const QVariant& one, const QVariant& other) const {
        switch (tables::kindOf(one)) {
        case tables::Kind::Number:
            return one.toDouble() < other.toDouble() ? -1 : int(one.toDouble() > other.toDouble());
        case tables::Kind::Date:
            return int(other.toDate().daysTo(one.toDate()));
        default:
            return texts.compare(one.toString(), other.toString());
        }
    }

    std::vector<QVariant> values;
    bool isAscending;
    QCollator texts;
};

} // namespace

void ListViewModel::setHeads(const QStringList& columnHeads) {
    beginResetModel();
    heads = columnHeads;
    rows.clear();
    order.clear();
    endResetModel();
}

void ListViewModel::setRows(std::vector<QStringList> newRows) {
    beginResetModel();
    rows = std::move(newRows);
    arrange();
    endResetModel();
}

void ListViewModel::addRow(const QStringList& row) {
    beginInsertRows({}, rowCount(), rowCount());
    order.push_back(rowCount());
    rows.push_back(row);
    endInsertRows();
}

QModelIndex ListViewModel::indexOfRow(int row) const {
    if (sortColumn < 0)
        return index(row, 0);
    const auto place = std::find(order.begin(), order.end(), row);
    return place == order.end() ? QModelIndex() : index(int(place - order.begin()), 0);
}

void ListViewModel::arrange() {
    order.resize(rows.size());
    std::iota(order.begin(), order.end(), 0);
    if (sortColumn >= 0)
        std::stable_sort(order.begin(), order.end(), Before(valuesOf(rows, sortColumn), direction));
}

void ListViewModel::sort(int column, Qt::SortOrder sortOrder) {
    sortColumn = column;
    direction = sortOrder;
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<int> itsRows;
    for (const QModelIndex& index : before)
        itsRows.push_back(rowAt(index.row()));
    arrange();
    std::vector<int> places(order.size());
    for (std::size_t place = 0; place < order.size(); ++place)
        places[std::size_t(order[place])] = int(place);
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after << index(places[std::size_t(itsRows[std::size_t(i)])], before[i].column());
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged();
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
    return role == Qt::DisplayRole ? QVariant(text(rowAt(index.row()), index.column())) : QVariant();
}

QVariant ListViewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    return role == Qt::DisplayRole ? QVariant(heads.value(section)) : QVariant();
}

} // namespace forms
