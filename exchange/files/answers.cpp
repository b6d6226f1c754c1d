// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answers.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

namespace {

/// Moves to the stored answer, or adds one, and sets its keys and weightage. Returns what it was before.
std::optional<AnswerState> beginAnswer(ado::Recordset& answer, const AnswerKeys& keys, bool isScore,
                                       int weightage) {
    answer.Open(selectAnswer(keys, isScore), *cnnMain, ado::Recordset::Lock::Optimistic);
    std::optional<AnswerState> before;
    if (answer.Eof())
        answer.AddNew();
    else
        before = answerState(answer, isScore);
    answer["respondentid"] = keys.respondentid;
    answer["questionid"] = keys.questionid;
    answer["surveydate"] = keys.surveydate;
    answer["weightage"] = weightage;
    answer["surveyid"] = keys.surveyid;
    return before;
}

} // namespace

std::optional<bool> toGetQuestionType(const QString& questionid) {
    ado::Recordset questions(u"select * from questions where questionid="_s + questionid, *cnnMain);
    return questions.Eof() ? std::nullopt : std::optional(questions["Type"].Value().toBool());
}

QString selectAnswer(const AnswerKeys& keys, bool isScore) {
    return (isScore ? u"select * from feedbackobjective where questionid="_s
                    : u"select * from feedbackdescriptive where questionid="_s) +
           keys.questionid + u" and respondentid=" + keys.respondentid + u" and surveydate=#" +
           toSqlDate(keys.surveydate) + u"#";
}

AnswerState answerState(ado::Recordset& answer, bool isScore) {
    return {answer["surveyid"].Value(), answer["weightage"].Value(),
            answer[isScore ? "score" : "Description"].Value()};
}

std::optional<AnswerState> toWriteObjectiveAnswer(const AnswerKeys& keys, int weightage, int score) {
    ado::Recordset answer;
    auto before = beginAnswer(answer, keys, true, weightage);
    answer["score"] = score;
    answer.Update();
    return before;
}

std::optional<AnswerState> toWriteDescriptiveAnswer(const AnswerKeys& keys, int weightage,
                                                    const std::optional<QString>& words) {
    ado::Recordset answer;
    auto before = beginAnswer(answer, keys, false, weightage);
    answer["Description"] = words ? QVariant(*words) : ado::Null;
    answer.Update();
    return before;
}
