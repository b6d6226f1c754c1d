// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

class QLineEdit;

namespace Ui {
class frmSatisfactionIndex;
}

/// Shows the Satisfaction Index of the chosen parameters over time.
class frmSatisfactionIndex : public forms::DefaultForm<frmSatisfactionIndex> {
    Q_OBJECT

public:
    ~frmSatisfactionIndex() override;

private:
    friend class DefaultForm<frmSatisfactionIndex>;
    frmSatisfactionIndex();

    std::unique_ptr<Ui::frmSatisfactionIndex> ui;
};
