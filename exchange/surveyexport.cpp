// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/surveyexport.h"

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "exchange/files/filenames.h"
#include "exchange/files/homefile.h"
#include "exchange/files/surveylog.h"
#include "exchange/files/surveysheet.h"
#include "exchange/openelsewhere.h"
#include "exchange/viewer.h"
#include "platform/desktop/ownerfile.h"
#include "platform/forms/clock.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/form.h"
#include "platform/forms/msgbox.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

const QString& title() {
    static const QString text = u"Gaugewell v2.1"_s;
    return text;
}

} // namespace

void SurveyExport::run() {
    form.setMousePointer(forms::Hourglass);
    state.strGenerateXLSFile.clear();
    const bool found = guarded({.form = &form}, [&] {
        toReconnect();
        key = requireSurveyKey(survey);
    });
    if (!found) {
        state.blnMail = false;
        return;
    }
    toChooseName();
    // Under a name that the program made may stand a file of before the customer was renamed.
    if ((exists || toCheckFileExists(state.strGenerateXLSFile)) && !mayOverwrite()) {
        state.blnMail = false;
        form.setMousePointer(forms::DefaultPointer);
        return;
    }
    guarded({}, [&] {
        toReconnect();
        toGetTheLastScoreAndWeightage(key, road);
    });
    guarded({}, [&] {
        toReconnect();
        resetLogStatus(key);
    });
    guarded({.form = &form}, [&] {
        toReconnect();
        toWriteWorkbook();
    });
}

/// A file that is there keeps its name in both modes. Otherwise the program makes one, or the user is asked
/// later, unless the register has the name of a file that is gone.
void SurveyExport::toChooseName() {
    const QString logged = lookedUp([&] { return findLoggedFileName(survey.customer, key); });
    exists = toCheckFileExists(logged);
    if (exists || state.blnSetting)
        state.strGenerateXLSFile = logged;
    else
        state.strGenerateXLSFile = state.strXLSFileName = lookedUp([&] { return makeSystemFileName(key); });
}

bool SurveyExport::mayOverwrite() const {
    return forms::msgBox(state.strGenerateXLSFile + u" file apready exist for Respondent - " +
                             survey.respondent + u" for Survey Date - " + survey.date +
                             u"....Do you want to overwrite?\r\n" + otherOwners(),
                         style::yesNo + style::information + style::secondButton,
                         title()) == forms::Answer::Yes &&
           mayUseFile(path());
}

/// Whose the name is in the register besides this survey's: for the question before overwriting.
QString SurveyExport::otherOwners() const {
    QStringList owners;
    guarded({}, [&] {
        toReconnect();
        for (const LogRow& row : findLogRows(state.strGenerateXLSFile)) {
            const bool sameRespondent =
                row.respid.isEmpty() ? row.custname == survey.customer && row.respname == survey.respondent
                                     : row.respid == QString::number(key.respondentid);
            if (!sameRespondent || row.sdate != key.date)
                owners << u"\r\n%1, %2, %3"_s.arg(row.custname, row.respname,
                                                  row.sdate.toString(ado::dateTextFormat));
        }
    });
    return owners.isEmpty() ? QString() : u"In the register the file belongs to:"_s + owners.join(QString());
}

QString SurveyExport::path() const {
    return toHomePath(state.strGenerateXLSFile);
}

void SurveyExport::step(const std::function<void()>& action) const {
    try {
        action();
    } catch (const std::exception&) {
        if (trapping)
            throw;
        cnnMain->Errors().Clear();
    }
}

void SurveyExport::toWriteWorkbook() {
    wkbExcel = appExcel.Workbooks().Open(exists ? path() : toHomePath(templateFile.toString()));
    wksExcel = wkbExcel.Worksheets(cellmap::sheetName.toString());
    wksExcel.Unprotect(cellmap::sheetPassword.toString());
    toFillSurveySheet(wksExcel, {.organisation = strCompanyName,
                                 .customer = survey.customer,
                                 .respondent = survey.respondent,
                                 .custid = QString::number(key.custid),
                                 .respondentid = QString::number(key.respondentid),
                                 .surveyid = key.surveyid == 0 ? QString() : QString::number(key.surveyid),
                                 .surveyDate = key.date,
                                 .exportDate = forms::todayHook()});
    if (state.strGenerateXLSFile.trimmed().isEmpty() && !toAskForName())
        return;
    guarded({}, [&] {
        toReconnect();
        writeLogRow(survey, key, state.strGenerateXLSFile);
    });
    toSave();
    if (state.blnMail)
        step(sendmail);
    else
        toView();
    state.blnMail = false;
    form.setMousePointer(forms::DefaultPointer);
}

/// Asks until the name is free. False when the user cancels.
bool SurveyExport::toAskForName() {
    forms::CommonDialog cmnDlg;
    cmnDlg.Filter = u"*.xls|*.xls|*.xls"_s;
    cmnDlg.Flags = forms::HideReadOnly;
    cmnDlg.CancelError = true;
    cmnDlg.InitDir = homeDirectory();
    trapping = false;
    for (bool again = false;; again = true) {
        if (again)
            forms::msgBox(u"Duplicate Survey File...Cannot Save Duplicate Survey File..."_s, style::critical,
                          title());
        try {
            cmnDlg.ShowSave();
        } catch (const forms::DialogCancelled&) {
            cmnDlg.FileTitle.clear();
        }
        if (cmnDlg.FileTitle.trimmed().isEmpty()) {
            forms::msgBox(u"Survey File Export cancelled..."_s, style::information, title());
            wkbExcel.Close(false);
            appExcel.Quit();
            return false;
        }
        // The register's statements take no plain apostrophe, so that the file has none either.
        const QString chosen = toStoredText(cmnDlg.FileTitle);
        // The dialog asks before a file is replaced, but only for the name and in the folder that it shows.
        const bool asked =
            chosen == cmnDlg.FileTitle && QFileInfo(cmnDlg.FileName).dir() == QDir(homeDirectory());
        if (lookedUp([&] { return isFileNameLogged(chosen); }) || isProgramsOwnFile(chosen) ||
            (!asked && toCheckFileExists(chosen)) || !mayUseFile(toHomePath(chosen)))
            continue;
        state.strGenerateXLSFile = chosen;
        return true;
    }
}

/// A workbook that could not be saved is not closed with its changes: they would go into the template.
void SurveyExport::toSave() {
    bool saved = false;
    step([&] { wksExcel.Protect(cellmap::sheetPassword.toString()); });
    step([&] {
        exists ? wkbExcel.Save() : wkbExcel.SaveAs(path());
        saved = true;
    });
    step([&] { wkbExcel.Close(saved); });
    if (saved)
        desktop::keepToOwner(path());
}

void SurveyExport::toView() {
    if (forms::msgBox(u"Survey File Exported...Do you want to view the file? "_s,
                      style::yesNo + style::information, title()) == forms::Answer::Yes)
        step([&] { toViewWorkbook(path()); });
    else
        appExcel.Quit();
}
