// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/handover.h"

#include "core/base/changedrow.h"
#include "core/base/gblGlobal.h"
#include "core/store/transaction.h"

#include <algorithm>
#include <map>
#include <set>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

using Key = std::pair<int, int>; // surveyid, respondentid

const QString handedOverField = u"Handed Over"_s;
const QString dueField = u"Due"_s;

Key keyIn(ado::Recordset& records) {
    return {records["surveyid"].Value().toInt(), records["respondentid"].Value().toInt()};
}

/// The survey dates of the rows, for one select however many rows there are.
QString datesOf(const std::vector<Response>& responses) {
    const auto [first, last] =
        std::minmax_element(responses.begin(), responses.end(), [](const auto& one, const auto& other) {
            return one.surveyDate < other.surveyDate;
        });
    return u"sdate between #"_s + toSqlDate(first->surveyDate) + u"# and #" + toSqlDate(last->surveyDate) +
           u'#';
}

/// The stored rows of dispatch.
class StoredDates {
public:
    explicit StoredDates(const std::vector<Response>& responses)
        : records(u"select * from dispatch where surveyid in (select surveyid from survey where "_s +
                      datesOf(responses) + u") order by dispatchid",
                  *cnnMain, Lock::BatchOptimistic) {
        for (; !records.Eof(); records.MoveNext())
            places.emplace(keyIn(records), records.Bookmark());
    }

    /// What someone else has changed since the row was read and the user changes too.
    ChangedRow changedMeanwhile(const Response& read, const HandOverDates& dates) {
        ChangedRow changed{u"Respondent: "_s + read.name(), {}};
        if (!go(read))
            return changed;
        if (dates.handedOver.isValid())
            addIfChanged(changed, {handedOverField, ado::toText(read.handedOver),
                                   records["handedover"].Text(), ado::toText(dates.handedOver)});
        addIfChanged(changed,
                     {dueField, ado::toText(read.due), records["due"].Text(), ado::toText(dates.due)});
        return changed;
    }

    void write(const Response& read, const HandOverDates& dates, const Settlement& settlement,
               const QString& key) {
        const bool isStored = go(read);
        if (!isStored)
            addRow(read, dates);
        const auto set = [&](const char* column, const QString& field, const QDate& before,
                             const QDate& mine) {
            if ((mine != before || !isStored) && !settlement.isLeft(key, field))
                records[column] = mine;
        };
        if (dates.handedOver.isValid())
            set("handedover", handedOverField, read.handedOver, dates.handedOver);
        set("due", dueField, read.due, dates.due);
        const QDate handedOver = records["handedover"].Value().toDate();
        if (records["due"].Value().toDate() < handedOver)
            throw Refusal(read.name() + u" was handed over on " + ado::toText(handedOver) +
                          u", after the due date. Nothing has been changed.");
        records.Update();
    }

private:
    bool go(const Response& response) {
        const auto place = places.find({response.surveyid, response.respondentid});
        if (place != places.end())
            records.setBookmark(place->second);
        return place != places.end();
    }

    void addRow(const Response& response, const HandOverDates& dates) {
        if (!dates.handedOver.isValid())
            throw Refusal(response.name() +
                          u" is no longer in the database as handed over. Nothing has been changed.");
        records.AddNew();
        records["custid"] = response.custid;
        records["respondentid"] = response.respondentid;
        records["surveyid"] = response.surveyid;
    }

    ado::Recordset records;
    std::map<Key, std::size_t> places;
};

void requireQuestionnaires(const std::vector<Response>& responses) {
    std::set<Key> stored;
    ado::Recordset records(u"select surveyid, respondentid from existingsurvey where "_s + datesOf(responses),
                           *cnnMain);
    for (; !records.Eof(); records.MoveNext())
        stored.insert(keyIn(records));
    for (const Response& response : responses) {
        if (!stored.contains({response.surveyid, response.respondentid}))
            throw Refusal(u"The questionnaire of "_s + response.name() +
                          u" is no longer in the database. Nothing has been changed.");
    }
}

QString textOf(const Response& response) {
    return QString::number(response.surveyid) + u'|' + QString::number(response.respondentid);
}

} // namespace

bool writeHandOver(const std::vector<Response>& responses, const HandOverDates& dates) {
    if (responses.empty())
        return false;
    Settlement settlement;
    const bool isRead = guarded([&] {
        StoredDates stored(responses);
        for (const Response& response : responses)
            settlement.note(textOf(response), stored.changedMeanwhile(response, dates));
    });
    return isRead && settlement.ask() && guarded([&] {
               Transaction transaction;
               requireQuestionnaires(responses);
               StoredDates stored(responses);
               for (const Response& response : responses)
                   settlement.require(textOf(response), stored.changedMeanwhile(response, dates));
               for (const Response& response : responses)
                   stored.write(response, dates, settlement, textOf(response));
               transaction.Commit();
           });
}
