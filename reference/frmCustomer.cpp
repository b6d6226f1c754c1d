// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmCustomer.h"

#include "core/base/backup.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "core/store/transaction.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"
#include "ui_frmCustomer.h"

using namespace Qt::StringLiterals;
using forms::msgBox;
namespace style = forms::style;

namespace {

constexpr int helpContext = 1;
// Columns of the customer grid; those of the respondent grid follow in the same way.
constexpr int custidColumn = 5;
constexpr int respondentidColumn = 4;
constexpr int designationColumn = 2;

QVariant nullWhenEmpty(const QString& text) {
    return text.isEmpty() ? ado::Null : QVariant(toStoredText(text));
}

} // namespace

frmCustomer::frmCustomer() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmCustomer>()) {
    ui->setupUi(this);
    customers = new GridEditor(gridRules::customer, ui->grdCustomerDtls, ui->txtCustomerDtls);
    respondents = new GridEditor(gridRules::respondent, ui->grdRespondentDtls, ui->txtRespondentDtls);
    connectEvents();
}

frmCustomer::~frmCustomer() = default;

QLineEdit* frmCustomer::txtCustomerDtls() const {
    return ui->txtCustomerDtls;
}

void frmCustomer::connectEvents() {
    const auto onClick = [this](QPushButton* button, void (frmCustomer::*command)()) {
        connect(button, &QPushButton::clicked, this, command);
    };
    onClick(ui->cmdAddCustomer, &frmCustomer::cmdAddCustomer);
    onClick(ui->cmdSaveCustomer, &frmCustomer::cmdSaveCustomer);
    onClick(ui->cmdDeleteCustomer, &frmCustomer::cmdDeleteCustomer);
    onClick(ui->cmdAddRespondent, &frmCustomer::cmdAddRespondent);
    onClick(ui->cmdSaveRespondent, &frmCustomer::cmdSaveRespondent);
    onClick(ui->cmdDeleteRespondent, &frmCustomer::cmdDeleteRespondent);
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { toShowHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->grdCustomerDtls, &forms::MSHFlexGrid::Click, this, &frmCustomer::grdCustomerDtls_Click);
    customers->enterCommand = [this] { cmdAddCustomer(); };
    customers->onRowChange = [this](GridEditor::RowMove move) {
        toRefreshRespondentDetails();
        if (move == GridEditor::RowMove::Enter)
            ui->txtRespondentDtls->hide();
    };
    customers->afterRowChange = [this](GridEditor::RowMove move) { toMoveWithCustomer(move); };
    respondents->enterCommand = [this] { cmdAddRespondent(); };
}

void frmCustomer::onLoad() {
    toReconnect();
    setLeft((ScreenWidth() - Width()) / 2);
    setTop((ScreenHeight() - Height()) / 5);
    toSetWidthForCusGrid();
    toSetWidthForResGrid();
    toRefreshCustomerDetails();
    SetEditTextBox(1, 1);
    SetEditRespondentTextBox(1, 1);
    grdCustomerDtls_Click();
}

void frmCustomer::toSetWidthForCusGrid() {
    toSetHeadsAndWidths(ui->grdCustomerDtls,
                        {u"Customer Name"_s, u"Customer Address"_s, u"Tel.No"_s, u"Email"_s},
                        {0.05, 0.25, 0.35, 0.1, 0.2, 0});
}

void frmCustomer::toSetWidthForResGrid() {
    toSetHeadsAndWidths(ui->grdRespondentDtls, {u"Respondent Name"_s, u"Designation"_s, u"Email ID"_s},
                        {0.025, 0.3, 0.3, 0.3, 0});
}

void frmCustomer::SetEditTextBox(int ColPos, int RowPos) {
    guarded({.prefix = u"Error :"_s}, [&] { customers->setEdit(ColPos, RowPos); });
}

void frmCustomer::SetEditRespondentTextBox(int ColPos, int RowPos) {
    guarded({.prefix = u"Error :"_s}, [&] { respondents->setEdit(ColPos, RowPos); });
}

QString frmCustomer::currentCustID() const {
    return currentKey(ui->grdCustomerDtls, custidColumn);
}

void frmCustomer::grdCustomerDtls_Click() {
    toRefreshRespondentDetails();
    toShowLastRespondent();
}

void frmCustomer::toShowLastRespondent() {
    forms::MSHFlexGrid* grid = ui->grdRespondentDtls;
    if (grid->Rows() < 2) {
        grid->setRow(1);
        return;
    }
    grid->setRow(grid->Rows() - 1);
    SetEditRespondentTextBox(grid->Col(), grid->Row());
}

