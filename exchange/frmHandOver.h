// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/handover.h"
#include "platform/forms/form.h"

#include <memory>
#include <optional>

namespace Ui {
class frmHandOver;
}

/// Asks when survey files were handed over and are due, or only when they are due.
class frmHandOver : public forms::DefaultForm<frmHandOver> {
    Q_OBJECT

public:
    ~frmHandOver() override;

    /// Asks for both dates in a dialog: today at first, and due that many days later, which follows the other
    /// date. Nothing when the user cancels.
    static std::optional<HandOverDates> ask(std::size_t respondents, int days);
    /// Asks for the due date only.
    static std::optional<HandOverDates> askDue(std::size_t respondents, const QDate& shown);

private:
    friend class DefaultForm<frmHandOver>;
    frmHandOver();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void show(std::size_t respondents, const QDate& due);
    void cmdOK_Click();

    inline static std::optional<HandOverDates> entered;
    std::unique_ptr<Ui::frmHandOver> ui;
    int daysToDue = 0;
};
