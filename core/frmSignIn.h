// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/storechoice.h"
#include "platform/forms/form.h"

#include <memory>
#include <optional>

namespace Ui {
class frmSignIn;
}

struct EnteredPassword {
    QString password;
    bool isToBeKept = false; ///< by the desktop
};

/// Asks for the user's password on the server of a store.
class frmSignIn : public forms::DefaultForm<frmSignIn> {
    Q_OBJECT

public:
    ~frmSignIn() override;

    /// Shows why the last password was refused, if it was. Nothing when the user cancels.
    static std::optional<EnteredPassword> ask(const StoreChoice& choice, const QString& refusal);

private:
    friend class DefaultForm<frmSignIn>;
    frmSignIn();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void cmdOK_Click();

    inline static std::optional<EnteredPassword> entered;
    std::unique_ptr<Ui::frmSignIn> ui;
};