void frmCustomer::toMoveWithCustomer(GridEditor::RowMove move) {
    if (move == GridEditor::RowMove::Down)
        toShowLastRespondent();
    else if (move == GridEditor::RowMove::Appended)
        SetEditRespondentTextBox(1, 1);
}

void frmCustomer::toRefreshCustomerDetails() {
    guarded({.form = this}, [this] {
        toReconnect();
        const QString inHand = currentCustID();
        ado::Recordset customer;
        customer.Open(u"select * from customer"_s, *cnnMain);
        if (customer.Eof())
            toEmptyGrid(ui->grdCustomerDtls);
        else
            toFillGridFrom(ui->grdCustomerDtls, customer,
                           {"custname", "Address", "telno", "email", "custid"});
        goToKey(ui->grdCustomerDtls, custidColumn, inHand);
    });
}

void frmCustomer::toRefreshRespondentDetails() {
    forms::MSHFlexGrid* grid = ui->grdRespondentDtls;
    const QString custid = currentCustID();
    if (respondentsOf != custid) { // also when they cannot be read
        respondentsOf.reset();
        toShowNoRespondents();
    }
    const bool read = guarded({.form = this}, [&] {
        toReconnect();
        if (custid.isEmpty()) {
            toShowNoRespondents();
            ui->grdCustomerDtls->setFocus();
            return;
        }
        ado::Recordset respondent;
        respondent.Open(u"select * from respondent where custid="_s + custid, *cnnMain);
        if (respondent.Eof()) {
            toShowNoRespondents();
            return;
        }
        const QString inHand = currentKey(grid, respondentidColumn);
        toFillGridFrom(grid, respondent,
                       {"respondentname", "respondentdesignation", "emailid", "respondentid"});
        goToKey(grid, respondentidColumn, inHand);
        SetEditRespondentTextBox(grid->Col(), grid->Row());
    });
    if (read)
        respondentsOf = custid;
}

void frmCustomer::toShowNoRespondents() {
    forms::MSHFlexGrid* grid = ui->grdRespondentDtls;
    toEmptyGrid(grid);
    if (!ui->txtRespondentDtls->isHidden()) // it would go on showing another customer's respondent
        SetEditRespondentTextBox(grid->Col(), grid->Row());
}

void frmCustomer::toSaveCustomerDtls() {
    setMousePointer(forms::Hourglass);
    forms::MSHFlexGrid* grid = ui->grdCustomerDtls;
    QString inHand;
    const bool saved = guarded({.form = this}, [&] {
        toReconnect();
        Transaction transaction;
        for (int row = 1; row < grid->Rows(); ++row) {
            const QString custid = toSaveCustomerRow(row);
            if (row == grid->Row())
                inHand = custid;
        }
        transaction.Commit();
    });
    if (!saved)
        return;
    if (currentCustID().isEmpty() && respondentsOf == QString() && !inHand.isEmpty())
        respondentsOf = inHand; // typed for the new customer
    grid->setTextMatrix(grid->Row(), custidColumn, inHand);
    toRefreshCustomerDetails();
    if (respondentsOf != currentCustID())
        grdCustomerDtls_Click(); // the row in hand was not stored
    SetEditTextBox(ui->grdCustomerDtls->Col(), ui->grdCustomerDtls->Row());
    customers->focusBox();
    setMousePointer(forms::DefaultPointer);
}

QString frmCustomer::toSaveCustomerRow(int row) {
    const auto cell = [&](int column) { return ui->grdCustomerDtls->TextMatrix(row, column); };
    ado::Recordset customer;
    if (cell(custidColumn).isEmpty()) {
        customer.Open(u"select * from customer where CustName='"_s + toStoredText(cell(1)) + u"'", *cnnMain,
                      ado::Recordset::Lock::Optimistic);
        if (!customer.Eof())
            return {}; // a customer of that name exists
        customer.AddNew();
    } else {
        customer.Open(u"select * from customer where custid="_s + cell(custidColumn), *cnnMain,
                      ado::Recordset::Lock::Optimistic);
        if (customer.Eof())
            return {};
    }
    customer["custname"] = toStoredText(cell(1));
    customer["Address"] = cell(2).isEmpty() ? u" "_s : toStoredText(cell(2));
    customer["telno"] = nullWhenEmpty(cell(3));
    customer["email"] = nullWhenEmpty(cell(4));
    customer.Update();
    return customer["custid"].Text();
}

