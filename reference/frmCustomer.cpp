// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmCustomer.h"

#include "core/base/busy.h"
#include "core/base/failure.h"
#include "core/base/gblGlobal.h"
#include "core/base/shell.h"
#include "platform/forms/msgbox.h"
#include "reference/gridtools.h"
#include "ui_frmCustomer.h"

using namespace Qt::StringLiterals;
using forms::msgBox;
namespace style = forms::style;

namespace {

constexpr int helpContext = 1;
constexpr int designationColumn = 2;
constexpr int telephoneColumn = 3;

QVariant nullWhenEmpty(const QString& text) {
    return text.isEmpty() ? ado::Null : QVariant(toStoredText(text));
}

} // namespace

frmCustomer::frmCustomer() : DefaultForm(Kind::SubWindow), ui(std::make_unique<Ui::frmCustomer>()) {
    ui->setupUi(this);
    customers = new CatalogueTable(*this, gridrules::customer, ui->grdCustomerDtls, ui->txtCustomerDtls,
                                   "customer", {"custname", "Address", "telno", "email", "custid"});
    respondents = new CatalogueTable(*this, gridrules::respondent, ui->grdRespondentDtls,
                                     ui->txtRespondentDtls, "respondent",
                                     {"respondentname", "respondentdesignation", "emailid", "respondentid"});
    customers->lower = respondents;
    customers->noun = u"customer"_s;
    respondents->noun = u"respondent"_s;
    respondents->unsavedHint = ui->lblUnsaved;
    respondents->keepsBoxHidden = true;
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
    connect(ui->cmdHelp, &QPushButton::clicked, this, [] { showHelpTopic(helpContext); });
    connect(ui->cmdClose, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->grdCustomerDtls, &forms::MSHFlexGrid::Click, this, &frmCustomer::grdCustomerDtls_Click);
    customers->selectFor = [this](int row) { return customerSelect(row); };
    customers->write = [this](int row, ado::Recordset& customer) { writeCustomer(row, customer); };
    customers->refresh = [this] { toRefreshCustomerDetails(); };
    customers->refreshLower = [this] { grdCustomerDtls_Click(); };
    customers->enterCommand = [this] { cmdAddCustomer(); };
    customers->onRowChange = [this](GridEditor::RowMove move) {
        toRefreshRespondentDetails();
        if (move == GridEditor::RowMove::Enter)
            ui->txtRespondentDtls->hide();
    };
    customers->afterRowChange = [this](GridEditor::RowMove move) {
        if (move == GridEditor::RowMove::Down)
            showLastRespondent();
        else if (move == GridEditor::RowMove::Appended)
            SetEditRespondentTextBox(1, 1);
    };
    respondents->selectFor = [this](int row) { return respondentSelect(row); };
    respondents->write = [this](int row, ado::Recordset& respondent) { writeRespondent(row, respondent); };
    respondents->refresh = [this] { toRefreshRespondentDetails(); };
    respondents->enterCommand = [this] { cmdAddRespondent(); };
}

void frmCustomer::onLoad() {
    reconnect();
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
    setHeadsAndWidths(ui->grdCustomerDtls,
                      {u"Customer Name"_s, u"Customer Address"_s, u"Tel.No"_s, u"Email"_s},
                      {0.05, 0.25, 0.35, 0.1, 0.2, 0});
}

void frmCustomer::toSetWidthForResGrid() {
    setHeadsAndWidths(ui->grdRespondentDtls, {u"Respondent Name"_s, u"Designation"_s, u"Email ID"_s},
                      {0.025, 0.3, 0.3, 0.3, 0});
}

void frmCustomer::SetEditTextBox(int ColPos, int RowPos) {
    guarded(u"Error :"_s, [&] { customers->setEdit(ColPos, RowPos); });
}

void frmCustomer::SetEditRespondentTextBox(int ColPos, int RowPos) {
    guarded(u"Error :"_s, [&] { respondents->setEdit(ColPos, RowPos); });
}

void frmCustomer::grdCustomerDtls_Click() {
    toRefreshRespondentDetails();
    showLastRespondent();
}

void frmCustomer::showLastRespondent() {
    ui->grdRespondentDtls->setRow(ui->grdRespondentDtls->Rows() - 1);
    respondents->editCurrent();
}

void frmCustomer::toRefreshCustomerDetails() {
    customers->read(u"select * from customer"_s);
    ui->grdCustomerDtls->fitColumn(telephoneColumn);
}

void frmCustomer::toRefreshRespondentDetails() {
    const QString custid = customers->key();
    respondents->readOf(custid, u"select * from respondent where custid="_s + custid);
    if (custid.isEmpty())
        ui->grdCustomerDtls->setFocus();
}

void frmCustomer::toSaveCustomerDtls() {
    if (customers->save())
        customers->focusBox();
}

QString frmCustomer::customerSelect(int row) const {
    if (!customers->key(row).isEmpty())
        return {};
    return u"select * from customer where CustName='"_s + toStoredText(customers->cell(row, 1)) + u"'";
}

void frmCustomer::writeCustomer(int row, ado::Recordset& customer) const {
    const auto cell = [&](int column) { return customers->cell(row, column); };
    customer["custname"] = toStoredText(cell(1));
    customer["Address"] = cell(2).isEmpty() ? u" "_s : toStoredText(cell(2));
    customer["telno"] = nullWhenEmpty(cell(3));
    customer["email"] = nullWhenEmpty(cell(4));
}

