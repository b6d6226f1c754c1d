// SPDX-License-Identifier: GPL-3.0-or-later
#include "improvement/frmImprovementPlan.h"

#include "core/base/backup.h"
#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/filllist.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "platform/forms/clock.h"
#include "platform/forms/msgbox.h"
#include "ui_frmImprovementPlan.h"

#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace {

constexpr int helpContext = 7;
constexpr int complete = 1; // of intStatus
// Columns of the list.
constexpr int dateColumn = 1;
constexpr int targetColumn = 2;
constexpr int statusColumn = 3;

QString selectAction(int custid, const QDate& date) {
    return u"select * from actionplan where customerid="_s + QString::number(custid) + u" and date=#" +
           toSqlDate(date) + u"#";
}

QString custidOf(const QString& customerName) {
    return QString::number(findCustomer(customerName));
}

} // namespace

frmImprovementPlan::frmImprovementPlan()
    : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmImprovementPlan>()) {
    ui->setupUi(this);
    ui->lsvDtls->setColumns(
        {{u"Improvement Details"_s, 0.55}, {u"Date"_s, 0.14}, {u"Target Date"_s, 0.14}, {u"Status"_s, 0.17}});
    ui->dtdate->setValue(forms::today());
    ui->dttargetDate->setValue(forms::today());
    connectEvents();
}

frmImprovementPlan::~frmImprovementPlan() = default;

void frmImprovementPlan::connectEvents() {
    using This = frmImprovementPlan;
    connect(ui->lstCusName, &forms::ListBox::Click, this, &This::lstCusName_Click);
    connect(ui->dtdate, &forms::DTPicker::Change, this, &This::dtdate_Change);
    connect(ui->lsvDtls, &forms::ListView::Click, this, &This::lsvDtls_Click);
    connect(ui->lsvDtls, &forms::ListView::RightClick, this, &This::lsvDtls_RightClick);
    connect(ui->cmdSave, &QPushButton::clicked, this, &This::cmdSave_Click);
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
}

void frmImprovementPlan::onLoad() {
    toCenterForm(*this);
    showStatusOf(false);
    toFilllstCustomername();
    if (ui->lstCusName->ListCount() > 0)
        ui->lstCusName->setSelected(0, true);
}

void frmImprovementPlan::onActivate() {
    if (!std::exchange(blnSearchToImprovement, false))
        return;
    const std::optional<SearchHit> hit = Shell::current()->hitToShow();
    if (!hit)
        return;
    if (!toFilllstCustomername()) // the hit's customer may be newer than the list
        return;
    showNoAction();
    forms::ListBox* customers = ui->lstCusName;
    if (const int row = customerRow(hit->customer); row >= 0)
        customers->setSelected(row, true);
    if (customers->SelCount() == 1) {
        ui->dtdate->setValue(toDate(hit->date));
    } else {
        ui->lsvDtls->Clear();
        forms::msgBox(u"The customer of this hit is no longer there."_s, forms::style::information,
                      titleWithVersion);
    }
}

void frmImprovementPlan::toStartAction(const ActionDraft& draft) {
    const bool isUnsaved =
        ui->txtDescription->isModified() && !ui->txtDescription->text().trimmed().isEmpty();
    if (isUnsaved && forms::msgBox(u"The description of an action has not been saved.\r\n"
                                   "Do you want to replace it?"_s,
                                   forms::style::yesNo + forms::style::secondButton,
                                   titleWithVersion) != forms::Answer::Yes)
        return;
    if (!toFilllstCustomername()) // the customer may be newer than the list
        return;
    showNoAction();
    ui->lsvDtls->Clear();
    guarded([&] {
        const QDate free = firstDayWithoutAction(requireCustomers({draft.customer}).front());
        ui->lstCusName->setSelected(customerRow(draft.customer), true);
        ui->dtdate->setValue(free);
        ui->txtDescription->setText(draft.description);
        ui->txtDescription->setModified(true);
        ui->txtDescription->setFocus();
    });
}

int frmImprovementPlan::customerRow(const QString& name) const {
    for (int i = 0; i < ui->lstCusName->ListCount(); ++i) {
        if (ui->lstCusName->List(i) == name)
            return i;
    }
    return -1;
}

bool frmImprovementPlan::toFilllstCustomername() {
    return guarded([this] {
        fillList(*ui->lstCusName, u"select custname from customer order by custname asc"_s, "custname");
    });
}

QString frmImprovementPlan::currentCustomer() const {
    const forms::ListBox* customers = ui->lstCusName;
    const int row = customers->currentRow();
    const bool useCurrent = customers->Selected(row) || customers->SelCount() == 0;
    return customers->List(useCurrent ? row : customers->ListIndex());
}

QStringList frmImprovementPlan::chosenCustomers() const {
    QStringList names;
    for (int i = 0; i < ui->lstCusName->ListCount(); ++i) {
        if (ui->lstCusName->Selected(i))
            names << ui->lstCusName->List(i);
    }
    return names;
}