/// Whether a respondent of the name and designation in that row is stored under the current customer. With
/// an apostrophe in one text only, the other is tested as empty, so that nothing is found.
QString frmCustomer::toMakeDuplicateTest(int row) const {
    const forms::MSHFlexGrid* grid = ui->grdRespondentDtls;
    const QString name = grid->TextMatrix(row, 1);
    const QString designation = grid->TextMatrix(row, designationColumn);
    const std::optional<QString> filteredName = toFilterApostrophe(name);
    const std::optional<QString> filteredDesignation = toFilterApostrophe(designation);
    if (!filteredName && !filteredDesignation) {
        return u"select * from respondent where respondentname='"_s + name + u"' and custid=" +
               currentCustID() + u" and respondentdesignation='" + designation + u"'";
    }
    const QString customer = ui->grdCustomerDtls->TextMatrix(ui->grdCustomerDtls->Row(), 1);
    return u"select * from respondent where respondentname='"_s + filteredName.value_or(QString()) +
           u"' and custid=" + QString::number(toGetCustID(customer)) + u" and respondentdesignation='" +
           filteredDesignation.value_or(QString()) + u"'";
}

void frmCustomer::toSaveRespondentDetails() {
    if (respondentsOf != currentCustID()) {
        msgBox(
            u"The respondents of this customer could not be read. Click the customer to read them. Nothing "
            "has been saved."_s,
            style::information, u"Gaugewell v2.1"_s);
        return;
    }
    setMousePointer(forms::Hourglass);
    forms::MSHFlexGrid* grid = ui->grdRespondentDtls;
    QString inHand;
    const bool saved = guarded({.form = this}, [&] {
        toReconnect();
        Transaction transaction;
        for (int row = 1; row < grid->Rows(); ++row) {
            const QString respondentid = toSaveRespondentRow(row);
            if (row == grid->Row())
                inHand = respondentid;
        }
        transaction.Commit();
    });
    if (saved) {
        grid->setTextMatrix(grid->Row(), respondentidColumn, inHand);
        toRefreshRespondentDetails();
    }
    setMousePointer(forms::DefaultPointer);
}

int frmCustomer::newRespondents() const {
    int count = 0;
    for (int row = 1; row < ui->grdRespondentDtls->Rows(); ++row)
        count += ui->grdRespondentDtls->TextMatrix(row, respondentidColumn).isEmpty() ? 1 : 0;
    return count;
}

/// A single new row is compared by the texts of the row in hand, of several each by its own.
QString frmCustomer::toSaveRespondentRow(int row) {
    const auto cell = [&](int column) { return ui->grdRespondentDtls->TextMatrix(row, column); };
    const bool isNew = cell(respondentidColumn).isEmpty();
    ado::Recordset respondent;
    if (isNew) {
        const int tested = newRespondents() > 1 ? row : ui->grdRespondentDtls->Row();
        respondent.Open(toMakeDuplicateTest(tested), *cnnMain, ado::Recordset::Lock::Optimistic);
        if (!respondent.Eof())
            return {};
        respondent.AddNew();
    } else {
        respondent.Open(u"select * from respondent where respondentid="_s + cell(respondentidColumn),
                        *cnnMain, ado::Recordset::Lock::Optimistic);
        if (respondent.Eof())
            return {};
    }
    respondent["respondentname"] = nullWhenEmpty(cell(1));
    if (isNew || !cell(designationColumn).isEmpty())
        respondent["respondentdesignation"] = toStoredText(cell(designationColumn));
    respondent["emailid"] = toStoredText(cell(3));
    respondent["custid"] = currentCustID();
    respondent.Update();
    return respondent["respondentid"].Text();
}

void frmCustomer::toDeleteCustomer() {
    guarded({.form = this}, [this] {
        toReconnect();
        toShowStatus(u"Deleting Customer Dtls....."_s);
        const QString custid = currentCustID();
        if (!custid.isEmpty()) {
            const QString deletion = u"delete * from customer where custid="_s + custid;
            ado::Recordset respondent;
            respondent.Open(u"select * from respondent where custid="_s + custid, *cnnMain);
            const bool alone = respondent.Eof();
            respondent.Close();
            if (alone || msgBox(u"Deleting of Customer will delete all the Corresponding records"_s,
                                style::okCancel + style::secondButton, u"Tallywell"_s) == forms::Answer::Ok) {
                toBackupBeforeLoss();
                cnnMain->Execute(deletion);
            } else {
                toShowStatus(u"Deletion Cancelled....."_s);
            }
        }
        toRefreshCustomerDetails();
        toRefreshRespondentDetails();
        SetEditTextBox(ui->grdCustomerDtls->Col(), ui->grdCustomerDtls->Row());
        toShowStatus({});
    });
}

