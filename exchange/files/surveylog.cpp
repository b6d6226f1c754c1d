// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveylog.h"

#include "core/store/store.h"
#include "exchange/files/filenames.h"

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

void resetLogStatus(const SurveyKey& survey) {
    ado::Recordset log(u"select * from log where respid="_s + QString::number(survey.respondentid) +
                           u" and sdate=#" + toSqlDate(survey.date) + u"#",
                       *cnnMain, Lock::Optimistic);
    if (log.Eof())
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

bool isMarkedReadIn(const QString& fileName) {
    ado::Recordset log(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain);
    return !log.Eof() && log["Status"].Value().toBool();
}

void takeLogStatus(const QString& fileName) {
    markLogRow(fileName, false);
}

void toDeleteLogRow(const QString& fileName) {
    cnnMain->Execute(u"delete * from log where "_s + conditionOfTitle(fileName));
}

std::vector<LogRow> findLogRows(const QString& fileName) {
    std::vector<LogRow> rows;
    ado::Recordset log(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain);
    for (; !log.Eof(); log.MoveNext())
        rows.push_back({log["custname"].Text(), log["respname"].Text(), log["respid"].Text(),
                        log["surveyid"].Text(), log["sdate"].Value().toDate()});
    return rows;
}

QStringList findDifferencesFromRegister(const QString& fileName, const AnswerKeys& keys) {
    QStringList first;
    for (const LogRow& row : findLogRows(fileName)) {
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
