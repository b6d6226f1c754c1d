// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QString>

/// The survey of one respondent as shown by controls.
struct SurveyContext {
    QString customer;
    QString respondent;
    QString date; ///< dd/mm/yyyy
    bool operator==(const SurveyContext&) const = default;
};

/// The survey of one respondent by its keys; 0 for a key that is not in the store.
struct SurveyKey {
    int custid = 0;
    int respondentid = 0;
    int surveyid = 0;
    QDate date;
    bool operator==(const SurveyKey&) const = default;
};

// Look-ups, one statement for each key. They throw Failure.

/// The respondentid of a customer's respondent, 0 for none.
int findRespondent(const QString& respondent, int custid);

SurveyKey findSurveyKey(const SurveyContext& survey);

/// Throws Refusal when the customer or the respondent is not found. The survey need not exist.
SurveyKey requireSurveyKey(const SurveyContext& survey);
