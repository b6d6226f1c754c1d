// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/storerestore.h"
#include "platform/forms/form.h"

#include <map>
#include <memory>

namespace Ui {
class frmBackups;
}

/// Lists the copies of the store, makes one, checks them, and goes back to one.
class frmBackups : public forms::DefaultForm<frmBackups> {
    Q_OBJECT

public:
    ~frmBackups() override;

private:
    friend class DefaultForm<frmBackups>;
    frmBackups();
    void onLoad() override;
    void onActivate() override;
    void fillCopies();
    void cmdBackUp_Click();
    void cmdCheck_Click();
    void cmdRestore_Click();
    /// The chosen copy; null, after a message, for none.
    const StoreCopy* chosen();
    /// False when the copy is not good, or the user has cancelled.
    bool check(const StoreCopy& copy);
    bool askRestore(const StoreCopy& copy);
    bool restore(const StoreCopy& copy);

    std::unique_ptr<Ui::frmBackups> ui;
    std::vector<StoreCopy> copies;      ///< in the order of the list
    std::map<QString, QString> checked; ///< what the check has found, by path
};
