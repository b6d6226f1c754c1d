// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace forms {
class MSHFlexGrid;
}

/// The survey that a form has in hand, as its controls show it.
struct SurveyContext {
    QString customer;
    QString respondent;
    QString date; ///< dd/mm/yyyy
};

/// A question is known by its text and that of its parameter.
struct ChosenQuestion {
    QString parameter;
    QString question;
};

/// The surveyid of a customer's survey of that date (dd/mm/yyyy); empty when there is none. A failure is
/// shown and gives an empty text.
QString toGetSurveyID(const QString& date, const QString& customer);

/// The respondentid of a customer's respondent; empty when there is none. A failure is shown and gives an
/// empty text.
QString toGetRespondentID(const QString& respondent, const QString& customer);

/// Adds the survey of the context's customer and date unless it exists. A failure is shown and kept from the
/// caller.
void toSaveSurveyID(const SurveyContext& survey);

/// Shows the stored questionnaire in a grid: one row a question in order of position, and a blank row.
/// Without a survey of that customer and date, and for an empty date or an unknown respondent, there is only
/// the blank row; for an empty respondent the grid stays as it is. Throws ado::Failure.
void toShowQuestionnaire(forms::MSHFlexGrid* grid, const SurveyContext& survey);

/// What a rewrite does when the customer has no survey of the date.
enum class WithoutSurvey { Fail, KeepRows };

/// Throws the respondent's questionnaire away and writes the questions as their new one, in positions from
/// 1. A question that is no longer in the catalogue is written as the one before it. Does nothing for an
/// unknown respondent. The transaction is the caller's; throws ado::Failure.
void toRewriteQuestionnaire(const SurveyContext& survey, const std::vector<ChosenQuestion>& questions,
                            WithoutSurvey withoutSurvey = WithoutSurvey::Fail);

/// Exchanges the respondent's question at a position with its neighbour, which is the one above for step -1
/// and the one below for step 1. Position and respondent alone say which rows these are: for a respondent
/// with several surveys the neighbour can be another survey's, and the question then goes over to that
/// survey. The transaction is the caller's; throws ado::Failure.
void toMoveQuestion(const SurveyContext& survey, const ChosenQuestion& question, int position, int step);

/// Adds the questions of the source's questionnaire to the target's, and the survey of the target unless it
/// exists. A question that the target has already, by its text and its parameter's, stays as it is. All added
/// ones stand in one position, the number of the source's questions and one more; the next rewrite gives them
/// places of their own. The transaction is the caller's; throws ado::Failure.
void toCopyQuestionnaire(const SurveyContext& source, const SurveyContext& target);
