// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

class QLineEdit;

namespace Ui {
class frmFeedBackObj;
}

/// Keys in, shows and corrects the answers of a respondent to one survey.
class frmFeedBackObj : public forms::DefaultForm<frmFeedBackObj> {
    Q_OBJECT

public:
    ~frmFeedBackObj() override;
    QLineEdit* txtDtls() const;

private:
    friend class DefaultForm<frmFeedBackObj>;
    frmFeedBackObj();

    std::unique_ptr<Ui::frmFeedBackObj> ui;
};
