// SPDX-License-Identifier: GPL-3.0-or-later
// The survey file that belongs to the customer, respondent and date on show: its name, and reading it.
#include "core/base/busy.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/filenames.h"
#include "exchange/files/homefile.h"
#include "exchange/files/surveylog.h"
#include "exchange/openelsewhere.h"
#include "exchange/reading.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/forms/msgbox.h"
#include "ui_frmFeedBackObj.h"

#include <QTextDocument>

using namespace Qt::StringLiterals;
namespace style = forms::style;

void frmFeedBackObj::toShowFileName() {
    guarded([this] {
        showFileLabel({});
        const QString logged = findLoggedFileName(ui->cmbCusName->Text(), findSurveyKey(chosen()));
        showFileLabel(logged.isEmpty() ? u"No Survey File Exported..."_s : u"Survey File Name : "_s + logged);
    });
}

void frmFeedBackObj::showFileLabel(const QString& text) {
    ui->lblXLSFile->setText(text);
    ui->lblXLSFile->setToolTip(text.isEmpty() ? text : Qt::convertFromPlainText(text));
}

void frmFeedBackObj::showFileNameOfChoice() {
    if (ui->lstSurveyDates->SelCount() > 0 && ui->lstRespname->SelCount() > 0)
        toShowFileName();
}

void frmFeedBackObj::cmdRead_Click() {
    const Busy busy(*this, u"Reading Survey File......"_s);
    toreadFromXlsFile();
}

QString frmFeedBackObj::toGetLoggedFileName() {
    blnLog = false;
    if (ui->lstSurveyDates->SelCount() == 0 || ui->lstRespname->SelCount() == 0)
        return {};
    QString logged =
        lookedUp([this] { return findLoggedFileName(ui->cmbCusName->Text(), findSurveyKey(chosen())); });
    if (logged.isEmpty())
        return logged;
    strXLName = logged;
    guarded([&] { setLogStatus(logged); });
    blnLog = true;
    return logged;
}

bool frmFeedBackObj::toCheckFileExists(const QString& fileName) {
    const bool exists = ::toCheckFileExists(fileName);
    strReturnFileName = exists ? fileName : QString();
    return exists;
}

void frmFeedBackObj::toreadFromXlsFile() {
    if (toCheckFileExists(toGetLoggedFileName())) {
        XLSWrite();
    } else if (!blnLog) {
        forms::msgBox(
            u"There is no Survey File Exported for the Selected Repondent and Selected Survey Date..."_s,
            style::information, u"Gaugewell v2.1"_s);
    } else {
        toLocateXlsFile();
    }
}

void frmFeedBackObj::showReadAnswers() {
    if (!hasNewAnswers || ui->lstRespname->ListCount() == 0)
        return;
    guarded([this] {
        tofillscoreandweightage();
        SetEditTextBox(1, 1);
    });
}

void frmFeedBackObj::toLocateXlsFile() {
    cmnDlg.Filter = u"*.xls|*.xls|*.xls"_s;
    cmnDlg.Flags = forms::HideReadOnly;
    cmnDlg.ShowOpen();
    if (cmnDlg.FileName.trimmed().isEmpty() || cmnDlg.FileTitle == u"Template.xls")
        return;
    if (toGetLoggedFileName().isEmpty()) {
        forms::msgBox(u"There is no Survey File for the selected Respondent and selected Survey Date..."_s,
                      style::critical);
    } else if (!isSameTitle(cmnDlg.FileTitle, strXLName)) {
        forms::msgBox(u"You have not specified the Correct XLS file.....The orignal file is - "_s +
                          strXLName + u" Please locate the same XLS file",
                      style::critical);
    } else {
        strReturnFileName = cmnDlg.FileName.trimmed();
        blnBrowse = true;
        XLSWrite();
    }
}

void frmFeedBackObj::XLSWrite() {
    // A located file leaves blnBrowse set, so that a bare name is then taken as it stands.
    const QString path = blnBrowse ? strReturnFileName : homePath(strReturnFileName);
    if (!mayUseFile(path))
        return;
    const Reading reading = readSurveyFile(path);
    if (reading.hasWritten) { // otherwise what has been typed stays
        tofillscoreandweightage();
        SetEditTextBox(1, 1); // it may show what its cell held before
    }
    // Any other failure than the store's has named the file.
    nameAfterReading(reading.hasStoreFailed ? reading.bad : QStringList(), reading.remarks);
}
