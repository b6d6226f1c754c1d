// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questionnaires/surveykey.h"

#include "core/store/refusal.h"
#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

int findSurvey(const QDate& date, int custid) {
    ado::Recordset survey(u"select * from survey where sdate=#"_s + toSqlDate(date) + u"# and custid=" +
                              QString::number(custid),
                          *cnnMain);
    return survey.Eof() ? 0 : survey["surveyid"].Value().toInt();
}

} // namespace

int findRespondent(const QString& respondent, int custid) {
    ado::Recordset custresp(u"select * from custresp where custid="_s + QString::number(custid) +
                                u" and respondentname='" + respondent + u"'",
                            *cnnMain);
    return custresp.Eof() ? 0 : custresp["respondentid"].Value().toInt();
}

SurveyKey findSurveyKey(const SurveyContext& survey) {
    SurveyKey key;
    key.custid = findCustomer(survey.customer);
    key.date = toDate(survey.date);
    if (key.custid == 0)
        return key;
    key.respondentid = findRespondent(survey.respondent, key.custid);
    if (key.date.isValid())
        key.surveyid = findSurvey(key.date, key.custid);
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
