// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/mailer.h"
#include "platform/forms/commondialog.h"

#include <optional>
#include <vector>

/// A file in the register.
struct RegisteredFile {
    QString fileName;
    QString respondentName;
    QString surveyDate; ///< dd/mm/yyyy
};

/// Mails files of the register, wherever they are now.
class RegisterMailer : public Mailer {
public:
    /// Asks where a file is.
    explicit RegisterMailer(forms::CommonDialog& dialog) : cmnDlg(dialog) {}

    QString strGenerateXLSFile; ///< the last file mailed, when the home directory has it

    /// Hands each file of the customer to the mail client, one mail a file. A failure shows its own
    /// description and ends the run; once the user has been asked where a file is, failing steps are skipped
    /// instead.
    void mail(const QString& customer, const std::vector<RegisteredFile>& files);

private:
    /// False when the user gave up or chose another file, which ends the run.
    bool mailFile(const QString& customer, const RegisteredFile& file);
    /// The full path of a file that is not in the home directory; nothing when the user gave up or chose
    /// another file.
    std::optional<QString> locate(const QString& fileName);

    forms::CommonDialog& cmnDlg;
    bool skipsFailedSteps = false;
};
