// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/responsesmodel.h"

#include "platform/ado/value.h"

#include <QTextDocument>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

std::pair<int, int> keyOf(const Response& response) {
    return {response.surveyid, response.respondentid};
}

/// Counts stand at the right.
QVariant alignmentOf(int column) {
    const bool isCount = column == ResponsesModel::Reminders;
    return QVariant::fromValue(Qt::Alignment((isCount ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
}

template <class Value> int compareValues(const Value& one, const Value& other) {
    return one < other ? -1 : int(other < one);
}

} // namespace

bool ResponsesModel::put(std::vector<Response> shown, const QDate& day) {
    const bool isSameDay = std::exchange(today, day) == day;
    sortRows(shown);
    if (shown == responses && isSameDay)
        return false;
    beginResetModel();
    responses = std::move(shown);
    std::set<std::pair<int, int>> kept;
    for (const Response& response : responses) {
        if (ticks.contains(keyOf(response)))
            kept.insert(keyOf(response));
    }
    ticks = std::move(kept);
    endResetModel();
    return true;
}

std::vector<Response> ResponsesModel::ticked() const {
    std::vector<Response> result;
    std::copy_if(responses.begin(), responses.end(), std::back_inserter(result),
                 [this](const Response& response) { return ticks.contains(keyOf(response)); });
    return result;
}

std::pair<int, int> ResponsesModel::keyAt(int row) const {
    return row < 0 || row >= rowCount() ? std::pair(0, 0) : keyOf(responses[std::size_t(row)]);
}

int ResponsesModel::rowOf(const std::pair<int, int>& key) const {
    const auto found = std::find_if(responses.begin(), responses.end(),
                                    [&](const Response& response) { return keyOf(response) == key; });
    return found == responses.end() ? -1 : int(found - responses.begin());
}

int ResponsesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(responses.size());
}

int ResponsesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns;
}

QVariant ResponsesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) // copying asks for the current cell even if there is none
        return {};
    const Response& shown = responses.at(std::size_t(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return textOf(shown, index.column());
    case Qt::CheckStateRole:
        return index.column() == Tick
                   ? QVariant(static_cast<int>(ticks.contains(keyOf(shown)) ? Qt::Checked : Qt::Unchecked))
                   : QVariant();
    case Qt::ToolTipRole:
        return Qt::convertFromPlainText(textOf(shown, index.column()));
    case Qt::TextAlignmentRole:
        return alignmentOf(index.column());
    default:
        return {};
    }
}

QString ResponsesModel::textOf(const Response& response, int column) const {
    switch (column) {
    case Customer:
        return response.customer;
    case Respondent:
        return response.respondent;
    case Date:
        return ado::toText(response.surveyDate);
    case HandedOver:
        return ado::toText(response.handedOver);
    case Due:
        return ado::toText(response.due);
    case State:
        return wordOf(response.state(today));
    case Reminders:
        return response.reminders > 0 ? QString::number(response.reminders) : QString();
    case LastReminder:
        return ado::toText(response.lastReminded);
    default:
        return {};
    }
}

bool ResponsesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !(flags(index) & Qt::ItemIsUserCheckable))
        return false;
    const std::pair<int, int> key = keyOf(responses.at(std::size_t(index.row())));
    if (value.toInt() == Qt::Checked)
        ticks.insert(key);
    else
        ticks.erase(key);
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags ResponsesModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
    return index.column() == Tick ? usual | Qt::ItemIsUserCheckable : usual;
}

QVariant ResponsesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    static const QStringList heads{
        u""_s,    u"Customer"_s, u"Respondent"_s, u"Survey Date"_s,  u"Handed Over"_s,
        u"Due"_s, u"State"_s,    u"Reminders"_s,  u"Last Reminder"_s};
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    if (role == Qt::AccessibleTextRole && section == Tick)
        return u"Ticked"_s;
    return role == Qt::DisplayRole ? QVariant(heads.value(section)) : QVariant();
}

void ResponsesModel::sort(int column, Qt::SortOrder order) {
    sortColumn = column;
    sortOrder = order;
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<std::pair<int, int>> chosen; // the rows that the view has marked, by their keys
    for (const QModelIndex& index : before)
        chosen.push_back(keyOf(responses[std::size_t(index.row())]));
    sortRows(responses);
    std::map<std::pair<int, int>, int> places;
    for (int row = 0; row < rowCount(); ++row)
        places[keyOf(responses[std::size_t(row)])] = row;
    for (qsizetype i = 0; i < before.size(); ++i)
        changePersistentIndex(before[i], index(places[chosen[std::size_t(i)]], before[i].column()));
    Q_EMIT layoutChanged();
}

void ResponsesModel::sortRows(std::vector<Response>& rows) const {
    if (sortColumn < 0)
        return;
    std::stable_sort(rows.begin(), rows.end(), [this](const Response& one, const Response& other) {
        const int compared = compare(one, other);
        return sortOrder == Qt::AscendingOrder ? compared < 0 : compared > 0;
    });
}

int ResponsesModel::compare(const Response& one, const Response& other) const {
    switch (sortColumn) {
    case Tick:
        return compareValues(ticks.contains(keyOf(other)), ticks.contains(keyOf(one))); // ticked ones first
    case Date:
        return compareValues(one.surveyDate, other.surveyDate);
    case HandedOver:
        return compareValues(one.handedOver, other.handedOver);
    case Due:
        return compareValues(one.due, other.due);
    case State:
        return compareValues(one.state(today), other.state(today));
    case Reminders:
        return compareValues(one.reminders, other.reminders);
    case LastReminder:
        return compareValues(one.lastReminded, other.lastReminded);
    default:
        return textOf(one, sortColumn).compare(textOf(other, sortColumn), Qt::CaseInsensitive);
    }
}
