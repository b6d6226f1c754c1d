// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questionnaire.h"

#include "core/failure.h"
#include "core/gblGlobal.h"
#include "platform/forms/flexgrid.h"
#include "reference/gridtools.h"

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

QString toLookUpRespondent(const SurveyContext& survey) {
    return toLookUp(u"select * from respondent where respondentname='"_s + survey.respondent +
                        u"' and custid=" + custidOf(survey.customer),
                    "respondentid");
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

void toShowQuestionnaire(forms::MSHFlexGrid* grid, const SurveyContext& survey) {
    const QString surveyid = survey.date.isEmpty() ? QString() : toGetSurveyID(survey.date, survey.customer);
    if (surveyid.isEmpty()) {
        toEmptyGrid(grid);
        return;
    }
    if (survey.respondent.isEmpty())
        return;
    const QString respondentid = toLookUpRespondent(survey);
    if (respondentid.isEmpty()) {
        toEmptyGrid(grid);
        return;
    }
    ado::Recordset responquery;
    responquery.Open(u"select * from responquery where respondentid="_s + respondentid + u" and surveyid=" +
                         surveyid + u" order by responquery.order",
                     *cnnMain);
    grid->setRows(2);
    if (responquery.Eof()) {
        toEmptyGrid(grid);
        return;
    }
    toFillGridFrom(grid, responquery, {"parametername", "question"});
    grid->setRows(grid->Rows() + 1);
}

void toRewriteQuestionnaire(const SurveyContext& survey, const std::vector<ChosenQuestion>& questions,
                            WithoutSurvey withoutSurvey) {
    const QString respondentid =
        toLookUp(u"select * from custresp where respondentname='"_s + survey.respondent + u"' and custid=" +
                     custidOf(survey.customer),
                 "respondentid");
    if (respondentid.isEmpty())
        return;
    const QString surveyid = toGetSurveyID(survey.date, survey.customer);
    if (!surveyid.isEmpty() || withoutSurvey == WithoutSurvey::Fail)
        cnnMain->Execute(u"delete * from responquesindex where respondentid="_s + respondentid +
                         u" and surveyid=" + surveyid);
    Questionnaires added;
    QVariant questionid = 0; // of no question
    int position = 0;
    for (const ChosenQuestion& chosen : questions) {
        const QString found = toLookUp(u"select * from  param where question='"_s + chosen.question +
                                           u"' and parametername='" + chosen.parameter + u"'",
                                       "questionid");
        if (!found.isEmpty())
            questionid = found;
        toAddQuestion(added, respondentid, questionid, surveyid, ++position);
    }
}

void toMoveQuestion(const SurveyContext& survey, const ChosenQuestion& question, int position, int step) {
    const QString respondentid = toLookUpRespondent(survey);
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
    Questionnaires added;
    toAddQuestion(added, respondentid, questionid, surveyid, position + step);
}

void toCopyQuestionnaire(const SurveyContext& source, const SurveyContext& target) {
    const QString custid = custidOf(target.customer);
    const QString respondentid = toGetRespondentID(target.respondent, target.customer);
    toSaveSurveyID(target);
    ado::Recordset copied;
    copied.Open(u"select * from responquery where custid="_s + custidOf(source.customer) + u" and sdate=#" +
                    toSqlDate(toDate(source.date)) + u"# and respondentid=" +
                    toGetRespondentID(source.respondent, source.customer),
                *cnnMain);
    const int position = copied.RecordCount() + 1; // takes all records before the first is added
    const QString surveyid = toGetSurveyID(target.date, target.customer);
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
