// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answerrecords.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

/// One value is compared, so that the statement is compiled once for all.
QString isOneOf(const QString& field, const QStringList& values) {
    if (values.size() == 1)
        return field + u'=' + values[0];
    return field + u" in (" + values.join(u',') + u')';
}

} // namespace

AnswerRecords::AnswerRecords(bool scores, const std::set<QString>& respondentids,
                             const std::set<QDate>& dates)
    : isScore(scores) {
    if (respondentids.empty() || dates.empty())
        return;
    QStringList literals;
    for (const QDate& date : dates)
        literals << u'#' + toSqlDate(date) + u'#';
    // Of several answers to one question the first in this order counts.
    select = (isScore ? u"select * from feedbackobjective"_s : u"select * from feedbackdescriptive"_s) +
             u" where " + isOneOf(u"respondentid"_s, {respondentids.begin(), respondentids.end()}) +
             u" and " + isOneOf(u"surveydate"_s, literals) + u" order by " +
             (isScore ? u"weightage, score, feedbackobjid"_s : u"feedbackdescid"_s);
    read();
}

AnswerRecords::Key AnswerRecords::keyOf(const AnswerKeys& keys) {
    return {keys.respondentid.toInt(), keys.questionid.toInt(), keys.surveydate};
}

void AnswerRecords::read() {
    places.clear();
    begun.clear();
    records.Open(select, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
    const ado::Field respondentid = records["respondentid"];
    const ado::Field questionid = records["questionid"];
    const ado::Field surveydate = records["surveydate"];
    for (; !records.Eof(); records.MoveNext())
        places.try_emplace(
            {respondentid.Value().toInt(), questionid.Value().toInt(), surveydate.Value().toDate()},
            records.Bookmark());
}

bool AnswerRecords::find(const Key& key) {
    if (begun.contains(key))
        read(); // what was written to it is sent before
    const auto place = places.find(key);
    if (place == places.end())
        return false;
    records.setBookmark(place->second);
    return true;
}

bool AnswerRecords::begin(const AnswerKeys& keys) {
    const Key key = keyOf(keys);
    const bool isStored = find(key);
    begin(key, keys, isStored);
    return isStored;
}

void AnswerRecords::begin(const Key& key, const AnswerKeys& keys, bool isStored) {
    if (!isStored)
        records.AddNew();
    begun.insert(key);
    records["respondentid"] = keys.respondentid;
    records["questionid"] = keys.questionid;
    records["surveydate"] = keys.surveydate;
    records["surveyid"] = keys.surveyid;
}

std::optional<AnswerState> AnswerRecords::replace(const AnswerKeys& keys, int weightage,
                                                  const QVariant& content) {
    const Key key = keyOf(keys);
    std::optional<AnswerState> before;
    if (find(key))
        before = answerState(records, isScore);
    begin(key, keys, before.has_value());
    records["weightage"] = weightage;
    records[isScore ? "score" : "Description"] = content;
    records.Update();
    return before;
}
