// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

/// The survey that a form has in hand, as its controls show it.
struct SurveyContext {
    QString customer;
    QString respondent;
    QString date; ///< dd/mm/yyyy
    bool operator==(const SurveyContext&) const = default;
};

/// A question is known by its text and that of its parameter.
struct ChosenQuestion {
    QString parameter;
    QString question;
    bool operator==(const ChosenQuestion&) const = default;
};

// For use within a procedure, whose handler shows their failure: they throw ado::Failure.

/// The surveyid of a customer's survey of that date (dd/mm/yyyy); empty when there is none or no date.
QString findSurvey(const QString& date, const QString& customer);

/// The respondentid of a customer's respondent; empty when there is none.
QString findRespondent(const QString& respondent, const QString& customer);

/// The respondentid of the survey's respondent. Throws Refusal when the customer or the respondent is not
/// found.
QString requireRespondent(const SurveyContext& survey);

/// Adds the survey of the context's customer and date unless it exists. Throws Refusal for an unknown
/// customer and a missing date.
void addSurvey(const SurveyContext& survey);

/// The stored questionnaire in order of position; empty without a survey of that customer and date and for an
/// unknown respondent. Throws ado::Failure.
std::vector<ChosenQuestion> readQuestionnaire(const SurveyContext& survey);

/// Throws the respondent's questionnaire away and writes the questions as their new one, in positions from
/// 1; the survey must exist. A question that is no longer in the catalogue is written as the one before it;
/// those with none before are left out and returned. The transaction is the caller's; throws Refusal for an
/// unknown customer or respondent, and ado::Failure.
std::vector<ChosenQuestion> toRewriteQuestionnaire(const SurveyContext& survey,
                                                   const std::vector<ChosenQuestion>& questions);

/// Exchanges the respondent's question at a position with its neighbour, which is the one above for step -1
/// and the one below for step 1. Position and respondent alone say which rows these are: for a respondent
/// with several surveys the neighbour can be another survey's, and the question then goes over to that
/// survey. Refuses an unknown customer or respondent, a question that has left the catalogue or is not in
/// that position, and a position without that neighbour. The transaction is the caller's; throws Refusal and
/// ado::Failure.
void toMoveQuestion(const SurveyContext& survey, const ChosenQuestion& question, int position, int step);

/// Adds the questions of the source's questionnaire to the target's, and the survey of the target unless it
/// exists. A question that the target has already, by its text and its parameter's, stays as it is. All added
/// ones stand in one position, the number of the source's questions and one more; the next rewrite gives them
/// places of their own. The transaction is the caller's; throws Refusal when the customer or respondent of
/// either is not found, and ado::Failure.
void toCopyQuestionnaire(const SurveyContext& source, const SurveyContext& target);
