// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/surveykey.h"

#include <vector>

/// A question, identified by its text and that of its parameter.
struct ChosenQuestion {
    QString parameter;
    QString question;
    bool operator==(const ChosenQuestion&) const = default;
};

/// The order of a questionnaire's records in responquery: by position, those of the same position as they
/// were stored. Without it a server returns them in any order.
QString orderOfQuestions();

// These throw Failure; the calling procedure shows it.

/// Adds the survey of the context's customer and date unless it exists. Throws Refusal for an unknown
/// customer and a missing date. Returns its key.
SurveyKey addSurvey(const SurveyContext& survey);

/// The stored questionnaire in order of position; empty without that survey or respondent.
std::vector<ChosenQuestion> readQuestionnaire(const SurveyKey& survey);

/// The questionids of its rows in order of position, also of those that have left the catalogue: they change
/// only when someone changes the questionnaire.
std::vector<int> readQuestionIds(const SurveyKey& survey);

/// Replaces the respondent's questionnaire with the questions, in positions from 1; the survey must exist. A
/// question that is no longer in the catalogue is written as the one before it; those with none before are
/// left out and returned. Call within a transaction.
std::vector<ChosenQuestion> rewriteQuestionnaire(const SurveyKey& survey,
                                                 const std::vector<ChosenQuestion>& questions);

/// Exchanges the respondent's question at a position with its neighbour, which is the one above for step -1
/// and the one below for step 1. Rows are found by position and respondent only: for a respondent with
/// several surveys the neighbour can belong to another survey, to which the question then moves. Call within
/// a transaction. Throws Refusal for a question that has left the catalogue or is not in that position, and
/// for a position without that neighbour.
void moveQuestion(const SurveyKey& survey, const ChosenQuestion& question, int position, int step);

/// Adds the questions of the source's questionnaire to the target's, and the survey of the target unless it
/// exists. A question that the target already has, by its text and its parameter's, is not changed. All added
/// questions get the same position, one more than the number of the source's questions; the next rewrite
/// numbers them. Call within a transaction. Throws Refusal when the customer or respondent of either is not
/// found.
void copyQuestionnaire(const SurveyContext& source, const SurveyContext& target);
