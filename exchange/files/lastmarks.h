// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

/// The order in which the answers of earlier surveys are read to find the latest. Both give the same marks.
enum class HistoryOrder {
    OldestFirst, ///< to the last row
    NewestFirst, ///< to the first row
};

/// Makes reportlinktable the survey's questions, each with what the respondent gave it in the latest survey
/// before this one. A 0 there, or no answer, leaves the mark Null; no older survey is asked. Throws
/// Failure; what was filled before it stays.
void toGetTheLastScoreAndWeightage(const SurveyKey& survey, HistoryOrder order);
