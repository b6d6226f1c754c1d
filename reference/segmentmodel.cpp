// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/segmentmodel.h"

#include <QFont>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString counted(qsizetype number, const QString& word) {
    return QString::number(number) + u' ' + word + (number == 1 ? u""_s : u"s"_s);
}

} // namespace

void SegmentModel::put(const QString& kind, std::vector<SegmentRow> stored) {
    const bool areSame = std::equal(
        rows.begin(), rows.end(), stored.begin(), stored.end(), [](const SegmentRow& a, const SegmentRow& b) {
            return a.name() == b.name() && a.custid == b.custid && a.respondentid == b.respondentid;
        });
    if (!areSame)
        beginResetModel();
    kindShown = kind;
    rows = std::move(stored);
    if (areSame) {
        Q_EMIT headerDataChanged(Qt::Horizontal, Group, Group);
        changed();
    } else {
        filter();
        endResetModel();
    }
}

void SegmentModel::search(const QString& text) {
    beginResetModel();
    searched = text;
    filter();
    endResetModel();
}

void SegmentModel::filter() {
    const auto has = [this](const QString& text) { return text.contains(searched, Qt::CaseInsensitive); };
    shown.clear();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (searched.isEmpty() || has(rows[i].customer) || has(rows[i].respondent))
            shown.push_back(int(i));
    }
}

void SegmentModel::changed() {
    if (!shown.empty())
        Q_EMIT dataChanged(index(0, Group), index(rowCount() - 1, Group));
}

void SegmentModel::setGroup(const std::vector<int>& shownRows, const QString& group) {
    for (const int row : shownRows)
        edits.set(kindShown, at(row), group);
    changed();
}

void SegmentModel::renameGroup(const QString& from, const QString& to) {
    for (const SegmentRow& row : rows) {
        if (edits.groupOf(kindShown, row).compare(from, Qt::CaseInsensitive) == 0)
            edits.set(kindShown, row, to);
    }
    changed();
}

const SegmentRow& SegmentModel::customerOf(int shownRow) const {
    auto row = rows.begin() + shown.at(std::size_t(shownRow));
    while (row->respondentid != 0)
        --row;
    return *row;
}

QString SegmentModel::groupAt(int shownRow) const {
    const QString& own = edits.groupOf(kindShown, at(shownRow));
    return own.isEmpty() ? edits.groupOf(kindShown, customerOf(shownRow)) : own;
}

QString SegmentModel::groupText(int shownRow) const {
    const QString& own = edits.groupOf(kindShown, at(shownRow));
    if (!own.isEmpty() || groupAt(shownRow).isEmpty())
        return own;
    return u'(' + groupAt(shownRow) + u')';
}

QStringList SegmentModel::groups() const {
    QStringList names;
    for (const SegmentRow& row : rows) {
        if (const QString& group = edits.groupOf(kindShown, row); !group.isEmpty())
            names << group;
    }
    return sortedOnce(names);
}

QString SegmentModel::summary() const {
    const auto customers = std::count_if(
        shown.begin(), shown.end(), [this](int row) { return rows[std::size_t(row)].respondentid == 0; });
    return counted(customers, u"customer"_s) + u" and " +
           counted(qsizetype(shown.size()) - customers, u"respondent"_s) +
           (searched.isEmpty() ? QString() : u" found"_s) +
           (edits.isEmpty() ? QString() : u", changes not saved"_s);
}

int SegmentModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(shown.size());
}

int SegmentModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Group + 1;
}

QVariant SegmentModel::data(const QModelIndex& index, int role) const {
    const SegmentRow& row = at(index.row());
    if (role == Qt::FontRole && index.column() == Group && edits.isChanged(kindShown, row)) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Customer:
        return row.customer;
    case Respondent:
        return row.respondentid == 0 ? u"all respondents"_s : row.respondent;
    default:
        return groupText(index.row());
    }
}

QVariant SegmentModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return QStringList{u"Customer"_s, u"Respondent"_s, kindShown}.value(section);
}
