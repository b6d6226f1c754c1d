// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/questionnaire.h"

namespace forms {
class MSHFlexGrid;
}

/// The respondentid as text, empty when there is none. A failure is shown and gives the empty text.
QString respondentIdText(const QString& respondent, const QString& customer);

/// Shows questions in a grid, one a row, and a blank row below.
void showQuestions(forms::MSHFlexGrid* grid, const std::vector<ChosenQuestion>& questions);

/// Shows the stored questionnaire in a grid. For an empty respondent of a survey that exists the grid stays
/// as it is. Throws Failure.
void showQuestionnaire(forms::MSHFlexGrid* grid, const SurveyContext& survey);
