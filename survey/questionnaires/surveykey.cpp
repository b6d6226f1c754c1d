// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questionnaires/surveykey.h"

#include "core/store/refusal.h"
#include "core/store/store.h"

using namespace Qt::StringLiterals;

int findRespondent(const QString& respondent, int custid) {
    ado::Recordset custresp(u"select * from custresp where custid="_s + QString::number(custid) +
                                u" and respondentname='" + respondent + u"'",
                            *cnnMain);
    return custresp.Eof() ? 0 : custresp["respondentid"].Value().toInt();
}

/// By one select, since most commands begin with it.
SurveyKey findSurveyKey(const SurveyContext& survey) {
    SurveyKey key;
    key.date = toDate(survey.date);
    const QString surveyid = key.date.isValid()
                                 ? u"(select surveyid from survey where sdate=#"_s + toSqlDate(key.date) +
                                       u"# and survey.custid=customer.custid limit 1)"
                                 : u"null"_s;
    ado::Recordset found(
        u"select custid, (select respondentid from respondent where respondent.custid=customer.custid and "
        "respondentname='"_s +
            survey.respondent + u"' limit 1) as respondentid, " + surveyid +
            u" as surveyid from customer where custname='" + survey.customer + u"' limit 1",
        *cnnMain);
    if (found.Eof())
        return key;
    key.custid = found["custid"].Value().toInt();
    key.respondentid = found["respondentid"].Value().toInt();
    key.surveyid = found["surveyid"].Value().toInt();
    return key;
}

SurveyKey requireSurveyKey(const SurveyContext& survey) {
    const SurveyKey key = findSurveyKey(survey);
    if (key.respondentid != 0)
        return key;
    if (key.custid == 0)
        requireCustomers({survey.customer}); // throws
    if (survey.respondent.isEmpty())
        throw Refusal(u"No respondent is selected. Nothing has been changed."_s);
    throw Refusal(u"The respondent "_s + survey.respondent + u" of " + survey.customer +
                  u" is no longer in the database. Nothing has been changed.");
}
