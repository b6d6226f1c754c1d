// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/mailer.h"
#include "platform/crystal/crystalreport.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/form.h"

#include <functional>
#include <memory>
#include <optional>

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
    Mailer mailer;
    QString strGenerateXLSFile; ///< the file that is mailed, when the home directory has it

    /// The customer chosen here, or empty.
    QString chosenCustomer() const;
    QString toGetStandardMessage(const QString& customerName) const;
    /// Stores the text of frmMessage as the message of the chosen customer. A failure is shown.
    void toWriteStandardMessage();
    /// Keeps the chosen customer when there is one of that name.
    void toFillCustomerList();
    void toFillListView();
    /// Hands each chosen file to the mail client, one mail a file. A failure shows its own description and
    /// ends the run; once the user was asked where a file is, failing steps are passed over instead.
    void sendmail();

private:
    friend class DefaultForm<frmLogDetails>;
    frmLogDetails();
    void onLoad() override;
    /// Shows what has been exported, read in or deleted meanwhile; what was chosen stays chosen.
    void onActivate() override;
    void connectEvents();

    void cmbCustomer_Click();
    void cmdmail_Click();
    void cmdDelete_Click();
    void cmdPrint_Click();
    /// Opens the chosen files in the desktop's spreadsheet program.
    void openFiles();

    /// False when the user gave up or chose another file, so that the run ends.
    bool mailFile(const QString& fileName, const QString& respondentName);
    /// The full path of a file that the home directory has not; nothing when the user gave up or chose
    /// another file.
    std::optional<QString> locateForMail(const QString& fileName);

    /// Throws when the file or its rows cannot be deleted.
    void deleteFile(const QString& fileName, const QString& path) const;
    void toDeleteLogRow(const QString& fileName) const;
    void deleteElsewhere(const QString& fileName);

    std::unique_ptr<Ui::frmLogDetails> ui;
    bool passesOverFailures = false;
};
