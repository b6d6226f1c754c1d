// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/surveylists.h"

#include "core/base/failure.h"
#include "core/base/filllist.h"
#include "platform/forms/lists.h"

using namespace Qt::StringLiterals;

SurveyContext SurveyLists::picked() const {
    return {cmbCustomer->List(cmbCustomer->ListIndex()), lstRespondent->Text(), lstSurvetDates->Text()};
}

void SurveyLists::toFillCustomerList() const {
    guarded([this] {
        // One questionnaire of each customer is looked for. The view existingsurvey would look up each
        // customer again.
        fillList(*cmbCustomer,
                 u"select distinct(custname) from customer where exists (select * from survey "
                 "join respondent on respondent.custid=survey.custid where survey.custid=customer.custid "
                 "and exists (select * from responquesindex where responquesindex.surveyid=survey.surveyid "
                 "and responquesindex.respondentid=respondent.respondentid)) order by custname"_s,
                 "custname");
    });
}

void SurveyLists::toFillRespondentList() const {
    guarded([this] {
        lstRespondent->Clear();
        fillList(*lstRespondent, u"select * from custresp where custname='"_s + picked().customer + u"'",
                 "respondentname");
    });
    if (lstRespondent->ListCount() > 0)
        lstRespondent->setListIndex(0);
    else
        lstSurvetDates->Clear();
}

void SurveyLists::toFillSurveyDateList(const QDate& leftOut) const {
    guarded([&] {
        lstSurvetDates->Clear();
        const int custid = findCustomer(picked().customer);
        const int respondentid = findRespondent(picked().respondent, custid);
        if (respondentid == 0)
            return;
        fillList(*lstSurvetDates,
                 u"select distinct(sdate) from existingsurvey where custid="_s + QString::number(custid) +
                     u" and respondentid=" + QString::number(respondentid) +
                     (leftOut.isValid() ? u" and sdate<>#"_s + toSqlDate(leftOut) + u"# " : u""_s) +
                     u" order by sdate asc",
                 "sdate");
    });
}

void SurveyLists::pickFirstCustomer() const {
    if (cmbCustomer->ListCount() > 0)
        cmbCustomer->setListIndex(0);
}

void SurveyLists::pickFirstDate() const {
    if (lstSurvetDates->ListCount() > 0)
        lstSurvetDates->setListIndex(0);
}

QString respondentIdText(const QString& respondent, const QString& customer) {
    const int found = lookedUp([&] { return findRespondent(respondent, findCustomer(customer)); });
    return found == 0 ? QString() : QString::number(found);
}
