// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

class QLineEdit;

namespace Ui {
class frmSelectSurvey;
}

/// Picks customer, respondent and date of the questionnaire to be composed.
class frmSelectSurvey : public forms::DefaultForm<frmSelectSurvey> {
    Q_OBJECT

public:
    ~frmSelectSurvey() override;

private:
    friend class DefaultForm<frmSelectSurvey>;
    frmSelectSurvey();

    std::unique_ptr<Ui::frmSelectSurvey> ui;
};
