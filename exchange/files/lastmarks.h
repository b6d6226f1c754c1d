// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

/// The order in which the answers of earlier surveys are read to find the latest. Both give the same marks.
enum class HistoryOrder {
    OldestFirst, ///< the last row is the latest
    NewestFirst, ///< the first row is the latest
};

/// Fills reportlinktable with the survey's questions, each with the respondent's marks from the latest survey
/// before this one. A 0 there, or no answer, leaves the mark Null; older surveys are not searched. Throws
/// Failure; rows filled before it are kept.
void toGetTheLastScoreAndWeightage(const SurveyKey& survey, HistoryOrder order);
