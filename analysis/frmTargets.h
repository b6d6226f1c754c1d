// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/targets.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmTargets;
}

/// Sets the target of each parameter, for all customers or for one. Typing changes the grid only; Save writes
/// what was changed.
class frmTargets : public forms::DefaultForm<frmTargets> {
    Q_OBJECT

public:
    ~frmTargets() override;

private:
    friend class DefaultForm<frmTargets>;
    frmTargets();
    void onLoad() override;
    void onActivate() override;
    bool onKeyDown(int key) override;
    void onQueryUnload(bool& cancel) override;

    void cmbCustomer_Click();
    void cmdSave_Click();
    /// Reads the list anew. Of a customer that is gone, what has been typed is kept on demand.
    bool fillCustomers(bool isKept);
    /// Shows the targets of a customer; after an error, which is shown, those on show stay.
    void fill(int wanted);
    /// Chooses the customer on show in the list; nothing when it is gone.
    void showCustomer();
    void addRow(const TargetChange& target, const Target& forAll);
    bool isTyping() const;
    /// Takes what is being typed into the grid.
    void endTyping();
    /// What the user has changed; nothing when a text is no target, which is reported.
    std::optional<std::vector<TargetChange>> changes();
    bool isChanged() const;
    /// Whether changes may be lost: there are none, or the user agrees.
    bool mayLose();

    std::vector<TargetChange> rows; ///< as they were read
    int custid = allCustomers;      ///< of the targets on show
    std::unique_ptr<Ui::frmTargets> ui;
};
