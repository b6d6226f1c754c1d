// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

#include <vector>

// Who was asked, who has answered and who is late. The look-ups throw Failure.

/// Composed: there is a questionnaire, and nothing else. Overdue: the due date is over and not every question
/// is answered.
enum class ResponseState { Composed, HandedOver, PartlyAnswered, Answered, Overdue };

/// "composed", "handed over", "partly answered", "answered" or "overdue".
QString wordOf(ResponseState state);
inline constexpr ResponseState allResponseStates[]{ResponseState::Composed, ResponseState::HandedOver,
                                                   ResponseState::PartlyAnswered, ResponseState::Answered,
                                                   ResponseState::Overdue};

/// A respondent with a questionnaire of one survey.
struct Response {
    int custid = 0;
    int respondentid = 0;
    int surveyid = 0;
    QString customer;
    QString respondent;
    QString email;
    QDate surveyDate;
    int questions = 0;  ///< of the questionnaire, as far as they are in the catalogue
    int answered = 0;   ///< Score questions with a weightage and a score, Descriptive ones with words
    int dispatchid = 0; ///< 0 for one without a row in dispatch, which has none of the following
    QDate handedOver = {};
    QDate due = {};
    int reminders = 0;
    QDate lastReminded = {};

    bool isAnswered() const { return answered >= questions; }
    ResponseState state(const QDate& today) const;
    /// "Ann of Acme, 05/03/2024"
    QString name() const;
    bool operator==(const Response&) const = default;
};

struct ResponseFilter {
    int custid = 0; ///< 0: all customers
    QDate from;     ///< survey dates, both included
    QDate to;
};

/// By customer, survey date and respondent. Two statements, however many there are: a questionnaire costs a
/// look-up for each of its questions (0.7 microseconds in a file). A questionnaire without a question of the
/// catalogue is no row.
std::vector<Response> findResponses(const ResponseFilter& filter);

/// The latest date of all surveys; invalid without one.
QDate latestSurveyDate();

/// "asked 40, answered 23, 57 %, target 60 %". The per cent are rounded down, so that a target that is shown
/// as met is met. Target 0: none is named.
QString responseSummary(const std::vector<Response>& responses, int target);
