// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/dtpicker.h"
#include "platform/forms/form.h"
#include "platform/forms/lists.h"
#include "survey/questionnaires/questionnaire.h"

#include <memory>

namespace Ui {
class frmSelectSurvey;
}

/// Picks customer, respondent and date of the questionnaire to be composed, and opens it.
class frmSelectSurvey : public forms::DefaultForm<frmSelectSurvey> {
    Q_OBJECT

public:
    ~frmSelectSurvey() override;

    forms::ComboBox* cmbCustomer() const;
    forms::ListBox* lstRespondent() const;
    forms::DTPicker* dtSDate() const;

    void toFillCustomerList();
    void toFillRespondentList();
    /// Picks the customer, respondent and date of a survey; a customer or respondent that is
    /// not listed changes nothing.
    void pick(const SurveyContext& survey);
    /// Opens the chosen questionnaire; asks first if it exists and has not just been pasted.
    void cmdBlankSurvey();
    /// As cmdBlankSurvey, for the given survey.
    static void openSurvey(const SurveyContext& survey);

private:
    friend class DefaultForm<frmSelectSurvey>;
    frmSelectSurvey();
    void onLoad() override;
    void cmbCustomer_Click();
    void cmdExistingSurvey();
    SurveyContext chosen() const;
    static bool toIsSurveyNew(const QDate& date, const QString& customer, const QString& respondent);

    std::unique_ptr<Ui::frmSelectSurvey> ui;
};
