// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questionnaire.h"

#include "core/failure.h"
#include "core/gblGlobal.h"

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

QString custidOf(const QString& customer) {
    return QString::number(toGetCustID(customer));
}

QString selectSurvey(const QString& date, const QString& custid) {
    return u"select * from survey where sdate=#"_s + toSqlDate(toDate(date)) + u"# and custid=" + custid;
}

/// The field of the first record that a select gives, as text; empty without a record.
QString toLookUp(const QString& sql, const char* field) {
    ado::Recordset records;
    records.Open(sql, *cnnMain);
    return records.Eof() ? QString() : records[field].Text();
}

/// Adds one row of a questionnaire.
void toAddQuestion(const QString& respondentid, const QVariant& questionid, const QString& surveyid,
                   int position) {
    ado::Recordset responquesindex;
    responquesindex.Open(u"select * from responquesindex"_s, *cnnMain, Lock::Optimistic);
    responquesindex.AddNew();
    responquesindex["respondentid"] = respondentid;
    responquesindex["questionid"] = questionid;
    responquesindex["surveyid"] = surveyid;
    responquesindex["Order"] = position;
    responquesindex.Update();
}

} // namespace

QString toGetSurveyID(const QString& date, const QString& customer) {
    QString surveyid;
    guarded({}, [&] {
        toReconnect();
        surveyid = toLookUp(selectSurvey(date, custidOf(customer)), "surveyid");
    });
    return surveyid;
}

QString toGetRespondentID(const QString& respondent, const QString& customer) {
    QString respondentid;
    guarded({}, [&] {
        toReconnect();
        respondentid = toLookUp(u"select * from custresp where custid="_s + custidOf(customer) +
                                    u" and respondentname='" + respondent + u"'",
                                "respondentid");
    });
    return respondentid;
}

void toSaveSurveyID(const SurveyContext& survey) {
    guarded({}, [&] {
        toReconnect();
        const QString custid = custidOf(survey.customer);
        ado::Recordset surveys;
        surveys.Open(selectSurvey(survey.date, custid), *cnnMain, Lock::Optimistic);
        if (!surveys.Eof())
            return;
        surveys.AddNew();
        surveys["sdate"] = toDate(survey.date);
        surveys["custid"] = custid;
        surveys.Update();
    });
}

void toRewriteQuestionnaire(const SurveyContext& survey, const std::vector<ChosenQuestion>& questions,
                            WithoutSurvey withoutSurvey) {
    const QString respondentid =
        toLookUp(u"select * from custresp where respondentname='"_s + survey.respondent + u"' and custid=" +
                     custidOf(survey.customer),
                 "respondentid");
    if (respondentid.isEmpty())
        return;
    const QString emptied = toGetSurveyID(survey.date, survey.customer);
    if (!emptied.isEmpty() || withoutSurvey == WithoutSurvey::Fail)
        cnnMain->Execute(u"delete * from responquesindex where respondentid="_s + respondentid +
                         u" and surveyid=" + emptied);
    QVariant questionid = 0; // of no question
    int position = 0;
    for (const ChosenQuestion& chosen : questions) {
        const QString found = toLookUp(u"select * from  param where question='"_s + chosen.question +
                                           u"' and parametername='" + chosen.parameter + u"'",
                                       "questionid");
        if (!found.isEmpty())
            questionid = found;
        toAddQuestion(respondentid, questionid, toGetSurveyID(survey.date, survey.customer), ++position);
    }
}

void toMoveQuestion(const SurveyContext& survey, const ChosenQuestion& question, int position, int step) {
    const QString respondentid =
        toLookUp(u"select * from respondent where respondentname='"_s + survey.respondent + u"' and custid=" +
                     custidOf(survey.customer),
                 "respondentid");
    if (respondentid.isEmpty())
        return;
    const QString paramid =
        toLookUp(u"select * from parameter where parametername='"_s + question.parameter + u"'", "paramid");
    const QString questionid = toLookUp(u"select * from questions where Question='"_s + question.question +
                                            u"' and paramid=" + paramid,
                                        "questionid");
    cnnMain->Execute(u"delete * from ResponQuesIndex where respondentid="_s + respondentid +
                     u" and questionid=" + questionid + u" and ResponQuesIndex.order=" +
                     QString::number(position));
    // Without a neighbour surveyid stays empty, which the new row refuses: the move fails as a whole.
    QString surveyid;
    ado::Recordset neighbour;
    neighbour.Open(u"select * from ResponQuesIndex where respondentid="_s + respondentid +
                       u" and ResponQuesIndex.order=" + QString::number(position + step),
                   *cnnMain, Lock::Optimistic);
    if (!neighbour.Eof()) {
        surveyid = neighbour["surveyid"].Text();
        neighbour["Order"] = neighbour["Order"].Value().toInt() - step;
        neighbour.Update();
    }
    neighbour.Close();
    toAddQuestion(respondentid, questionid, surveyid, position + step);
}
