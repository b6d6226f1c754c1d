// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/store/segments.h"

#include "core/store/store.h"
#include "platform/ado/session.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The groups of a kind by customer and respondent.
using Groups = std::map<std::pair<int, int>, QString>;

Groups readGroups(const QString& kind) {
    Groups groups;
    ado::Recordset stored(u"select custid, respondentid, name from segment where kind='"_s + kind +
                              u"' order by name",
                          *cnnMain);
    const ado::Field custid = stored["custid"];
    const ado::Field respondentid = stored["respondentid"];
    const ado::Field name = stored["name"];
    for (; !stored.Eof(); stored.MoveNext())
        groups[{custid.Value().toInt(), respondentid.Value().toInt()}] = name.Text();
    return groups;
}

QString groupOf(const Groups& groups, const SegmentRow& row) {
    const auto found = groups.find({row.custid, row.respondentid});
    return found == groups.end() ? QString() : found->second;
}

void removeGroups(const QString& condition, const QStringList& ids) {
    constexpr qsizetype mostAtOnce = 500; // a statement takes only so many
    for (qsizetype first = 0; first < ids.size(); first += mostAtOnce)
        cnnMain->Execute(u"delete * from segment where "_s + condition + u" in (" +
                         ids.mid(first, mostAtOnce).join(u',') + u')');
}

} // namespace

QString SegmentRow::name() const {
    return respondentid == 0 ? customer : respondent + u" of "_s + customer;
}

bool hasSegmentTable() {
    return cnnMain->session()->isTable(u"segment"_s);
}

QStringList sortedOnce(QStringList texts) {
    const auto compare = [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive); };
    std::stable_sort(texts.begin(), texts.end(),
                     [&](const QString& a, const QString& b) { return compare(a, b) < 0; });
    texts.erase(std::unique(texts.begin(), texts.end(),
                            [&](const QString& a, const QString& b) { return compare(a, b) == 0; }),
                texts.end());
    return texts;
}

QStringList readSegmentKinds() {
    QStringList kinds;
    ado::Recordset stored(u"select distinct kind from segment where exists "
                          "(select 1 from customer where customer.custid=segment.custid) and "
                          "(respondentid is null or exists (select 1 from respondent "
                          "where respondent.respondentid=segment.respondentid))"_s,
                          *cnnMain);
    for (; !stored.Eof(); stored.MoveNext())
        kinds << stored["kind"].Text();
    return sortedOnce(kinds);
}

std::vector<SegmentRow> readSegmentRows(const QString& kind) {
    const Groups groups = readGroups(kind);
    std::map<int, std::vector<SegmentRow>> respondents; // by customer
    ado::Recordset stored(
        u"select custid, respondentid, respondentname from respondent order by respondentid"_s, *cnnMain);
    const ado::Field ownerid = stored["custid"];
    const ado::Field respondentid = stored["respondentid"];
    const ado::Field respondentname = stored["respondentname"];
    for (; !stored.Eof(); stored.MoveNext())
        respondents[ownerid.Value().toInt()].push_back(
            {ownerid.Value().toInt(), respondentid.Value().toInt(), {}, respondentname.Text(), {}});

    std::vector<SegmentRow> rows;
    ado::Recordset customers(u"select custid, custname from customer order by custid"_s, *cnnMain);
    const ado::Field custid = customers["custid"];
    const ado::Field custname = customers["custname"];
    for (; !customers.Eof(); customers.MoveNext()) {
        const QString customer = custname.Text();
        rows.push_back({custid.Value().toInt(), 0, customer, {}, {}});
        for (SegmentRow& row : respondents[custid.Value().toInt()]) {
            row.customer = customer;
            rows.push_back(std::move(row));
        }
    }
    for (SegmentRow& row : rows)
        row.group = groupOf(groups, row);
    return rows;
}

void writeSegments(const QString& kind, const std::vector<SegmentChange>& changes) {
    QStringList customers;
    QStringList respondents;
    for (const SegmentChange& change : changes)
        (change.respondentid == 0 ? customers : respondents)
            << QString::number(change.respondentid == 0 ? change.custid : change.respondentid);
    const QString ofKind = u"kind='"_s + kind + u"' and ";
    removeGroups(ofKind + u"respondentid is null and custid", customers);
    removeGroups(ofKind + u"respondentid", respondents);
    ado::Recordset added(u"select * from segment"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    for (const SegmentChange& change : changes) {
        if (change.group.isEmpty())
            continue;
        added.AddNew();
        added["custid"] = change.custid;
        if (change.respondentid != 0)
            added["respondentid"] = change.respondentid;
        added["kind"] = kind;
        added["name"] = change.group;
        added.Update();
    }
}

std::map<int, QString> groupsOfRespondents(const std::vector<SegmentRow>& rows) {
    std::map<int, QString> groups;
    QString ofCustomer;
    for (const SegmentRow& row : rows) {
        if (row.respondentid == 0)
            ofCustomer = row.group;
        else if (const QString& group = row.group.isEmpty() ? ofCustomer : row.group; !group.isEmpty())
            groups[row.respondentid] = group;
    }
    return groups;
}
