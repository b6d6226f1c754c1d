// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/files/answers.h"

#include "core/store/store.h"

using namespace Qt::StringLiterals;

std::map<QString, bool> readQuestionTypes() {
    std::map<QString, bool> types;
    ado::Recordset questions(u"select questionid, Type from questions"_s, *cnnMain);
    for (; !questions.Eof(); questions.MoveNext())
        types.emplace(questions["questionid"].Text(), questions["Type"].Value().toBool());
    return types;
}

AnswerState answerState(ado::Recordset& answer, bool isScore) {
    return {answer["surveyid"].Value(), answer["weightage"].Value(),
            answer[isScore ? "score" : "Description"].Value()};
}
