// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmSetting;
}

/// Sets who names the survey files, for all users of the store.
class frmSetting : public forms::DefaultForm<frmSetting> {
    Q_OBJECT

public:
    ~frmSetting() override;

private:
    friend class DefaultForm<frmSetting>;
    frmSetting();
    void onLoad() override;
    void toSaveSetting();

    std::unique_ptr<Ui::frmSetting> ui;
    bool asRead = false; ///< whether the users named the files when the form was loaded
};
