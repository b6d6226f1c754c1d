// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/filenames.h"

#include "core/failure.h"
#include "core/gblGlobal.h"
#include "exchange/homefile.h"

using namespace Qt::StringLiterals;

QString toGetLoggedFileName(const SurveyContext& survey) {
    QString fileName;
    const QString respondentid = toGetRespondentID(survey.respondent, survey.customer);
    guarded({}, [&] {
        toReconnect();
        ado::Recordset log;
        log.Open(u"select * from log where custname='"_s + survey.customer + u"' and respid=" + respondentid +
                     u" and sdate=#" + toSqlDate(toDate(survey.date)) + u"#",
                 *cnnMain);
        if (!log.Eof())
            fileName = log["xlsfilename"].Text();
    });
    return fileName;
}

QString toMakeSystemFileName(const SurveyContext& survey) {
    QString fileName;
    const QString respondentid = toGetRespondentID(survey.respondent, survey.customer);
    if (respondentid.isEmpty())
        return fileName;
    guarded({}, [&] {
        toReconnect();
        ado::Recordset responquery;
        responquery.Open(u"select * from responquery where custid="_s +
                             QString::number(toGetCustID(survey.customer)) + u" and respondentid=" +
                             respondentid + u" and sdate=#" + toSqlDate(toDate(survey.date)) + u"#",
                         *cnnMain);
        if (responquery.Eof())
            return;
        const QString keys = responquery["surveyid"].Text() + responquery["custid"].Text() +
                             responquery["respondentid"].Text();
        fileName = keys.trimmed() + u".xls";
    });
    return fileName;
}

bool toIsFileNameLogged(const QString& fileName) {
    bool logged = false;
    guarded({}, [&] {
        toReconnect();
        ado::Recordset log;
        log.Open(u"select * from log where xlsfilename='"_s + fileName + u"'", *cnnMain);
        logged = !log.Eof();
    });
    return logged;
}

bool isProgramsOwnFile(const QString& fileName) {
    return fileName.compare(templateFile, Qt::CaseInsensitive) == 0 ||
           (!fileName.endsWith(u".xls", Qt::CaseInsensitive) && toCheckFileExists(fileName));
}
