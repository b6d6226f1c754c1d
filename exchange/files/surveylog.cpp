// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveylog.h"

#include "core/store/store.h"
#include "core/store/textlookup.h"
#include "exchange/files/filenames.h"

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

void resetLogStatus(const SurveyKey& survey) {
    ado::Recordset log(u"select * from log where respid="_s + QString::number(survey.respondentid) +
                           u" and sdate=#" + toSqlDate(survey.date) + u"#",
                       *cnnMain, Lock::Optimistic);
    if (log.Eof() || log["Status"].Value() == QVariant(false))
        return;
    log["Status"] = false;
    log.Update();
}

void writeLogRow(const SurveyContext& survey, const SurveyKey& key, const QString& fileName) {
    ado::Recordset log(u"select * from log where custname='"_s + survey.customer + u"' and respname='" +
                           survey.respondent + u"' and xlsfilename='" + fileName + u"' and sdate=#" +
                           toSqlDate(key.date) + u"#",
                       *cnnMain, Lock::Optimistic);
    if (log.Eof())
        log.AddNew();
    log["custname"] = survey.customer;
    log["respname"] = survey.respondent;
    log["xlsfilename"] = fileName;
    log["sdate"] = key.date;
    if (key.surveyid != 0)
        log["surveyid"] = key.surveyid;
    log["respid"] = key.respondentid;
    log.Update();
}

namespace {

std::optional<bool> markLogRow(const QString& fileName, bool isReadIn) {
    ado::Recordset log(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain,
                       Lock::Optimistic);
    if (log.Eof())
        return std::nullopt;
    const bool before = log["Status"].Value().toBool();
    log["Status"] = isReadIn;
    log.Update();
    return before;
}

} // namespace

std::optional<bool> setLogStatus(const QString& fileName) {
    return markLogRow(fileName, true);
}

void toDeleteLogRow(const QString& fileName) {
    cnnMain->Execute(u"delete * from log where "_s + conditionOfTitle(fileName));
}

namespace {

LogRow logRow(ado::Recordset& log) {
    return {log["custname"].Text(), log["respname"].Text(), log["respid"].Text(), log["surveyid"].Text(),
            log["sdate"].Value().toDate()};
}

} // namespace

std::vector<LogRow> findLogRows(const QString& fileName) {
    std::vector<LogRow> rows;
    ado::Recordset log(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain);
    for (; !log.Eof(); log.MoveNext())
        rows.push_back(logRow(log));
    return rows;
}

QStringList differencesFrom(const std::vector<LogRow>& registered, const AnswerKeys& keys) {
    QStringList first;
    for (const LogRow& row : registered) {
        QStringList differing;
        if (!row.respid.isEmpty() && row.respid != keys.respondentid)
            differing << u"I2: respondent %1, in the register %2"_s.arg(keys.respondentid, row.respid);
        if (row.sdate.isValid() && row.sdate != keys.surveydate)
            differing << u"I3: date %1, in the register %2"_s.arg(
                keys.surveydate.toString(ado::dateTextFormat), row.sdate.toString(ado::dateTextFormat));
        if (!row.surveyid.isEmpty() && row.surveyid != keys.surveyid)
            differing << u"I5: survey %1, in the register %2"_s.arg(keys.surveyid, row.surveyid);
        if (differing.isEmpty())
            return {};
        if (first.isEmpty())
            first = differing;
    }
    return first;
}

RegisterRows::RegisterRows(const QStringList& titles) {
    QStringList asked;
    for (const QString& title : titles) {
        for (const QString& possible : QStringList(title) + titlesHandedOut(title))
            asked << toStoredText(possible);
    }
    isRead = !areConfusable(asked) && read(asked);
}

/// False when the store found a row by another name than those asked for.
bool RegisterRows::read(const QStringList& asked) {
    QStringList names;
    for (const QString& name : asked) {
        names << name;
        if (name.contains(u'\u2019')) // registered before apostrophes were replaced
            names << QString(name).replace(u'\u2019', u"''"_s);
    }
    rows.Open(u"select * from log where xlsfilename in ("_s + toSqlTexts(names) + u") order by rowid",
              *cnnMain, Lock::BatchOptimistic);
    for (; !rows.Eof(); rows.MoveNext()) {
        const QString name = toStoredText(rows["xlsfilename"].Text());
        if (!asked.contains(name))
            return false;
        places[name].push_back(rows.Bookmark());
    }
    return true;
}

QString RegisterRows::registeredTitle(const QString& title) const {
    if (!isRead)
        return findRegisteredTitle(title);
    for (const QString& possible : QStringList(title) + titlesHandedOut(title)) {
        if (places.contains(toStoredText(possible)))
            return possible;
    }
    return title;
}

std::optional<bool> RegisterRows::mark(const QString& fileName, bool isReadIn) {
    if (!isRead)
        return markLogRow(fileName, isReadIn);
    const auto place = places.find(toStoredText(fileName));
    if (place == places.end())
        return std::nullopt;
    rows.setBookmark(place->second.front());
    const bool before = rows["Status"].Value().toBool();
    rows["Status"] = isReadIn;
    rows.Update();
    return before;
}

bool RegisterRows::isMarked(const QString& fileName) {
    if (isRead) {
        const auto place = places.find(toStoredText(fileName));
        if (place != places.end())
            rows.setBookmark(place->second.front());
        return place != places.end() && rows["Status"].Value().toBool();
    }
    ado::Recordset log(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain);
    return !log.Eof() && log["Status"].Value().toBool();
}

std::vector<LogRow> RegisterRows::rowsOf(const QString& fileName) {
    if (!isRead)
        return findLogRows(fileName);
    std::vector<LogRow> found;
    if (const auto place = places.find(toStoredText(fileName)); place != places.end()) {
        for (const std::size_t bookmark : place->second) {
            rows.setBookmark(bookmark);
            found.push_back(logRow(rows));
        }
    }
    return found;
}
