// SPDX-License-Identifier: GPL-3.0-or-later
#include "feedback/frmFeedBackObj.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/filllist.h"
#include "core/base/shell.h"
#include "core/store/worktable.h"
#include "exchange/files/filenames.h"
#include "exchange/files/homefile.h"
#include "exchange/files/surveylog.h"
#include "exchange/openelsewhere.h"
#include "exchange/reading.h"
#include "exchange/setting.h"
#include "feedback/answergrid.h"
#include "platform/forms/msgbox.h"
#include "ui_frmFeedBackObj.h"

#include <QTextDocument>

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int helpContext = 6;
constexpr int topOnLoad = 750; // twips

} // namespace

frmFeedBackObj::frmFeedBackObj() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmFeedBackObj>()) {
    ui->setupUi(this);
    answers = new AnswerGrid(ui->grdDtls, ui->txtDtls);
    connectEvents();
}

frmFeedBackObj::~frmFeedBackObj() = default;

QLineEdit* frmFeedBackObj::txtDtls() const {
    return ui->txtDtls;
}

void frmFeedBackObj::connectEvents() {
    connect(ui->cmbCusName, &forms::ComboBox::Click, this, &frmFeedBackObj::cmbCusName_Click);
    connect(ui->lstRespname, &forms::ListBox::Click, this, &frmFeedBackObj::lstRespname_Click);
    connect(ui->lstSurveyDates, &forms::ListBox::Click, this, &frmFeedBackObj::lstSurveyDates_Click);
    connect(ui->cmdRead, &QPushButton::clicked, this, &frmFeedBackObj::cmdRead_Click);
    connect(ui->cmdSave, &QPushButton::clicked, this, &frmFeedBackObj::cmdSave_Click);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(&ReadReport::instance(), &ReadReport::answersStored, this,
            [this](const SurveyReader::Questionnaires& read) {
                if (read.contains({QString::number(answers->survey().respondentid), answers->survey().date}))
                    hasNewAnswers = true;
            });
}

void frmFeedBackObj::onLoad() {
    setLeft(0);
    setTop(topOnLoad);
    toFillcmbCustomername();
    if (ui->cmbCusName->ListCount() > 0)
        ui->cmbCusName->setListIndex(0);
    toSetWidthForGrid();
    SetEditTextBox(1, 1);
    lstSurveyDates_Click();
}

void frmFeedBackObj::onActivate() {
    blnLog = false;
    blnBrowse = false;
    blnSetting = toGetSetting();
    if (std::exchange(blnSearchToFeedback, false))
        goToHit();
    showReadAnswers();
}

void frmFeedBackObj::goToHit() {
    const std::optional<SearchHit> hit = Shell::current()->hitToShow();
    if (!hit)
        return;
    const auto moveTo = [](auto* list, const QString& text) {
        for (int i = 0; i < list->ListCount(); ++i) {
            if (list->List(i) == text) {
                list->setListIndex(i);
                return true;
            }
        }
        return false;
    };
    if (!toFillcmbCustomername()) // the hit may be newer than the lists
        return;
    if (!moveTo(ui->cmbCusName, hit->customer) || !moveTo(ui->lstSurveyDates, hit->date))
        showHitGone();
}

void frmFeedBackObj::showHitGone() {
    ui->lstSurveyDates->Clear();
    if (ui->cmbCusName->ListIndex() == -1)
        ui->lstRespname->Clear();
    showNothing();
    forms::msgBox(u"The survey of this hit is no longer there."_s, style::information, titleWithVersion);
}

void frmFeedBackObj::toSetWidthForGrid() {
    answers->setHeads();
}

void frmFeedBackObj::SetEditTextBox(int ColPos, int RowPos) {
    guarded(u"Error :"_s, [&] { answers->setEdit(ColPos, RowPos); });
}

SurveyContext frmFeedBackObj::chosen() const {
    return {ui->cmbCusName->Text(), ui->lstRespname->Text(), ui->lstSurveyDates->Text()};
}

bool frmFeedBackObj::toFillcmbCustomername() {
    return guarded([this] {
        fillList(*ui->cmbCusName, u"select custname from customer order by custid"_s, "custname");
    });
}

void frmFeedBackObj::toFillListView() {
    guarded(u"Error :"_s, [this] {
        ui->lstSurveyDates->Clear();
        fillList(*ui->lstSurveyDates,
                 u"select distinct(sdate) as surveydate from responquery where custid="_s +
                     QString::number(findCustomer(ui->cmbCusName->Text())) + u" order by surveydate",
                 "surveydate");
    });
}

void frmFeedBackObj::toFilllstRespondentName() {
    guarded([this] {
        ui->lstRespname->Clear();
        const int custid = findCustomer(ui->cmbCusName->Text());
        fillList(*ui->lstRespname, u"select * from respondent where custid="_s + QString::number(custid),
                 "respondentname");
    });
}

