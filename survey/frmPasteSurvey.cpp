// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/frmPasteSurvey.h"

#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/store/transaction.h"
#include "core/store/worktable.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"
#include "survey/frmEditExistingSurvey.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmSelectSurvey.h"
#include "survey/questiongrid.h"
#include "ui_frmPasteSurvey.h"

using namespace Qt::StringLiterals;
namespace style = forms::style;

namespace {

constexpr int topOnLoad = 1000; // twips
constexpr int leftOnLoad = 500;

} // namespace

frmPasteSurvey::frmPasteSurvey() : DefaultForm(Kind::Dialog), ui(std::make_unique<Ui::frmPasteSurvey>()) {
    ui->setupUi(this);
    lists = {this, ui->cmbCustomer, ui->lstRespondent, ui->lstSurvetDates};
    connect(ui->cmbCustomer, &forms::ComboBox::Click, this, &frmPasteSurvey::cmbCustomer_Click);
    connect(ui->lstRespondent, &forms::ListBox::Click, this, &frmPasteSurvey::lstRespondent_Click);
    connect(ui->lstSurvetDates, &forms::ListBox::Click, this, &frmPasteSurvey::lstSurvetDates_Click);
    connect(ui->cmdPaste, &QPushButton::clicked, this, &frmPasteSurvey::cmdPaste);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
}

frmPasteSurvey::~frmPasteSurvey() = default;

void frmPasteSurvey::toCopyInto(const SurveyContext& target, forms::Form& caller) {
    frmPasteSurvey& form = instance();
    form.ui->txtCustomer->setText(target.customer);
    form.ui->txtRespondent->setText(target.respondent);
    form.ui->txtSurveyDate->setText(target.date);
    caller.setMousePointer(forms::DefaultPointer);
    form.ShowModal();
}

SurveyContext frmPasteSurvey::target() const {
    return {ui->txtCustomer->text(), ui->txtRespondent->text(), ui->txtSurveyDate->text()};
}

void frmPasteSurvey::onLoad() {
    setTop(topOnLoad);
    setLeft(leftOnLoad);
    toSetHeadsAndWidths(ui->grdParamAndQuest, {u"Parameter"_s, u"Question"_s}, {0.05, 0.2, 0.7}, false);
    if (blnExistingSurvey)
        strSelectedRespondent = frmSelectSurvey::instance().lstRespondent()->Text();
    toFillCustomerList();
    lists.toPickFirstCustomer();
    lists.toPickFirstDate();
}

void frmPasteSurvey::onQueryUnload(bool&) {
    toDeleteCopyDeteails();
}

void frmPasteSurvey::toFillSurveyDateList() {
    if (blnExistingSurvey && ui->lstRespondent->Text() == strSelectedRespondent)
        lists.toFillSurveyDateList(frmSelectSurvey::instance().dtSDate()->Value());
    else
        lists.toFillSurveyDateList();
}

void frmPasteSurvey::toRefreshGrid() {
    const bool read = guarded({.form = this}, [this] {
        toReconnect();
        toShowQuestionnaire(ui->grdParamAndQuest, lists.picked());
    });
    if (!read)
        toEmptyGrid(ui->grdParamAndQuest); // else another survey would stay, and Ok copy the picked one
}

QString frmPasteSurvey::toGetRespondentID(const QString& name) const {
    return respondentIdText(name, lists.picked().customer);
}

QString frmPasteSurvey::toGetCopiedRespondent(const QString& name) const {
    return respondentIdText(name, target().customer);
}

void frmPasteSurvey::toSaveSurveyID() {
    guarded({}, [this] {
        toReconnect();
        addSurvey(target());
    });
}

void frmPasteSurvey::cmbCustomer_Click() {
    if (ui->cmbCustomer->ListIndex() == -1)
        return;
    toFillRespondentList();
    if (ui->lstRespondent->ListCount() == 0)
        toRefreshGrid();
}

void frmPasteSurvey::lstRespondent_Click() {
    if (ui->lstRespondent->ListCount() == 0)
        return;
    toFillSurveyDateList();
    toRefreshGrid();
    lists.toPickFirstDate();
}

void frmPasteSurvey::lstSurvetDates_Click() {
    if (ui->lstSurvetDates->ListCount() > 0)
        toRefreshGrid();
}

void frmPasteSurvey::toDeleteCopyDeteails() {
    guarded({.form = this}, [] {
        toReconnect();
        cnnMain->Execute(u"delete * from copydetails"_s);
    });
}

bool frmPasteSurvey::toSaveTheCopyDetails() {
    return guarded({.form = this}, [this] {
        toReconnect();
        Transaction transaction;
        const SurveyKey copy = requireSurveyKey(target());
        if (!copy.date.isValid())
            throw Refusal(u"No Survey Date selected......Select one and proceed....."_s);
        const SurveyKey source = requireSurveyKey(lists.picked());
        if (source.surveyid == 0)
            throw Refusal(u"The survey to import is no longer in the database. Nothing has been changed."_s);
        cnnMain->Execute(u"delete * from copydetails"_s);
        ado::Recordset copydetails;
        copydetails.Open(u"select * from copydetails"_s, *cnnMain, ado::Recordset::Lock::Optimistic);
        copydetails.AddNew();
        copydetails["custid"] = copy.custid;
        copydetails["sdate"] = copy.date;
        copydetails["respid"] = copy.respondentid;
        copydetails["surveyid"] = source.surveyid;
        copydetails.Update();
        transaction.Commit();
    });
}

void frmPasteSurvey::toPasteCopyDetails() {
    guarded({.form = this}, [this] {
        toReconnect();
        ado::Recordset copydetails;
        copydetails.Open(u"select * from copydetails"_s, *cnnMain);
        if (copydetails.Eof())
            return;
        copydetails.Close();
        toFillWorkTable([this] { copyQuestionnaire(lists.picked(), target()); });
    });
}

void frmPasteSurvey::cmdPaste() {
    setMousePointer(forms::Hourglass);
    if (ui->grdParamAndQuest->TextMatrix(1, 1).trimmed().isEmpty()) {
        if (ui->lstSurvetDates->SelCount() == 0)
            forms::msgBox(u"Select a Survey Date to import...."_s, style::critical, u"Gaugewell v2.1"_s);
        else
            toRefreshGrid(); // it may not have been readable
        blnSurveyPasted = false;
        setMousePointer(forms::DefaultPointer);
        return;
    }
    if (!toSaveTheCopyDetails()) {
        setMousePointer(forms::DefaultPointer);
        return;
    }
    toPasteCopyDetails();
    if (blnExistingSurvey) {
        toShowInNewSurvey();
    } else {
        frmEditExistingSurvey::instance().toRefreshGrid();
        Unload();
        frmSelectSurvey::unload();
    }
    setMousePointer(forms::DefaultPointer);
}

/// Opens the target for editing from frmSelectSurvey, without a question. An editor that stands open for
/// another survey goes: it keeps to its own.
void frmPasteSurvey::toShowInNewSurvey() {
    frmSelectSurvey& selection = frmSelectSurvey::instance();
    selection.toSelect(target());
    blnSurveyPasted = true;
    const SurveyContext survey = target();
    Unload();
    if (frmNewSurvey::loaded() && !frmNewSurvey::loaded()->isFor(survey))
        frmNewSurvey::unload();
    frmNewSurvey::instance().setCaption(u"Edit Selected Survey"_s);
    selection.cmdBlankSurvey();
}
