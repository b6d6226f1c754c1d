// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/files/responsesettings.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmResponseSettings;
}

/// What holds for the responses of all users of the store: the days until the due date, the target, and the
/// text of the reminders.
class frmResponseSettings : public forms::DefaultForm<frmResponseSettings> {
    Q_OBJECT

public:
    ~frmResponseSettings() override;

private:
    friend class DefaultForm<frmResponseSettings>;
    frmResponseSettings();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void cmdRestore_Click();
    void cmdOK_Click();
    ResponseSettings shownSettings() const;

    std::unique_ptr<Ui::frmResponseSettings> ui;
    ResponseSettings asRead;
};
