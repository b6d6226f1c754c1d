// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/privacy/erasureprotocol.h"
#include "core/privacy/personcopies.h"
#include "platform/forms/form.h"

#include <memory>
#include <optional>

namespace Ui {
class frmErase;
}

/// Asks how a respondent is to be erased, and does it.
class frmErase : public forms::DefaultForm<frmErase> {
    Q_OBJECT

public:
    ~frmErase() override;

    /// Nothing when the user cancels, or nothing has been erased.
    static std::optional<ErasureOutcome> erase(const Person& person);

private:
    friend class DefaultForm<frmErase>;
    frmErase();
    void onLoad() override;
    void show(const Person& erased);
    void showPlan();
    void showCopies();
    ErasureChoice choice() const;
    /// What the store, the files and the ticked copies lose, a line each.
    QStringList effects() const;
    QStringList copies(bool isTicked) const;
    void cmdErase_Click();

    inline static std::optional<ErasureOutcome> done;
    std::unique_ptr<Ui::frmErase> ui;
    Person person;
    ErasurePlan plan;
    std::vector<PersonFile> files;
};
