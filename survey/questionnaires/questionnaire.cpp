// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questionnaires/questionnaire.h"

#include "core/store/refusal.h"
#include "core/store/store.h"

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

QString custidOf(const QString& customer) {
    return QString::number(findCustomer(customer));
}

QString selectSurvey(const QDate& date, const QString& custid) {
    return u"select * from survey where sdate=#"_s + toSqlDate(date) + u"# and custid=" + custid;
}

/// The field of the first record that a select gives, as text; empty without a record.
QString toLookUp(const QString& sql, const char* field) {
    ado::Recordset records;
    records.Open(sql, *cnnMain);
    return records.Eof() ? QString() : records[field].Text();
}

QString toLookUpRespondent(const SurveyContext& survey) {
    return toLookUp(u"select * from respondent where respondentname='"_s + survey.respondent +
                        u"' and custid=" + custidOf(survey.customer),
                    "respondentid");
}

void refuseGone(const ChosenQuestion& question) {
    throw Refusal(u"The question "_s + question.question + u" (" + question.parameter +
                  u") is no longer in the catalogue. Nothing has been changed.");
}

void refuseUnnumbered() {
    throw Refusal(u"The questions are not numbered one after the other. Add or remove a question, which "
                  "numbers them anew, and then move this one."_s);
}

/// The rows of all questionnaires, to add to.
struct Questionnaires : ado::Recordset {
    Questionnaires() { Open(u"select * from responquesindex"_s, *cnnMain, Lock::Optimistic); }
};

void toAddQuestion(ado::Recordset& responquesindex, const QString& respondentid, const QVariant& questionid,
                   const QString& surveyid, int position) {
    responquesindex.AddNew();
    responquesindex["respondentid"] = respondentid;
    responquesindex["questionid"] = questionid;
    responquesindex["surveyid"] = surveyid;
    responquesindex["Order"] = position;
    responquesindex.Update();
}

} // namespace

QString findSurvey(const QString& date, const QString& customer) {
    const QDate day = toDate(date);
    return day.isValid() ? toLookUp(selectSurvey(day, custidOf(customer)), "surveyid") : QString();
}

QString findRespondent(const QString& respondent, const QString& customer) {
    return toLookUp(u"select * from custresp where custid="_s + custidOf(customer) +
                        u" and respondentname='" + respondent + u"'",
                    "respondentid");
}

QString requireRespondent(const SurveyContext& survey) {
    requireCustomers({survey.customer});
    QString respondentid = findRespondent(survey.respondent, survey.customer);
    if (!respondentid.isEmpty())
        return respondentid;
    if (survey.respondent.isEmpty())
        throw Refusal(u"No respondent is selected. Nothing has been changed."_s);
    throw Refusal(u"The respondent "_s + survey.respondent + u" of " + survey.customer +
                  u" is no longer in the database. Nothing has been changed.");
}

void addSurvey(const SurveyContext& survey) {
    const int custid = requireCustomers({survey.customer}).front();
    const QDate date = toDate(survey.date);
    if (!date.isValid())
        throw Refusal(u"No Survey Date selected......Select one and proceed....."_s);
    ado::Recordset surveys;
    surveys.Open(selectSurvey(date, QString::number(custid)), *cnnMain, Lock::Optimistic);
    if (!surveys.Eof())
        return;
    surveys.AddNew();
    surveys["sdate"] = date;
    surveys["custid"] = custid;
    surveys.Update();
}

std::vector<ChosenQuestion> readQuestionnaire(const SurveyContext& survey) {
    const QString surveyid = findSurvey(survey.date, survey.customer);
    const QString respondentid = surveyid.isEmpty() ? QString() : toLookUpRespondent(survey);
    std::vector<ChosenQuestion> questions;
    if (respondentid.isEmpty())
        return questions;
    ado::Recordset responquery;
    responquery.Open(u"select * from responquery where respondentid="_s + respondentid + u" and surveyid=" +
                         surveyid + u" order by responquery.order",
                     *cnnMain);
    for (; !responquery.Eof(); responquery.MoveNext())
        questions.push_back({responquery["parametername"].Text(), responquery["question"].Text()});
    return questions;
}

