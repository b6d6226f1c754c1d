// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/surveylog.h"

#include "core/failure.h"
#include "core/gblGlobal.h"

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

void toResetLogStatus(const QString& respondentid, const QString& date) {
    guarded({}, [&] {
        toReconnect();
        ado::Recordset log;
        log.Open(u"select * from log where respid="_s + respondentid + u" and sdate=#" +
                     toSqlDate(toDate(date)) + u"#",
                 *cnnMain, Lock::Optimistic);
        if (log.Eof())
            return;
        log["Status"] = false;
        log.Update();
    });
}

void toWriteLogRow(const SurveyContext& survey, const QString& fileName) {
    guarded({}, [&] {
        toReconnect();
        const QDate date = toDate(survey.date);
        ado::Recordset log;
        log.Open(u"select * from log where custname='"_s + survey.customer + u"' and respname='" +
                     survey.respondent + u"' and xlsfilename='" + fileName + u"' and sdate=#" +
                     toSqlDate(date) + u"#",
                 *cnnMain, Lock::Optimistic);
        if (log.Eof())
            log.AddNew();
        log["custname"] = survey.customer;
        log["respname"] = survey.respondent;
        log["xlsfilename"] = fileName;
        log["sdate"] = date;
        log["surveyid"] = toGetSurveyID(survey.date, survey.customer);
        log["respid"] = toGetRespondentID(survey.respondent, survey.customer);
        log.Update();
    });
}
