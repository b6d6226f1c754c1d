// SPDX-License-Identifier: GPL-3.0-or-later
// Mailing the files that are chosen in the register.
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/filenames.h"
#include "exchange/files/homefile.h"
#include "exchange/frmLogDetails.h"
#include "platform/forms/msgbox.h"
#include "ui_frmLogDetails.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

void frmLogDetails::cmdmail_Click() {
    const Busy busy(*this);
    sendmail();
}

void frmLogDetails::sendmail() {
    constexpr int respondentColumn = 2;
    guardedWithDescription([this] {
        if (!mailer.toTestMailKey())
            return;
        passesOverFailures = false;
        for (const int row : ui->lsvDtls->SelectedRows()) {
            if (!mailFile(ui->lsvDtls->Text(row), ui->lsvDtls->Text(row, respondentColumn)))
                break;
        }
        mailer.strFound = false;
    });
}

bool frmLogDetails::mailFile(const QString& fileName, const QString& respondentName) {
    runStep(passesOverFailures, [this] { mailer.beginMail(); });
    const QString message = toGetStandardMessage(chosenCustomer());
    mailer.MAPIMessages1.MsgNoteText = message.isEmpty() ? u"."_s : message;
    strGenerateXLSFile = toCheckFileExists(fileName) ? fileName : QString();
    const std::optional<QString> path =
        strGenerateXLSFile.isEmpty() ? locateForMail(fileName) : homePath(strGenerateXLSFile);
    if (!path) {
        runStep(passesOverFailures, [this] { mailer.signOff(); });
        return false;
    }
    mailer.attach(fileName, *path);
    const QString address = mailer.toGetEmailId(respondentName, toGetCustID(chosenCustomer()));
    mailer.setRecipient(address.isEmpty() ? u"No email address found"_s : address);
    runStep(passesOverFailures, [this] { mailer.handOver(); });
    runStep(passesOverFailures, [this] { mailer.signOff(); });
    return true;
}

std::optional<QString> frmLogDetails::locateForMail(const QString& fileName) {
    forms::msgBox(fileName + u" file not found in the Home directory..Kindly locate the file to attach",
                  style::information);
    cmnDlg.Filter = u"*.xls|*.xls|*.xls"_s;
    cmnDlg.Flags = forms::HideReadOnly;
    cmnDlg.CancelError = true;
    passesOverFailures = true;
    try {
        cmnDlg.ShowOpen();
    } catch (const forms::DialogCancelled&) {
        forms::msgBox(u"Process cancelled..."_s, style::information);
        return {};
    }
    if (!isSameTitle(cmnDlg.FileTitle, fileName)) {
        forms::msgBox(u"Wrong Survey file selected....."_s, style::critical);
        return {};
    }
    return cmnDlg.FileName;
}
