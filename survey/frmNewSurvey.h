// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "survey/surveyeditor.h"

#include <memory>

namespace Ui {
class frmNewSurvey;
}

/// Composes the questionnaire of the customer, respondent and date that frmSelectSurvey shows when this form
/// loads; they stay fixed while it is open. The caller sets the caption and, for an existing questionnaire,
/// refreshes the grid.
class frmNewSurvey : public forms::DefaultForm<frmNewSurvey, SurveyEditor> {
    Q_OBJECT

public:
    ~frmNewSurvey() override;
    /// The id of the current respondent, whatever name is passed.
    QString toGetRespondentID(const QString& respondent) const override;

private:
    friend class DefaultForm<frmNewSurvey, SurveyEditor>;
    frmNewSurvey();
    void onLoad() override;
    SurveyContext context() const override;
    int helpContext() const override;
    void importSurvey() override;

    std::unique_ptr<Ui::frmNewSurvey> ui;
};
