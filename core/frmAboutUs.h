// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmAboutUs;
}

/// Shows information about the program and the organisation that uses it.
class frmAboutUs : public forms::DefaultForm<frmAboutUs> {
    Q_OBJECT

public:
    ~frmAboutUs() override;

private:
    friend class DefaultForm<frmAboutUs>;
    frmAboutUs();
    void onLoad() override;

    std::unique_ptr<Ui::frmAboutUs> ui;
};
