// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/privacy/orphans.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmCleanUp;
}

/// Shows and removes the rows that deletions have left behind.
class frmCleanUp : public forms::DefaultForm<frmCleanUp> {
    Q_OBJECT

public:
    ~frmCleanUp() override;

private:
    friend class DefaultForm<frmCleanUp>;
    frmCleanUp();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void show(const OrphanResult& result);
    void cmdSearch_Click();
    bool copyBefore();
    void cmdRemove_Click();
    void cmdRewrite_Click();
    void showRemoved(const OrphanResult& removed);

    std::unique_ptr<Ui::frmCleanUp> ui;
    OrphanResult found;
};
