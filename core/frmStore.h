// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/store/storechoice.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmStore;
}

/// Chooses where the data are kept, the file or a server, and copies them from one to the other. Also sets
/// the folder of survey files, for all who use the store.
class frmStore : public forms::DefaultForm<frmStore> {
    Q_OBJECT

public:
    ~frmStore() override;

private:
    friend class DefaultForm<frmStore>;
    frmStore();
    void onLoad() override;
    bool onKeyDown(int key) override;
    void connectButtons();
    void showChoice(const StoreChoice& choice);
    void enableControls();
    StoreChoice shownChoice() const;
    StoreAccess shownAccess() const;
    bool isAnother() const;
    void cmdOK_Click();
    void cmdMove_Click();
    void cmdCopy_Click();
    void saveSurveyFolder();
    void requireOnlyForm() const;
    void requireComplete() const;
    bool useFile();
    bool useServer(const StoreAccess& access);
    bool copyToServer(const StoreAccess& access);
    void keepOrForgetPassword();

    std::unique_ptr<Ui::frmStore> ui;
    QString folderAsRead;
    bool isKeptAsRead = false; ///< the password in use, by the desktop
};
