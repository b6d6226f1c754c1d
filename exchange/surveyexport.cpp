// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/surveyexport.h"

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/programsetting.h"
#include "exchange/files/filenames.h"
#include "exchange/files/homefile.h"
#include "exchange/files/surveylog.h"
#include "exchange/files/surveysheet.h"
#include "exchange/openelsewhere.h"
#include "exchange/viewer.h"
#include "platform/desktop/ownerfile.h"
#include "platform/excel/application.h"
#include "platform/forms/clock.h"
#include "platform/forms/commondialog.h"
#include "platform/forms/msgbox.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

class SurveyExport {
public:
    explicit SurveyExport(const ExportRequest& exported) : request(exported), survey(exported.survey) {}
    ExportResult run();

private:
    void chooseName();
    bool mayOverwrite() const;
    QString otherOwners() const;
    bool write();
    bool askForName();
    bool mayTakeName(const QString& fileName, bool isConfirmed) const;
    void save(const excel::Workbook& workbook, const excel::Worksheet& sheet) const;
    QString path() const { return surveyFilePath(result.fileName); }

    const ExportRequest& request;
    const SurveyContext& survey;
    ExportResult result;
    SurveyKey key;                 // of the survey, looked up once
    bool exists = false;           // an existing file is overwritten
    bool skipsFailedSteps = false; // otherwise a step that fails ends the export
};

ExportResult SurveyExport::run() {
    if (!guarded([&] { key = requireSurveyKey(survey); }))
        return result;
    chooseName();
    // A generated name can belong to a file from before the customer was renamed.
    if ((exists || toCheckFileExists(result.fileName)) && !mayOverwrite())
        return result;
    guarded([&] { // at once: the sheet is written from a work table, which ends with its connection
        toGetTheLastScoreAndWeightage(key, request.history);
        resetLogStatus(key);
        result.isFinished = write();
    });
    return result;
}

/// An existing file keeps its name in both modes. Otherwise the program makes one, or the user is asked
/// later, unless the register has the name of a missing file.
void SurveyExport::chooseName() {
    result.fileName = lookedUp([&] { return findLoggedFileName(survey.customer, key); });
    exists = toCheckFileExists(result.fileName);
    if (exists || request.userNamesFiles)
        return;
    result.generatedName = lookedUp([&] { return makeSystemFileName(key); });
    result.fileName = *result.generatedName;
}

bool SurveyExport::mayOverwrite() const {
    return forms::msgBox(result.fileName + u" file apready exist for Respondent - " + survey.respondent +
                             u" for Survey Date - " + survey.date + u"....Do you want to overwrite?\r\n" +
                             otherOwners(),
                         style::yesNo + style::information + style::secondButton,
                         titleWithVersion) == forms::Answer::Yes &&
           mayUseFile(path());
}

/// The other surveys whose registered file has the name, for the question before overwriting.
QString SurveyExport::otherOwners() const {
    QStringList owners;
    guarded([&] {
        for (const LogRow& row : findLogRows(result.fileName)) {
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

/// False when the user cancels.
bool SurveyExport::write() {
    excel::Application appExcel;
    const excel::Workbook wkbExcel =
        appExcel.Workbooks().Open(exists ? path() : homePath(templateFile.toString()));
    const excel::Worksheet wksExcel = wkbExcel.Worksheets(cellmap::sheetName.toString());
    wksExcel.Unprotect(cellmap::sheetPassword.toString());
    fillSurveySheet(wksExcel, {.organisation = strCompanyName,
                               .customer = survey.customer,
                               .respondent = survey.respondent,
                               .custid = QString::number(key.custid),
                               .respondentid = QString::number(key.respondentid),
                               .surveyid = key.surveyid == 0 ? QString() : QString::number(key.surveyid),
                               .surveyDate = key.date,
                               .exportDate = forms::todayHook()});
    if (result.fileName.trimmed().isEmpty() && !askForName())
        return false;
    guarded([&] { writeLogRow(survey, key, result.fileName); });
    save(wkbExcel, wksExcel);
    return true;
}

/// Asks until the name is free. False when the user cancels.
bool SurveyExport::askForName() {
    forms::CommonDialog cmnDlg;
    cmnDlg.Filter = u"*.xls|*.xls|*.xls"_s;
    cmnDlg.Flags = forms::HideReadOnly;
    cmnDlg.CancelError = true;
    cmnDlg.InitDir = surveyFolder();
    skipsFailedSteps = true;
    while (true) {
        try {
            cmnDlg.ShowSave();
        } catch (const forms::DialogCancelled&) {
            cmnDlg.FileTitle.clear();
        }
        if (cmnDlg.FileTitle.trimmed().isEmpty()) {
            forms::msgBox(u"Survey File Export cancelled..."_s, style::information, titleWithVersion);
            return false;
        }
        // The register's statements take no plain apostrophe, so the file name has none either.
        const QString chosen = toStoredText(cmnDlg.FileTitle);
        // The dialog asks before it replaces a file, but only for the name and folder that it shows.
        const bool isFree = mayTakeName(chosen, chosen == cmnDlg.FileTitle &&
                                                    QFileInfo(cmnDlg.FileName).dir() == QDir(surveyFolder()));
        if (isFree && mayUseFile(surveyFilePath(chosen))) {
            result.fileName = chosen;
            return true;
        }
        if (!isFree)
            forms::msgBox(u"Duplicate Survey File...Cannot Save Duplicate Survey File..."_s, style::critical,
                          titleWithVersion);
    }
}

bool SurveyExport::mayTakeName(const QString& fileName, bool isConfirmed) const {
    return !lookedUp([&] { return isFileNameLogged(fileName); }) && !isProgramsOwnFile(fileName) &&
           (isConfirmed || !toCheckFileExists(fileName));
}

/// A workbook that could not be saved is closed without its changes: they would go into the template.
void SurveyExport::save(const excel::Workbook& workbook, const excel::Worksheet& sheet) const {
    bool saved = false;
    runStep(skipsFailedSteps, [&] { sheet.Protect(cellmap::sheetPassword.toString()); });
    runStep(skipsFailedSteps, [&] {
        exists ? workbook.Save() : workbook.SaveAs(path());
        saved = true;
    });
    runStep(skipsFailedSteps, [&] { workbook.Close(saved); });
    if (saved)
        showDone(result.fileName + u" written", path());
    if (saved && surveyFolder() == homeDirectory()) // elsewhere others read it too
        desktop::keepToOwner(path());
}

} // namespace

ExportResult exportSurvey(const ExportRequest& request) {
    return SurveyExport(request).run();
}

void offerToView(const QString& fileName) {
    if (forms::msgBox(u"Survey File Exported...Do you want to view the file? "_s,
                      style::yesNo + style::information, titleWithVersion) == forms::Answer::Yes)
        guarded([&] { viewWorkbook(surveyFilePath(fileName)); });
}

void viewSurveyFile(const QString& fileName) {
    guardedWithDescription([&] { viewWorkbook(surveyFilePath(fileName)); });
}