void frmFeedBackObj::cmbCusName_Click() {
    const Busy busy(*this);
    if (ui->cmbCusName->ListCount() > 0) {
        toFillListView();
        toFilllstRespondentName();
        if (ui->lstRespname->ListCount() > 0)
            ui->lstRespname->setListIndex(0);
        else
            showNothing();
    }
}

void frmFeedBackObj::lstRespname_Click() {
    const Busy busy(*this);
    if (ui->lstSurveyDates->ListCount() == 0) {
        showNothing();
    } else if (ui->lstSurveyDates->SelCount() == 0) {
        ui->lstSurveyDates->setListIndex(0); // its click fills the grid
    } else {
        answers->clear();
        toFillGrid();
        tofillscoreandweightage();
    }
    showFileNameOfChoice();
}

void frmFeedBackObj::lstSurveyDates_Click() {
    const Busy busy(*this);
    if (ui->lstSurveyDates->ListCount() > 0) {
        toFillGrid();
        tofillscoreandweightage();
    }
    showFileNameOfChoice();
}

void frmFeedBackObj::showNothing() {
    answers->showNothing();
    ui->lblSDate->clear();
    showFileLabel({});
}

void frmFeedBackObj::toFillGrid() {
    const bool filled = guarded([this] {
        const Busy busy(*this);
        ui->lblSDate->setText(ui->lstSurveyDates->Text());
        const SurveyKey survey = findSurveyKey(chosen());
        if (!answers->showQuestions(survey))
            survey.custid == 0 ? answers->clear() : showNothing();
        SetEditTextBox(1, 1);
    });
    if (!filled)
        showNothing(); // else a save would store one date's marks under another
}

void frmFeedBackObj::tofillscoreandweightage() {
    const bool filled = guarded([this] {
        const Busy busy(*this);
        answers->showAnswers();
        hasNewAnswers = false;
    });
    if (!filled)
        showNothing(); // else a save would store blanks over the answers that could not be read
}

void frmFeedBackObj::cmdSave_Click() {
    Busy busy(*this);
    if (answers->hasBlankQuestion()) {
        forms::msgBox(u"Cannot Save.....Question details are missing"_s, style::critical, titleWithVersion);
    } else if (ui->lstRespname->ListCount() > 0) {
        busy.say(u"Saving....."_s);
        toSaveDtls();
    }
}

void frmFeedBackObj::toSaveDtls() {
    const bool isCompared = guarded([this] {
        answers->requireFor(findSurveyKey(chosen()));
        answers->findChanges();
    });
    if (isCompared && answers->settle() && guarded([this] { writeTogether([this] { answers->save(); }); }))
        showDone(u"Answers of "_s + chosen().respondent + u" saved");
}

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
    guarded([&] {
        const std::optional<bool> before = setLogStatus(logged);
        if (!logStatusBefore)
            logStatusBefore = before;
    });
    blnLog = true;
    return logged;
}

bool frmFeedBackObj::toCheckFileExists(const QString& fileName) {
    const bool exists = ::toCheckFileExists(fileName);
    strReturnFileName = exists ? fileName : QString();
    return exists;
}

void frmFeedBackObj::toreadFromXlsFile() {
    logStatusBefore.reset();
    if (toCheckFileExists(toGetLoggedFileName())) {
        XLSWrite();
    } else if (!blnLog) {
        forms::msgBox(
            u"There is no Survey File Exported for the Selected Repondent and Selected Survey Date..."_s,
            style::information, titleWithVersion);
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
    cmnDlg.Filter = u"*.xls|*.xls"_s + returnedFilter;
    cmnDlg.Flags = forms::HideReadOnly;
    cmnDlg.ShowOpen();
    if (cmnDlg.FileName.trimmed().isEmpty() || cmnDlg.FileTitle == u"Template.xls")
        return;
    if (toGetLoggedFileName().isEmpty()) {
        forms::msgBox(u"There is no Survey File for the selected Respondent and selected Survey Date..."_s,
                      style::critical);
    } else if (!isReturnOf(cmnDlg.FileTitle, strXLName)) {
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
    // blnBrowse stays set after a located file; a bare name is then used as it is.
    const QString path = blnBrowse ? strReturnFileName : surveyFilePath(strReturnFileName);
    if (!mayUseFile(path))
        return;
    const Reading reading = readSurveyFile(path, logStatusBefore);
    if (reading.hasWritten) { // otherwise typed answers are kept
        tofillscoreandweightage();
        SetEditTextBox(1, 1); // the box may show the old text of its cell
    }
    // Failures other than the store's have named the file.
    nameAfterReading(reading.hasStoreFailed ? reading.bad : QStringList(), reading.remarks);
}
