// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/base/changedrow.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmChangedMeanwhile;
}

/// Shows what the user and someone else have made of one row and asks which of them counts.
class frmChangedMeanwhile : public forms::DefaultForm<frmChangedMeanwhile> {
    Q_OBJECT

public:
    ~frmChangedMeanwhile() override;

    /// Asks in a dialog. Esc and the default button keep both.
    static Keep ask(const ChangedRow& row);

private:
    friend class DefaultForm<frmChangedMeanwhile>;
    frmChangedMeanwhile();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void show(const ChangedRow& row);
    void answer(Keep keep);

    inline static Keep answered = Keep::Both;
    std::unique_ptr<Ui::frmChangedMeanwhile> ui;
};
