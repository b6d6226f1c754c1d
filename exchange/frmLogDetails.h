// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/registermailer.h"
#include "platform/crystal/crystalreport.h"
#include "platform/forms/form.h"

#include <memory>

namespace Ui {
class frmLogDetails;
}

/// The register of survey files: lists a customer's files, mails, opens, deletes and prints them.
class frmLogDetails : public forms::DefaultForm<frmLogDetails> {
    Q_OBJECT

public:
    ~frmLogDetails() override;

    forms::CommonDialog cmnDlg;
    crystal::CrystalReport crptReport;
    RegisterMailer mailer{cmnDlg};

    /// The customer chosen here, or empty.
    QString chosenCustomer() const;
    QString toGetStandardMessage(const QString& customerName) const;
    /// Stores the text of frmMessage as the message of the chosen customer. A failure is shown. False when
    /// the user goes on editing, since someone else has changed the message.
    bool toWriteStandardMessage();
    /// Keeps the chosen customer if there still is one of that name.
    void toFillCustomerList();
    void toFillListView();
    /// Mails the chosen files.
    void sendmail();

private:
    friend class DefaultForm<frmLogDetails>;
    frmLogDetails();
    void onLoad() override;
    /// Shows what has been exported, read in or deleted meanwhile and keeps the selection.
    void onActivate() override;
    void connectEvents();

    void cmbCustomer_Click();
    void cmdmail_Click();
    void cmdDelete_Click();
    void cmdPrint_Click();
    /// Opens the chosen files in the desktop's spreadsheet program.
    void openFiles();

    std::unique_ptr<Ui::frmLogDetails> ui;
    QString messageAsRead; ///< by the open frmMessage
};