void frmCustomer::toDeleteRespondentDetails() {
    guarded({.form = this}, [this] {
        toReconnect();
        const QString respondentid = currentKey(ui->grdRespondentDtls, respondentidColumn);
        if (!respondentid.isEmpty()) {
            toBackupBeforeLoss();
            cnnMain->Execute(u"delete * from respondent where respondentid="_s + respondentid);
        }
        toRefreshRespondentDetails();
        SetEditTextBox(ui->grdCustomerDtls->Col(), ui->grdCustomerDtls->Row());
        ui->grdRespondentDtls->setFocus();
        ui->txtRespondentDtls->hide();
    });
}

void frmCustomer::cmdAddCustomer() {
    forms::MSHFlexGrid* grid = ui->grdCustomerDtls;
    if (toFindBlank(grid, 1) > 0) {
        msgBox(u"Customer Name Cannot be left blank....Error"_s, style::critical, u"Gaugewell v2.1"_s);
        SetEditTextBox(1, grid->Row());
        customers->focusBox();
        return;
    }
    toShowStatus(u"Adding Customer......"_s);
    cmdSaveCustomer();
    grid->setRows(grid->Rows() + 1);
    grid->setRow(grid->Rows() - 1);
    toRefreshRespondentDetails();
    toShowLastRespondent();
    SetEditTextBox(1, grid->Row());
    customers->focusBox();
    toShowStatus({});
}

/// Puts the editor on a row's name; the respondents in sight are those of the row in hand.
void frmCustomer::toGoToCustomer(int row) {
    const bool moves = row != ui->grdCustomerDtls->Row();
    SetEditTextBox(1, row);
    if (moves)
        grdCustomerDtls_Click();
}

void frmCustomer::cmdSaveCustomer() {
    if (const int blank = toFindBlank(ui->grdCustomerDtls, 1)) {
        msgBox(u"Customer Name cannot be left blank....Error"_s, style::critical, u"Tallywell"_s);
        toGoToCustomer(blank);
        customers->focusBox();
        return;
    }
    toShowStatus(u"Saving Customer ...."_s);
    toSaveCustomerDtls();
    SetEditTextBox(1, ui->grdCustomerDtls->Row());
    customers->focusBox();
    toShowStatus({});
}

void frmCustomer::cmdDeleteCustomer() {
    toDeleteCustomer();
    customers->focusBox();
    toShowStatus({});
}

bool frmCustomer::toCheckDesignations(bool resetPointer) {
    const int blank = toFindBlank(ui->grdRespondentDtls, designationColumn);
    if (blank == 0)
        return true;
    msgBox(u"Designation cannot be left blank....Error"_s, style::critical, u"Tallywell"_s);
    SetEditRespondentTextBox(designationColumn, blank);
    respondents->focusBox();
    if (resetPointer)
        setMousePointer(forms::DefaultPointer);
    return false;
}

void frmCustomer::cmdAddRespondent() {
    if (!toCheckDesignations(false))
        return;
    toShowStatus(u"Adding Respondent....."_s);
    cmdSaveRespondent();
    forms::MSHFlexGrid* grid = ui->grdRespondentDtls;
    grid->setRows(grid->Rows() + 1);
    grid->setRow(grid->Rows() - 1);
    SetEditRespondentTextBox(1, grid->Row());
    respondents->focusBox();
    toShowStatus({});
}

void frmCustomer::cmdSaveRespondent() {
    setMousePointer(forms::Hourglass);
    if (!toCheckDesignations(true))
        return;
    if (ui->grdCustomerDtls->TextMatrix(ui->grdCustomerDtls->Row(), 1).trimmed().isEmpty()) {
        msgBox(u"Select a Customer to Add Respondent(s)"_s, style::noIcon, u"Gaugewell v2.1"_s);
        setMousePointer(forms::DefaultPointer);
        return;
    }
    toShowStatus(u"Saving Respondent......"_s);
    toSaveRespondentDetails();
    toShowStatus({});
    setMousePointer(forms::DefaultPointer);
}

void frmCustomer::cmdDeleteRespondent() {
    toShowStatus(u"Deleting Respondent...."_s);
    toDeleteRespondentDetails();
    SetEditRespondentTextBox(1, ui->grdRespondentDtls->Row());
    respondents->focusBox();
    toShowStatus({});
}
