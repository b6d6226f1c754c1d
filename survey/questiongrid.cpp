// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questiongrid.h"

#include "core/base/gblGlobal.h"
#include "platform/forms/flexgrid.h"
#include "reference/gridtools.h"

QString respondentIdText(const QString& respondent, const QString& customer) {
    const int found = lookedUp([&] { return findRespondent(respondent, findCustomer(customer)); });
    return found == 0 ? QString() : QString::number(found);
}

void showQuestions(forms::MSHFlexGrid* grid, const std::vector<ChosenQuestion>& questions) {
    emptyGrid(grid);
    grid->setRows(static_cast<int>(questions.size()) + 2);
    int row = 0;
    for (const ChosenQuestion& chosen : questions) {
        grid->setTextMatrix(++row, 1, chosen.parameter);
        grid->setTextMatrix(row, 2, chosen.question);
    }
}

void showQuestionnaire(forms::MSHFlexGrid* grid, const SurveyContext& survey) {
    const SurveyKey key = findSurveyKey(survey);
    if (!survey.respondent.isEmpty() || key.surveyid == 0)
        showQuestions(grid, readQuestionnaire(key));
}