std::vector<QDate> frmImprovementPlan::chosenDates() const {
    std::vector<QDate> dates;
    for (const int row : ui->lsvDtls->SelectedRows())
        dates.push_back(toDate(ui->lsvDtls->Text(row, dateColumn)));
    return dates;
}

void frmImprovementPlan::showStatusOf(bool isComplete) {
    (isComplete ? ui->opnComplete : ui->opnNotComplete)->setChecked(true);
}

/// The date is set first because its change may load an action.
void frmImprovementPlan::showNoAction() {
    ui->dtdate->setValue(forms::today());
    ui->dttargetDate->setValue(forms::today());
    ui->txtDescription->clear();
    showStatusOf(false);
    asRead.reset();
}

void frmImprovementPlan::lstCusName_Click() {
    if (ui->lstCusName->SelCount() != 1) {
        showNoAction();
        return;
    }
    torefreshOnCustomerNameClick();
    toFillListView();
}

/// A description that is being typed is kept if the new date has no stored action.
void frmImprovementPlan::dtdate_Change() {
    const bool typing = ui->txtDescription->isModified() && ui->lstCusName->SelCount() == 1;
    bool isFree = false;
    if (typing) {
        guarded([&] {
            isFree = toGetActionID(currentCustomer()).isEmpty();
            if (isFree)
                asRead = ReadAction{findCustomer(currentCustomer()), ui->dtdate->Value(), {}};
        });
    }
    if (isFree)
        toFillListView();
    else
        lstCusName_Click();
}

void frmImprovementPlan::lsvDtls_Click() {
    forms::ListView* list = ui->lsvDtls;
    const int row = list->CurrentRow();
    if (!list->Selected(row))
        return;
    ui->txtDescription->setText(list->Text(row));
    {
        const QSignalBlocker blocker(ui->dtdate); // dtdate_Change would reload or clear the boxes
        ui->dtdate->setValue(toDate(list->Text(row, dateColumn)));
    }
    ui->dttargetDate->setValue(dateOrToday(toDate(list->Text(row, targetColumn))));
    showStatusOf(list->Text(row, statusColumn) == statusWord(true));
    guarded([this] { asRead = ReadAction{findCustomer(currentCustomer()), ui->dtdate->Value(), entered()}; });
}

void frmImprovementPlan::lsvDtls_RightClick(const QPoint& globalPosition) {
    if (ui->lsvDtls->ListCount() > 0)
        Shell::current()->PopupMenu(globalPosition, ui->lsvDtls->actions());
}

void frmImprovementPlan::cmdSave_Click() {
    if (!forms::DTPicker::requireDates({ui->dtdate, ui->dttargetDate}))
        return;
    Busy busy(*this);
    if (ui->lstCusName->ListCount() > 0) {
        if (ui->txtDescription->text().trimmed().isEmpty()) {
            forms::msgBox(u"Enter the description to save......."_s, forms::style::okOnly, titleWithVersion);
        } else {
            busy.say(u"Saving....."_s);
            toSaveActionDtls();
        }
    }
}

PlannedAction frmImprovementPlan::entered() const {
    return {ui->txtDescription->text().trimmed(), ui->dttargetDate->Value().toString(ado::dateTextFormat),
            statusWord(!ui->opnNotComplete->isChecked())};
}

bool frmImprovementPlan::settleChanges() {
    settlement.clear();
    const bool isRead = guarded([this] {
        if (!asRead || asRead->date != ui->dtdate->Value())
            return;
        ado::Recordset stored(selectAction(asRead->custid, asRead->date), *cnnMain);
        if (!stored.Eof())
            settlement.note({}, asRead->changedMeanwhile(PlannedAction::of(stored), entered()));
    });
    return isRead && settlement.ask();
}

void frmImprovementPlan::noteAsRead(int custid, const QDate& date) {
    ado::Recordset stored(selectAction(custid, date), *cnnMain);
    asRead = ReadAction{custid, date, stored.Eof() ? PlannedAction() : PlannedAction::of(stored)};
}

void frmImprovementPlan::toSaveActionDtls() {
    if (!settleChanges())
        return;
    const bool saved = guarded([this] {
        Transaction transaction;
        const QStringList names = chosenCustomers();
        requireCustomers(names);
        for (const QString& name : names)
            saveActionOf(name);
        transaction.Commit();
    });
    if (!saved)
        return;
    if (const int count = ui->lstCusName->SelCount(); count > 0) {
        showDone(counted(count, u"action"_s) + u" saved");
        ui->txtDescription->setModified(false);
    }
    toFillListView();
    bool showsStored = true;
    guarded([&] {
        noteAsRead(findCustomer(currentCustomer()), ui->dtdate->Value());
        PlannedAction mine = entered();
        mine.description = toStoredText(mine.description);
        showsStored = asRead->texts == mine;
    });
    if (!showsStored && ui->lstCusName->SelCount() == 1)
        torefreshOnCustomerNameClick(); // someone else's fields were kept
}

QString frmImprovementPlan::toGetActionID(const QString& customerName) const {
    ado::Recordset action(u"select * from action where custname='"_s + customerName + u"' and date =#" +
                              toSqlDate(ui->dtdate->Value()) + u"#",
                          *cnnMain);
    return action.Eof() ? QString() : action["actionid"].Text();
}

