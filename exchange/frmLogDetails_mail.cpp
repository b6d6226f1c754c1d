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
            if (!toMailFile(ui->lsvDtls->Text(row), ui->lsvDtls->Text(row, respondentColumn)))
                break;
        }
        mailer.strFound = false;
    });
}

bool frmLogDetails::toMailFile(const QString& fileName, const QString& respondentName) {
    runStep(passesOverFailures, [this] { mailer.toBeginMail(); });
    const QString message = toGetStandardMessage(toGetCustomer());
    mailer.MAPIMessages1.MsgNoteText = message.isEmpty() ? u"."_s : message;
    strGenerateXLSFile = toCheckFileExists(fileName) ? fileName : QString();
    const std::optional<QString> path =
        strGenerateXLSFile.isEmpty() ? toLocateForMail(fileName) : toHomePath(strGenerateXLSFile);
    if (!path) {
        runStep(passesOverFailures, [this] { mailer.toSignOff(); });
        return false;
    }
    mailer.toAttach(fileName, *path);
    const QString address = mailer.toGetEmailId(respondentName, toGetCustID(toGetCustomer()));
    mailer.toSetRecipient(address.isEmpty() ? u"No email address found"_s : address);
    runStep(passesOverFailures, [this] { mailer.toHandOver(); });
    runStep(passesOverFailures, [this] { mailer.toSignOff(); });
    return true;
}

std::optional<QString> frmLogDetails::toLocateForMail(const QString& fileName) {
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
