// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/forms/listviewmodel.h"

#include <QCollator>
#include <QDate>
#include <QRegularExpression>
#include <QSize>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace forms {
namespace {

/// What the rows are sorted by; an invalid value for an empty text.
using Keys = std::vector<QVariant>;

/// The number of "12", "+0.25", "1,234" or "9.5 MB"; nothing for other texts.
QVariant numberOf(const QString& text) {
    static const QRegularExpression form(u"^([+-]?)(\\d[\\d,]*(?:\\.\\d+)?)(?: MB)?$"_s);
    const QRegularExpressionMatch match = form.match(text);
    const QString number = match.captured(1) + match.captured(2).remove(u',');
    return match.hasMatch() ? QVariant(number.toDouble()) : QVariant();
}

/// The seconds of "31/12/2026", "31/12/2026 23:59" or "31/12/2026 23:59:59"; nothing for other texts.
QVariant momentOf(const QString& text) {
    constexpr qsizetype dateSize = 10;
    constexpr double secondsPerDay = 86400;
    const QTime midnight(0, 0);
    const QDate date = QDate::fromString(text.left(dateSize), u"dd/MM/yyyy"_s);
    const QTime time =
        text.size() == dateSize ? midnight : QTime::fromString(text.mid(dateSize + 1), Qt::ISODate);
    return date.isValid() && time.isValid()
               ? QVariant(double(date.toJulianDay()) * secondsPerDay + midnight.secsTo(time))
               : QVariant();
}

/// False when a text of the column does not convert.
bool convert(const std::vector<QStringList>& rows, int column, QVariant (*keyOf)(const QString&),
             Keys& keys) {
    keys.assign(rows.size(), {});
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const QString text = rows[row].value(column);
        if (text.isEmpty())
            continue;
        keys[row] = keyOf(text);
        if (!keys[row].isValid())
            return false;
    }
    return true;
}

/// Numbers or moments if all texts of the column are some, else the texts.
Keys keysOf(const std::vector<QStringList>& rows, int column) {
    Keys keys;
    if (!convert(rows, column, numberOf, keys) && !convert(rows, column, momentOf, keys))
        convert(
            rows, column, [](const QString& text) { return QVariant(text); }, keys);
    return keys;
}

class Before {
public:
    Before(Keys columnKeys, Qt::SortOrder order)
        : keys(std::move(columnKeys)), isAscending(order == Qt::AscendingOrder) {
        texts.setCaseSensitivity(Qt::CaseInsensitive);
    }
    bool operator()(int left, int right) const {
        const QVariant& one = keys[std::size_t(left)];
        const QVariant& other = keys[std::size_t(right)];
        if (!one.isValid() || !other.isValid())
            return one.isValid() && !other.isValid();
        return isAscending ? isBefore(one, other) : isBefore(other, one);
    }

private:
    bool isBefore(const QVariant& one, const QVariant& other) const {
        return one.typeId() == QMetaType::Double ? one.toDouble() < other.toDouble()
                                                 : texts.compare(one.toString(), other.toString()) < 0;
    }

    Keys keys;
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
        std::stable_sort(order.begin(), order.end(), Before(keysOf(rows, sortColumn), direction));
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
