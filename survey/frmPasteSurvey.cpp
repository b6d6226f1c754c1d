// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/frmPasteSurvey.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "core/store/worktable.h"
#include "platform/forms/msgbox.h"
#include "survey/frmEditExistingSurvey.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmSelectSurvey.h"
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

void frmPasteSurvey::copyInto(const SurveyContext& target) {
    targetOfNext = target;
    frmPasteSurvey& form = instance();
    Busy::endPointers();
    form.ShowModal();
}

QuestionGrid frmPasteSurvey::grid() const {
    return QuestionGrid(ui->grdParamAndQuest);
}

SurveyContext frmPasteSurvey::target() const {
    return {ui->txtCustomer->text(), ui->txtRespondent->text(), ui->txtSurveyDate->text()};
}

void frmPasteSurvey::onLoad() {
    const SurveyContext target = std::exchange(targetOfNext, {});
    ui->txtCustomer->setText(target.customer);
    ui->txtRespondent->setText(target.respondent);
    ui->txtSurveyDate->setText(target.date);
    setTop(topOnLoad);
    setLeft(leftOnLoad);
    grid().setHeads();
    if (blnExistingSurvey)
        strSelectedRespondent = target.respondent;
    toFillCustomerList();
    lists.pickFirstCustomer();
    lists.pickFirstDate();
}

void frmPasteSurvey::onQueryUnload(bool&) {
    toDeleteCopyDeteails();
}

void frmPasteSurvey::toFillSurveyDateList() {
    if (blnExistingSurvey && ui->lstRespondent->Text() == strSelectedRespondent)
        lists.toFillSurveyDateList(toDate(target().date));
    else
        lists.toFillSurveyDateList();
}

void frmPasteSurvey::toRefreshGrid() {
    const bool read = guarded([this] { grid().show(lists.picked()); });
    if (!read)
        grid().clear(); // else another survey would stay, and Ok copy the picked one
}

QString frmPasteSurvey::toGetRespondentID(const QString& name) const {
    return respondentIdText(name, lists.picked().customer);
}

QString frmPasteSurvey::toGetCopiedRespondent(const QString& name) const {
    return respondentIdText(name, target().customer);
}

void frmPasteSurvey::toSaveSurveyID() {
    guarded([this] { addSurvey(target()); });
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
    lists.pickFirstDate();
}

void frmPasteSurvey::lstSurvetDates_Click() {
    if (ui->lstSurvetDates->ListCount() > 0)
        toRefreshGrid();
}

void frmPasteSurvey::toDeleteCopyDeteails() {
    guarded([] { cnnMain->Execute(u"delete * from copydetails"_s); });
}

bool frmPasteSurvey::toSaveTheCopyDetails() {
    return guarded([this] {
        Transaction transaction(Transaction::Scope::WorkTables);
        const SurveyKey copy = requireSurveyKey(target());
        if (!copy.date.isValid())
            throw Refusal(u"No Survey Date selected......Select one and proceed....."_s);
        const SurveyKey source = requireSurveyKey(lists.picked());
        if (source.surveyid == 0)
            throw Refusal(u"The survey to import is no longer in the database. Nothing has been changed."_s);
        cnnMain->Execute(u"delete * from copydetails"_s);
        ado::Recordset copydetails(u"select * from copydetails"_s, *cnnMain,
                                   ado::Recordset::Lock::Optimistic);
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
    guarded([this] {
        ado::Recordset copydetails(u"select * from copydetails"_s, *cnnMain);
        if (copydetails.Eof())
            return;
        copydetails.Close();
        writeTogether([this] { copyQuestionnaire(lists.picked(), target()); });
        showDone(u"Questionnaire copied"_s);
    });
}

void frmPasteSurvey::cmdPaste() {
    const Busy busy(*this);
    if (grid().at(1).parameter.trimmed().isEmpty()) {
        if (ui->lstSurvetDates->SelCount() == 0)
            forms::msgBox(u"Select a Survey Date to import...."_s, style::critical, titleWithVersion);
        else
            toRefreshGrid(); // it may not have been readable
        blnSurveyPasted = false;
        return;
    }
    if (!toSaveTheCopyDetails())
        return;
    toPasteCopyDetails();
    if (blnExistingSurvey) {
        showInNewSurvey();
    } else {
        frmEditExistingSurvey::instance().toRefreshGrid();
        Unload();
        frmSelectSurvey::unload();
    }
}

/// Opens the target for editing, without a question. An editor that is open for another survey is closed: it
/// does not change its survey.
void frmPasteSurvey::showInNewSurvey() {
    const SurveyContext survey = target();
    if (frmSelectSurvey* selection = frmSelectSurvey::loaded())
        selection->pick(survey);
    blnSurveyPasted = true;
    Unload();
    if (frmNewSurvey::loaded() && !frmNewSurvey::loaded()->isFor(survey))
        frmNewSurvey::unload();
    frmNewSurvey::instance().setCaption(u"Edit Selected Survey"_s);
    frmSelectSurvey::openSurvey(survey);
}
