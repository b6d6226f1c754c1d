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

    /// Asks for both dates in a dialog: at first the noted ones of a single respondent, or else today and due
    /// that many days later. A due date that is so many days later follows the other date. Nothing when the
    /// user cancels.
    static std::optional<HandOverDates> ask(const std::vector<Response>& respondents, int days);
    /// Asks for the due date only, which none of them may have before the day of handing over.
    static std::optional<HandOverDates> askDue(const std::vector<Response>& respondents, int days);

private:
    friend class DefaultForm<frmHandOver>;
    frmHandOver();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void show(const std::vector<Response>& asked, const QDate& handedOver, int days);
    void dtHandedOver_Change();
    /// Empty for dates that can be.
    QString objectionTo(const HandOverDates& dates) const;
    void cmdOK_Click();

    inline static std::optional<HandOverDates> entered;
    std::unique_ptr<Ui::frmHandOver> ui;
    std::vector<Response> respondents;
    QDate lastHandedOver;
    int daysToDue = 0;
};