std::vector<ChosenQuestion> toRewriteQuestionnaire(const SurveyContext& survey,
                                                   const std::vector<ChosenQuestion>& questions) {
    const QString respondentid = requireRespondent(survey);
    const QString surveyid = findSurvey(survey.date, survey.customer);
    if (!surveyid.isEmpty())
        cnnMain->Execute(u"delete * from responquesindex where respondentid="_s + respondentid +
                         u" and surveyid=" + surveyid);
    Questionnaires added;
    QString questionid; // of the question before
    int position = 0;
    std::vector<ChosenQuestion> leftOut;
    for (const ChosenQuestion& chosen : questions) {
        const QString found = toLookUp(u"select * from  param where question='"_s + chosen.question +
                                           u"' and parametername='" + chosen.parameter + u"'",
                                       "questionid");
        if (!found.isEmpty())
            questionid = found;
        if (questionid.isEmpty())
            leftOut.push_back(chosen);
        else
            toAddQuestion(added, respondentid, questionid, surveyid, ++position);
    }
    return leftOut;
}

void toMoveQuestion(const SurveyContext& survey, const ChosenQuestion& question, int position, int step) {
    requireRespondent(survey);
    const QString respondentid = toLookUpRespondent(survey);
    const QString paramid =
        toLookUp(u"select * from parameter where parametername='"_s + question.parameter + u"'", "paramid");
    if (paramid.isEmpty() && !question.parameter.isEmpty()) // the blank row is the store's to refuse
        refuseGone(question);
    const QString questionid = toLookUp(u"select * from questions where Question='"_s + question.question +
                                            u"' and paramid=" + paramid,
                                        "questionid");
    if (questionid.isEmpty())
        refuseGone(question);
    const QString ofRow = u" from ResponQuesIndex where respondentid="_s + respondentid +
                          u" and questionid=" + questionid + u" and ResponQuesIndex.order=" +
                          QString::number(position);
    if (toLookUp(u"select *"_s + ofRow, "questionid").isEmpty()) // it would be in the questionnaire twice
        refuseUnnumbered();
    cnnMain->Execute(u"delete *"_s + ofRow);
    ado::Recordset neighbour;
    neighbour.Open(u"select * from ResponQuesIndex where respondentid="_s + respondentid +
                       u" and ResponQuesIndex.order=" + QString::number(position + step),
                   *cnnMain, Lock::Optimistic);
    if (neighbour.Eof())
        refuseUnnumbered();
    const QString surveyid = neighbour["surveyid"].Text();
    neighbour["Order"] = neighbour["Order"].Value().toInt() - step;
    neighbour.Update();
    neighbour.Close();
    Questionnaires added;
    toAddQuestion(added, respondentid, questionid, surveyid, position + step);
}

void toCopyQuestionnaire(const SurveyContext& source, const SurveyContext& target) {
    const QString respondentid = requireRespondent(target);
    const QString custid = custidOf(target.customer);
    const QString sourceRespondent = requireRespondent(source);
    addSurvey(target);
    ado::Recordset copied;
    copied.Open(u"select * from responquery where custid="_s + custidOf(source.customer) + u" and sdate=#" +
                    toSqlDate(toDate(source.date)) + u"# and respondentid=" + sourceRespondent,
                *cnnMain);
    const int position = copied.RecordCount() + 1; // takes all records before the first is added
    const QString surveyid = findSurvey(target.date, target.customer);
    Questionnaires added;
    for (; !copied.Eof(); copied.MoveNext()) {
        ado::Recordset present;
        present.Open(u"select * from responquery where parametername='"_s + copied["parametername"].Text() +
                         u"' and question='" + copied["question"].Text() + u"' and respondentid=" +
                         respondentid + u" and custid=" + custid + u" and sdate=#" +
                         toSqlDate(toDate(target.date)) + u"#",
                     *cnnMain);
        if (present.Eof())
            toAddQuestion(added, respondentid, copied["questionid"].Value(), surveyid, position);
    }
}