void frmImprovementPlan::saveActionOf(const QString& customerName) {
    const QString actionid = toGetActionID(customerName);
    const QString custid = custidOf(customerName);
    QString known = u"date=# "_s + toSqlDate(ui->dtdate->Value()) + u"# and customerid =" + custid;
    if (!actionid.isEmpty())
        known = u"actionid="_s + actionid + u" and " + known;
    ado::Recordset plan(u"select * from actionplan where "_s + known, *cnnMain,
                        ado::Recordset::Lock::Optimistic);
    const PlannedAction mine = entered();
    const bool isCompared = !plan.Eof() && asRead && asRead->isOf(custid.toInt(), ui->dtdate->Value());
    const PlannedAction stored = isCompared ? PlannedAction::of(plan) : PlannedAction();
    if (isCompared)
        settlement.require({}, asRead->changedMeanwhile(stored, mine));
    const auto isWritten = [&](const QString& field, QString PlannedAction::*text) {
        return !isCompared || (!settlement.isLeft({}, field) && !asRead->isOthers(text, stored, mine));
    };
    if (plan.Eof()) {
        plan.AddNew();
        plan["customerid"] = custid;
    }
    plan["Date"] = ui->dtdate->Value();
    if (isWritten(descriptionField, &PlannedAction::description))
        plan["Action"] = toStoredText(mine.description);
    if (isWritten(targetField, &PlannedAction::target))
        plan["targetdate"] = ui->dttargetDate->Value();
    if (isWritten(statusField, &PlannedAction::status))
        plan["Status"] = !ui->opnNotComplete->isChecked();
    plan.Update();
}

void frmImprovementPlan::toFillListView() {
    const bool filled = guarded(u"Error :"_s, [this] {
        ado::Recordset action(u"select * from action where customerid="_s + custidOf(currentCustomer()) +
                                  u" order by date, actionid",
                              *cnnMain);
        std::vector<QStringList> rows;
        for (; !action.Eof(); action.MoveNext()) {
            const QVariant status = action["Status"].Value();
            rows.push_back({action["Action"].Text(), action["Date"].Text(), action["targetdate"].Text(),
                            status.isValid() ? statusWord(status.toBool()) : QString()});
        }
        ui->lsvDtls->setItems(std::move(rows));
    });
    if (!filled)
        ui->lsvDtls->Clear(); // it may show another customer's actions
}

void frmImprovementPlan::torefreshOnCustomerNameClick() {
    const auto showNone = [this] {
        ui->txtDescription->clear();
        showStatusOf(false);
        ui->dttargetDate->setValue(forms::today());
    };
    const bool read = guarded([&] {
        ado::Recordset action(u"select * from action where customerid="_s + custidOf(currentCustomer()) +
                                  u" and date=#" + toSqlDate(ui->dtdate->Value()) + u"#",
                              *cnnMain);
        const int custid = findCustomer(currentCustomer());
        if (action.Eof()) {
            showNone();
            asRead = ReadAction{custid, ui->dtdate->Value(), {}};
            return;
        }
        ui->dtdate->setValue(action["Date"].Value().toDate());
        ui->dttargetDate->setValue(dateOrToday(action["targetdate"].Value().toDate()));
        ui->txtDescription->setText(action["Action"].Text());
        showStatusOf(action["Status"].Value().toBool());
        asRead = ReadAction{custid, ui->dtdate->Value(), PlannedAction::of(action)};
    });
    if (read)
        return;
    showNone(); // so that a save cannot store another customer's action
    asRead.reset();
}

void frmImprovementPlan::toupdateStatus() {
    const bool updated = guarded([this] {
        const std::vector<QDate> dates = chosenDates();
        Transaction transaction;
        for (const int custid : requireCustomers(chosenCustomers())) {
            for (const QDate& date : dates) {
                ado::Recordset plan(u"select * from actionplan where customerid ="_s +
                                        QString::number(custid) + u" and date=# " + toSqlDate(date) + u"#",
                                    *cnnMain, ado::Recordset::Lock::Optimistic);
                if (plan.Eof())
                    continue;
                plan["Status"] = intStatus == complete;
                plan.Update();
            }
        }
        transaction.Commit();
        if (asRead) // the status in the boxes is as before, and a save writes it
            noteAsRead(asRead->custid, asRead->date);
    });
    if (updated)
        toFillListView();
}

void frmImprovementPlan::toDeleteActionForSelectedCustomer() {
    guarded([this] {
        const QStringList names = chosenCustomers();
        const std::vector<QDate> dates = chosenDates();
        if (names.isEmpty() || dates.empty())
            return;
        requireCustomers(names); // before making a backup
        backUpBeforeLoss();
        Transaction transaction;
        for (const int custid : requireCustomers(names)) {
            for (const QDate& date : dates) {
                cnnMain->Execute(u"delete * from actionplan where customerid="_s + QString::number(custid) +
                                 u" and date=#" + toSqlDate(date) + u"#");
            }
        }
        transaction.Commit();
        showNoAction();
    });
}
