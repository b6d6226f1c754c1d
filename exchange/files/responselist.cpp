// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/responselist.h"

#include "core/store/store.h"
#include "exchange/files/dispatch.h"

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

QString wordOf(ResponseState state) {
    switch (state) {
    case ResponseState::Composed:
        return u"composed"_s;
    case ResponseState::HandedOver:
        return u"handed over"_s;
    case ResponseState::PartlyAnswered:
        return u"partly answered"_s;
    case ResponseState::Answered:
        return u"answered"_s;
    case ResponseState::Overdue:
        return u"overdue"_s;
    }
    return {};
}

ResponseState Response::state(const QDate& today) const {
    if (isAnswered())
        return ResponseState::Answered;
    if (due.isValid() && due < today)
        return ResponseState::Overdue;
    if (answered > 0)
        return ResponseState::PartlyAnswered;
    return dispatchid != 0 ? ResponseState::HandedOver : ResponseState::Composed;
}

QString Response::name() const {
    return respondent + u" of " + customer + u", " + ado::toText(surveyDate);
}

namespace {

QString conditionOf(const ResponseFilter& filter) {
    return u"survey.sdate between #"_s + toSqlDate(filter.from) + u"# and #" + toSqlDate(filter.to) + u'#' +
           (filter.custid == 0 ? QString() : u" and survey.custid="_s + QString::number(filter.custid));
}

/// The questionnaires with their numbers of questions and answers. CROSS JOIN begins at the survey, so that
/// the cost depends on the surveys shown and not on the size of the store.
std::vector<Response> findQuestionnaires(const ResponseFilter& filter) {
    ado::Recordset records(
        u"select customer.custid, custname, respondent.respondentid, respondentname, emailid, surveyid, "
        "sdate, asked, answered from ("
        "select survey.surveyid, survey.custid, survey.sdate, responquesindex.respondentid, "
        "count(*) as asked, sum(case when questions.Type<>0 then exists (select 1 from feedbackobjective "
        "where feedbackobjective.respondentid=responquesindex.respondentid "
        "and feedbackobjective.questionid=responquesindex.questionid "
        "and feedbackobjective.surveydate=survey.sdate and weightage<>0 and score<>0) "
        "else exists (select 1 from feedbackdescriptive "
        "where feedbackdescriptive.respondentid=responquesindex.respondentid "
        "and feedbackdescriptive.questionid=responquesindex.questionid "
        "and feedbackdescriptive.surveydate=survey.sdate and trim(Description)<>'') end) as answered "
        "from survey cross join responquesindex on responquesindex.surveyid=survey.surveyid "
        "cross join questions on questions.questionid=responquesindex.questionid where "_s +
            conditionOf(filter) +
            u" group by survey.surveyid, survey.custid, survey.sdate, responquesindex.respondentid) as "
            "counted join customer on customer.custid=counted.custid "
            "join respondent on respondent.respondentid=counted.respondentid "
            "and respondent.custid=customer.custid "
            "order by custname, customer.custid, sdate, surveyid, respondentname, respondent.respondentid",
        *cnnMain);
    const ado::Field custid = records["custid"], customer = records["custname"],
                     respondentid = records["respondentid"], respondent = records["respondentname"],
                     email = records["emailid"], surveyid = records["surveyid"], date = records["sdate"],
                     questions = records["asked"], answered = records["answered"];
    std::vector<Response> responses;
    for (; !records.Eof(); records.MoveNext())
        responses.push_back({.custid = custid.Value().toInt(),
                             .respondentid = respondentid.Value().toInt(),
                             .surveyid = surveyid.Value().toInt(),
                             .customer = customer.Text(),
                             .respondent = respondent.Text(),
                             .email = email.Text(),
                             .surveyDate = date.Value().toDate(),
                             .questions = questions.Value().toInt(),
                             .answered = answered.Value().toInt()});
    return responses;
}

/// The first row of dispatch counts if another program has made a second one.
void addDispatches(std::vector<Response>& responses, const ResponseFilter& filter) {
    std::map<std::pair<int, int>, Response*> places;
    for (Response& response : responses)
        places[{response.surveyid, response.respondentid}] = &response;
    ado::Recordset records(
        u"select dispatch.dispatchid, dispatch.surveyid, respondentid, handedover, due, "
        "count(reminded) as reminders, max(reminded) as lastreminded "
        "from survey join dispatch on dispatch.surveyid=survey.surveyid "
        "left join reminder on reminder.dispatchid=dispatch.dispatchid where "_s +
            conditionOf(filter) +
            u" group by dispatch.dispatchid, dispatch.surveyid, respondentid, handedover, due "
            "order by dispatch.dispatchid",
        *cnnMain);
    for (; !records.Eof(); records.MoveNext()) {
        const auto place =
            places.find({records["surveyid"].Value().toInt(), records["respondentid"].Value().toInt()});
        if (place == places.end() || place->second->dispatchid != 0)
            continue;
        Response& response = *place->second;
        response.dispatchid = records["dispatchid"].Value().toInt();
        response.handedOver = records["handedover"].Value().toDate();
        response.due = records["due"].Value().toDate();
        response.reminders = records["reminders"].Value().toInt();
        response.lastReminded = records["lastreminded"].Value().toDate();
    }
}

} // namespace

std::vector<Response> findResponses(const ResponseFilter& filter) {
    std::vector<Response> responses = findQuestionnaires(filter);
    if (hasDispatchTables())
        addDispatches(responses, filter);
    return responses;
}

QDate latestSurveyDate() {
    // One look-up for each customer in the index of surveys, which has a customer's dates in their order.
    ado::Recordset latest(u"select max(latest) as latest from (select (select max(sdate) from survey "
                          "where survey.custid=customer.custid) as latest from customer) as dates"_s,
                          *cnnMain);
    return latest["latest"].Value().toDate();
}

QString responseSummary(const std::vector<Response>& responses, int target) {
    const auto asked = qsizetype(responses.size());
    const auto answered = std::count_if(responses.begin(), responses.end(),
                                        [](const Response& response) { return response.isAnswered(); });
    QString summary = u"asked %1, answered %2"_s.arg(asked).arg(answered);
    if (asked > 0)
        summary += u", %1 %"_s.arg(100 * answered / asked);
    if (target > 0)
        summary += u", target %1 %"_s.arg(target);
    return summary;
}
