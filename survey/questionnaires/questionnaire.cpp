// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questionnaires/questionnaire.h"

#include "core/store/refusal.h"
#include "core/store/store.h"
#include "core/store/textlookup.h"

#include <set>

using namespace Qt::StringLiterals;
using Lock = ado::Recordset::Lock;

namespace {

/// A field of a select's first record, as text; empty without a record.
QString lookUp(const QString& sql, const char* field) {
    ado::Recordset records(sql, *cnnMain);
    return records.Eof() ? QString() : records[field].Text();
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
    Questionnaires() { Open(u"select * from responquesindex"_s, *cnnMain, Lock::BatchOptimistic); }
};

void addQuestion(ado::Recordset& responquesindex, const SurveyKey& survey, const QVariant& questionid,
                 int position) {
    responquesindex.AddNew();
    responquesindex["respondentid"] = survey.respondentid;
    responquesindex["questionid"] = questionid;
    responquesindex["surveyid"] = survey.surveyid;
    responquesindex["Order"] = position;
    responquesindex.Update();
}

} // namespace

QString orderOfQuestions() {
    return u" order by [Order], (select min(stored.rowid) from responquesindex as stored where "
           "stored.respondentid = responquery.respondentid and stored.surveyid = responquery.surveyid and "
           "stored.questionid = responquery.questionid and stored.[Order] = responquery.[Order])"_s;
}

SurveyKey addSurvey(const SurveyContext& survey) {
    SurveyKey key = findSurveyKey(survey);
    if (key.custid == 0)
        requireCustomers({survey.customer}); // throws
    if (!key.date.isValid())
        throw Refusal(u"No Survey Date selected......Select one and proceed....."_s);
    if (key.surveyid != 0)
        return key;
    ado::Recordset surveys(u"select * from survey where sdate=#"_s + toSqlDate(key.date) + u"# and custid=" +
                               QString::number(key.custid),
                           *cnnMain, Lock::Optimistic);
    surveys.AddNew();
    surveys["sdate"] = key.date;
    surveys["custid"] = key.custid;
    surveys.Update();
    key.surveyid = surveys["surveyid"].Value().toInt();
    return key;
}

std::vector<ChosenQuestion> readQuestionnaire(const SurveyKey& survey) {
    std::vector<ChosenQuestion> questions;
    if (survey.surveyid == 0 || survey.respondentid == 0)
        return questions;
    ado::Recordset responquery(u"select * from responquery where respondentid="_s +
                                   QString::number(survey.respondentid) + u" and surveyid=" +
                                   QString::number(survey.surveyid) + orderOfQuestions(),
                               *cnnMain);
    for (; !responquery.Eof(); responquery.MoveNext())
        questions.push_back({responquery["parametername"].Text(), responquery["question"].Text()});
    return questions;
}

std::vector<int> readQuestionIds(const SurveyKey& survey) {
    std::vector<int> ids;
    ado::Recordset rows(u"select questionid from responquesindex where respondentid="_s +
                            QString::number(survey.respondentid) + u" and surveyid=" +
                            QString::number(survey.surveyid) + u" order by [Order], questionid",
                        *cnnMain);
    for (; !rows.Eof(); rows.MoveNext())
        ids.push_back(rows["questionid"].Value().toInt());
    return ids;
}

std::vector<ChosenQuestion> rewriteQuestionnaire(const SurveyKey& survey,
                                                 const std::vector<ChosenQuestion>& questions) {
    cnnMain->Execute(u"delete * from responquesindex where respondentid="_s +
                     QString::number(survey.respondentid) + u" and surveyid=" +
                     QString::number(survey.surveyid));
    TextLookup catalogue(u"param"_s, {"question", "parametername"}, {}, "questionid");
    std::vector<QStringList> texts;
    for (const ChosenQuestion& chosen : questions)
        texts.push_back({chosen.question, chosen.parameter});
    catalogue.readAll(texts);
    Questionnaires added;
    QString questionid; // of the question before
    int position = 0;
    std::vector<ChosenQuestion> leftOut;
    for (const ChosenQuestion& chosen : questions) {
        const QString found = catalogue.find({chosen.question, chosen.parameter});
        if (!found.isEmpty())
            questionid = found;
        if (questionid.isEmpty())
            leftOut.push_back(chosen);
        else
            addQuestion(added, survey, questionid, ++position);
    }
    return leftOut;
}

void moveQuestion(const SurveyKey& survey, const ChosenQuestion& question, int position, int step) {
    const QString respondentid = QString::number(survey.respondentid);
    const QString paramid =
        lookUp(u"select * from parameter where parametername='"_s + question.parameter + u"'", "paramid");
    if (paramid.isEmpty() && !question.parameter.isEmpty()) // the store refuses the blank row
        refuseGone(question);
    const QString questionid = lookUp(u"select * from questions where Question='"_s + question.question +
                                          u"' and paramid=" + paramid,
                                      "questionid");
    if (questionid.isEmpty())
        refuseGone(question);
    const QString ofRow = u" from ResponQuesIndex where respondentid="_s + respondentid +
                          u" and questionid=" + questionid + u" and ResponQuesIndex.order=" +
                          QString::number(position);
    if (lookUp(u"select *"_s + ofRow, "questionid").isEmpty()) // it would be in the questionnaire twice
        refuseUnnumbered();
    cnnMain->Execute(u"delete *"_s + ofRow);
    ado::Recordset neighbour(u"select * from ResponQuesIndex where respondentid="_s + respondentid +
                                 u" and ResponQuesIndex.order=" + QString::number(position + step),
                             *cnnMain, Lock::Optimistic);
    if (neighbour.Eof())
        refuseUnnumbered();
    SurveyKey neighbours = survey;
    neighbours.surveyid = neighbour["surveyid"].Value().toInt();
    neighbour["Order"] = neighbour["Order"].Value().toInt() - step;
    neighbour.Update();
    neighbour.Close();
    Questionnaires added;
    addQuestion(added, neighbours, questionid, position + step);
}

void copyQuestionnaire(const SurveyContext& source, const SurveyContext& target) {
    SurveyKey to = requireSurveyKey(target);
    const SurveyKey from = requireSurveyKey(source);
    to.surveyid = addSurvey(target).surveyid;
    ado::Recordset copied(u"select * from responquery where custid="_s + QString::number(from.custid) +
                              u" and sdate=#" + toSqlDate(from.date) + u"# and respondentid=" +
                              QString::number(from.respondentid) + orderOfQuestions(),
                          *cnnMain);
    const int position = copied.RecordCount() + 1; // takes all records before the first is added
    const auto textsOf = [](ado::Recordset& question) {
        return QStringList{question["parametername"].Text(), question["question"].Text()};
    };
    std::vector<QStringList> texts;
    for (; !copied.Eof(); copied.MoveNext())
        texts.push_back(textsOf(copied));
    TextLookup present(u"responquery"_s, {"parametername", "question"},
                       u"respondentid="_s + QString::number(to.respondentid) + u" and custid=" +
                           QString::number(to.custid) + u" and sdate=#" + toSqlDate(to.date) + u"#",
                       "questionid");
    present.readAll(texts);
    Questionnaires added;
    std::set<QStringList> seen; // the question may be in the copied one twice
    for (copied.MoveFirst(); !copied.Eof(); copied.MoveNext()) {
        if (seen.insert(textsOf(copied)).second && present.find(textsOf(copied)).isEmpty())
            addQuestion(added, to, copied["questionid"].Value(), position);
    }
}
