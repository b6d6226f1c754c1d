// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/questionnaires/questionnaire.h"

#include <QDate>

namespace forms {
class ComboBox;
class Form;
class ListBox;
} // namespace forms

/// The lists by which a form lets the user pick an existing survey: the customers that have one, all
/// respondents of the picked customer, and the dates on which the picked respondent has a questionnaire. A
/// failure to fill one is shown.
struct SurveyLists {
    forms::Form* form;
    forms::ComboBox* cmbCustomer;
    forms::ListBox* lstRespondent;
    forms::ListBox* lstSurvetDates;

    SurveyContext picked() const;
    void toFillCustomerList() const;
    /// Picks the first respondent. Without one the dates are cleared.
    void toFillRespondentList() const;
    /// Oldest first, none picked. One date can be left out.
    void toFillSurveyDateList(const QDate& leftOut = {}) const;
    void pickFirstCustomer() const;
    void pickFirstDate() const;
};

/// The respondentid as text, empty when there is none. A failure is shown and returns the empty text.
QString respondentIdText(const QString& respondent, const QString& customer);
