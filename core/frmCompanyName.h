// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmCompanyName;
}

/// Changes the name of the organisation, which company.txt holds.
class frmCompanyName : public forms::DefaultForm<frmCompanyName> {
    Q_OBJECT

public:
    ~frmCompanyName() override;

private:
    friend class DefaultForm<frmCompanyName>;
    frmCompanyName();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void cmdOK_Click();

    std::unique_ptr<Ui::frmCompanyName> ui;
};
