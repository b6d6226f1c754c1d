// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/questiongrid.h"

#include "platform/forms/flexgrid.h"
#include "reference/gridtools.h"

void toShowQuestions(forms::MSHFlexGrid* grid, const std::vector<ChosenQuestion>& questions) {
    toEmptyGrid(grid);
    grid->setRows(static_cast<int>(questions.size()) + 2);
    int row = 0;
    for (const ChosenQuestion& chosen : questions) {
        grid->setTextMatrix(++row, 1, chosen.parameter);
        grid->setTextMatrix(row, 2, chosen.question);
    }
}

void toShowQuestionnaire(forms::MSHFlexGrid* grid, const SurveyContext& survey) {
    if (!survey.respondent.isEmpty() || findSurvey(survey.date, survey.customer).isEmpty())
        toShowQuestions(grid, readQuestionnaire(survey));
}
