// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/surveylog.h"

#include "core/store/store.h"
#include "exchange/files/filenames.h"

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

void resetLogStatus(const QString& respondentid, const QString& date) {
    if (respondentid.isEmpty())
        return;
    ado::Recordset log;
    log.Open(u"select * from log where respid="_s + respondentid + u" and sdate=#" + toSqlDate(toDate(date)) +
                 u"#",
             *cnnMain, Lock::Optimistic);
    if (log.Eof())
        return;
    log["Status"] = false;
    log.Update();
}

void writeLogRow(const SurveyContext& survey, const QString& fileName) {
    const QDate date = toDate(survey.date);
    const QString surveyid = findSurvey(survey.date, survey.customer);
    const QString respid = requireRespondent(survey);
    ado::Recordset log;
    log.Open(u"select * from log where custname='"_s + survey.customer + u"' and respname='" +
                 survey.respondent + u"' and xlsfilename='" + fileName + u"' and sdate=#" + toSqlDate(date) +
                 u"#",
             *cnnMain, Lock::Optimistic);
    if (log.Eof())
        log.AddNew();
    log["custname"] = survey.customer;
    log["respname"] = survey.respondent;
    log["xlsfilename"] = fileName;
    log["sdate"] = date;
    if (!surveyid.isEmpty())
        log["surveyid"] = surveyid;
    log["respid"] = respid;
    log.Update();
}

void setLogStatus(const QString& fileName) {
    ado::Recordset log;
    log.Open(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain, Lock::Optimistic);
    if (log.Eof())
        return;
    log["Status"] = true;
    log.Update();
}

std::vector<LogRow> findLogRows(const QString& fileName) {
    std::vector<LogRow> rows;
    ado::Recordset log;
    log.Open(u"select * from log where "_s + conditionOfTitle(fileName), *cnnMain);
    for (; !log.Eof(); log.MoveNext())
        rows.push_back({log["custname"].Text(), log["respname"].Text(), log["respid"].Text(),
                        log["surveyid"].Text(), log["sdate"].Value().toDate()});
    return rows;
}
