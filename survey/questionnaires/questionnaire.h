// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

#include <vector>

/// A question is known by its text and that of its parameter.
struct ChosenQuestion {
    QString parameter;
    QString question;
    bool operator==(const ChosenQuestion&) const = default;
};

// For use within a procedure, whose handler shows their failure: they throw Failure.

/// Adds the survey of the context's customer and date unless it exists. Throws Refusal for an unknown
/// customer and a missing date. Returns its key.
SurveyKey addSurvey(const SurveyContext& survey);

/// The stored questionnaire in order of position; empty without that survey or respondent.
std::vector<ChosenQuestion> readQuestionnaire(const SurveyKey& survey);

/// Throws the respondent's questionnaire away and writes the questions as their new one, in positions from
/// 1; the survey must exist. A question that is no longer in the catalogue is written as the one before it;
/// those with none before are left out and returned. The transaction is the caller's.
std::vector<ChosenQuestion> rewriteQuestionnaire(const SurveyKey& survey,
                                                 const std::vector<ChosenQuestion>& questions);

/// Exchanges the respondent's question at a position with its neighbour, which is the one above for step -1
/// and the one below for step 1. Position and respondent alone say which rows these are: for a respondent
/// with several surveys the neighbour can be another survey's, and the question then goes over to that
/// survey. The transaction is the caller's. Throws Refusal for a question that has left the catalogue or is
/// not in that position, and for a position without that neighbour.
void moveQuestion(const SurveyKey& survey, const ChosenQuestion& question, int position, int step);

/// Adds the questions of the source's questionnaire to the target's, and the survey of the target unless it
/// exists. A question that the target has already, by its text and its parameter's, stays as it is. All added
/// ones stand in one position, the number of the source's questions and one more; the next rewrite gives them
/// places of their own. The transaction is the caller's. Throws Refusal when the customer or respondent of
/// either is not found.
void copyQuestionnaire(const SurveyContext& source, const SurveyContext& target);
