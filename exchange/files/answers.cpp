// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answers.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

/// Moves to the stored answer of that query, or adds one, and sets its keys and weightage.
void beginAnswer(ado::Recordset& answer, const QString& query, const AnswerKeys& keys, int weightage) {
    answer.Open(query, *cnnMain, ado::Recordset::Lock::Optimistic);
    if (answer.Eof())
        answer.AddNew();
    answer["respondentid"] = keys.respondentid;
    answer["questionid"] = keys.questionid;
    answer["surveydate"] = keys.surveydate;
    answer["weightage"] = weightage;
    answer["surveyid"] = keys.surveyid;
}

} // namespace

std::optional<bool> toGetQuestionType(const QString& questionid) {
    ado::Recordset questions(u"select * from questions where questionid="_s + questionid, *cnnMain);
    return questions.Eof() ? std::nullopt : std::optional(questions["Type"].Value().toBool());
}

void toWriteObjectiveAnswer(const AnswerKeys& keys, int weightage, int score) {
    ado::Recordset answer;
    beginAnswer(answer,
                u"select * from feedbackobjective where questionid="_s + keys.questionid +
                    u" and respondentid=" + keys.respondentid + u" and surveydate=#" +
                    toSqlDate(keys.surveydate) + u"#",
                keys, weightage);
    answer["score"] = score;
    answer.Update();
}

void toWriteDescriptiveAnswer(const AnswerKeys& keys, int weightage, const std::optional<QString>& words) {
    ado::Recordset answer;
    beginAnswer(answer,
                u"select * from feedbackdescriptive where questionid="_s + keys.questionid +
                    u" and respondentid=" + keys.respondentid + u" and surveydate=#" +
                    toSqlDate(keys.surveydate) + u"#",
                keys, weightage);
    answer["Description"] = words ? QVariant(*words) : ado::Null;
    answer.Update();
}