/// The select for a stored respondent of the current customer with the row's name and designation. If only
/// one of the two texts has an apostrophe, the other is compared as empty and no duplicate is found.
QString frmCustomer::duplicateTest(int row) const {
    const QString name = respondents->cell(row, 1);
    const QString designation = respondents->cell(row, designationColumn);
    const std::optional<QString> filteredName = toFilterApostrophe(name);
    const std::optional<QString> filteredDesignation = toFilterApostrophe(designation);
    if (!filteredName && !filteredDesignation) {
        return u"select * from respondent where respondentname='"_s + name + u"' and custid=" +
               customers->key() + u" and respondentdesignation='" + designation + u"'";
    }
    return u"select * from respondent where respondentname='"_s + filteredName.value_or(QString()) +
           u"' and custid=" + QString::number(testedCustid) + u" and respondentdesignation='" +
           filteredDesignation.value_or(QString()) + u"'";
}

/// The current customer's, found by its name if a new row has an apostrophe. The look-up fails, and finds
/// none, while the name has one that is not saved yet.
int frmCustomer::custidByName() const {
    for (int row = 1; row < ui->grdRespondentDtls->Rows(); ++row) {
        const QString texts = respondents->cell(row, 1) + respondents->cell(row, designationColumn);
        if (respondents->key(row).isEmpty() && toFilterApostrophe(texts))
            return toGetCustID(customers->cell(ui->grdCustomerDtls->Row(), 1));
    }
    return 0;
}

void frmCustomer::toSaveRespondentDetails() {
    if (respondents->owner() == customers->key()) {
        testedCustid = custidByName(); // shows its failure, so before the transaction
        respondents->save();
        return;
    }
    msgBox(u"The respondents of this customer could not be read. Click the customer to read them. Nothing "
           "has been saved."_s,
           style::information, titleWithVersion);
}

/// With a single new row, the current row's texts are checked for a duplicate; with several, each row's own.
QString frmCustomer::respondentSelect(int row) const {
    if (!respondents->key(row).isEmpty())
        return {};
    int newRows = 0;
    for (int other = 1; other < ui->grdRespondentDtls->Rows(); ++other)
        newRows += respondents->key(other).isEmpty() ? 1 : 0;
    return duplicateTest(newRows > 1 ? row : ui->grdRespondentDtls->Row());
}

void frmCustomer::writeRespondent(int row, ado::Recordset& respondent) const {
    const QString designation = respondents->cell(row, designationColumn);
    respondent["respondentname"] = nullWhenEmpty(respondents->cell(row, 1));
    if (respondents->key(row).isEmpty() || !designation.isEmpty())
        respondent["respondentdesignation"] = toStoredText(designation);
    respondent["emailid"] = toStoredText(respondents->cell(row, 3));
    respondent["custid"] = customers->key();
}

void frmCustomer::toDeleteCustomer() {
    guarded([this] {
        showStatus(u"Deleting Customer Dtls....."_s);
        const QString custid = customers->key();
        if (custid.isEmpty() || !hasRecords(u"select * from respondent where custid="_s + custid) ||
            msgBox(u"Deleting of Customer will delete all the Corresponding records"_s,
                   style::okCancel + style::secondButton, u"Tallywell"_s) == forms::Answer::Ok)
            customers->remove(u"delete * from customer where custid="_s + custid);
        else
            showStatus(u"Deletion Cancelled....."_s);
        toRefreshCustomerDetails();
        toRefreshRespondentDetails();
        customers->editCurrent();
        showStatus({});
    });
}

void frmCustomer::toDeleteRespondentDetails() {
    guarded([this] {
        respondents->remove(u"delete * from respondent where respondentid="_s + respondents->key());
        toRefreshRespondentDetails();
        customers->editCurrent();
        ui->grdRespondentDtls->setFocus();
        ui->txtRespondentDtls->hide();
    });
}

void frmCustomer::cmdAddCustomer() {
    if (findBlank(ui->grdCustomerDtls, 1) > 0) {
        msgBox(u"Customer Name Cannot be left blank....Error"_s, style::critical, titleWithVersion);
        customers->editFirst(); // on the current row, which may not be the blank one
        return;
    }
    const Busy busy(*this, u"Adding Customer......"_s);
    cmdSaveCustomer();
    customers->append();
}

void frmCustomer::cmdSaveCustomer() {
    if (!customers->check(1, u"Customer Name cannot be left blank....Error"_s, u"Tallywell"_s))
        return;
    const Busy busy(*this, u"Saving Customer ...."_s);
    toSaveCustomerDtls();
    customers->editFirst();
}

void frmCustomer::cmdDeleteCustomer() {
    toDeleteCustomer();
    customers->focusBox();
}

bool frmCustomer::checkDesignations() {
    return respondents->check(designationColumn, u"Designation cannot be left blank....Error"_s,
                              u"Tallywell"_s);
}

void frmCustomer::cmdAddRespondent() {
    if (!checkDesignations())
        return;
    const Busy busy(*this, u"Adding Respondent....."_s);
    cmdSaveRespondent();
    respondents->append();
}

void frmCustomer::cmdSaveRespondent() {
    Busy busy(*this);
    if (!checkDesignations())
        return;
    if (customers->cell(ui->grdCustomerDtls->Row(), 1).trimmed().isEmpty()) {
        msgBox(u"Select a Customer to Add Respondent(s)"_s, style::noIcon, titleWithVersion);
        return;
    }
    busy.say(u"Saving Respondent......"_s);
    toSaveRespondentDetails();
}

void frmCustomer::cmdDeleteRespondent() {
    const Busy busy(*this, u"Deleting Respondent...."_s);
    toDeleteRespondentDetails();
    respondents->editFirst();
}
