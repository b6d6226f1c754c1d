// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/registermailer.h"

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/filenames.h"
#include "exchange/files/homefile.h"
#include "platform/forms/msgbox.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

void RegisterMailer::mail(const QString& customer, const std::vector<RegisteredFile>& files) {
    guardedWithDescription([&] {
        if (!toTestMailKey())
            return;
        skipsFailedSteps = false;
        for (const RegisteredFile& file : files) {
            if (!mailFile(customer, file))
                break;
        }
        strFound = false;
    });
}

bool RegisterMailer::mailFile(const QString& customer, const RegisteredFile& file) {
    runStep(skipsFailedSteps, [this] { beginMail(); });
    const QString message = toGetStandardMessage(customer);
    MAPIMessages1.MsgNoteText = message.isEmpty() ? u"."_s : message;
    strGenerateXLSFile = toCheckFileExists(file.fileName) ? file.fileName : QString();
    const std::optional<QString> path =
        strGenerateXLSFile.isEmpty() ? locate(file.fileName) : surveyFilePath(strGenerateXLSFile);
    if (!path) {
        runStep(skipsFailedSteps, [this] { signOff(); });
        return false;
    }
    attach(file.fileName, *path);
    const QString address = toGetEmailId(file.respondentName, toGetCustID(customer));
    setRecipient(address.isEmpty() ? u"No email address found"_s : address);
    runStep(skipsFailedSteps, [&] {
        handOver();
        noteHandOver({customer, file.respondentName, file.surveyDate}, file.fileName);
    });
    runStep(skipsFailedSteps, [this] { signOff(); });
    return true;
}

std::optional<QString> RegisterMailer::locate(const QString& fileName) {
    forms::msgBox(fileName + u" file not found in the Home directory..Kindly locate the file to attach",
                  style::information);
    cmnDlg.Filter = u"*.xls|*.xls"_s + returnedFilter;
    cmnDlg.Flags = forms::HideReadOnly;
    cmnDlg.CancelError = true;
    skipsFailedSteps = true;
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
