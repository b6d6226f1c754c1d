// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmCustomer.h"
#include "tests/support/gridform.h"

using Cell = std::pair<int, int>;

namespace {
struct CustomerTest : StoreTest {
    static EditedGrid customers() { return {frmCustomer::instance(), "grdCustomerDtls", "txtCustomerDtls"}; }
    static EditedGrid respondents() {
        return {frmCustomer::instance(), "grdRespondentDtls", "txtRespondentDtls"};
    }
    static frmCustomer& open() {
        frmCustomer::instance().Show();
        customers().box->setFocus();
        return frmCustomer::instance();
    }
    static QString countOf(const QString& table) { return value(u"select count(*) from "_s + table); }
};

TEST_F(CustomerTest, arrowsLeaveTheCellOnlyAtTheEndsOfItsText) {
    addCustomer(u"Acme"_s);
    open();
    const std::tuple<Qt::Key, int, Cell> steps[] = {
        // cursor position before the key
        {Qt::Key_Right, 2, {1, 1}}, {Qt::Key_Right, 4, {1, 2}}, {Qt::Key_Left, 1, {1, 2}},
        {Qt::Key_Left, 0, {1, 1}},  {Qt::Key_Left, 0, {1, 1}},  {Qt::Key_Up, 0, {1, 1}},
    };
    for (const auto& [pressed, caret, cell] : steps) {
        customers().box->setCursorPosition(caret);
        key(pressed);
        EXPECT_EQ(customers().cell(), cell) << pressed << " at " << caret;
    }
}

TEST_F(CustomerTest, headAndScrollHideTheBox) {
    for (int i = 1; i <= 60; ++i)
        addCustomer(u"Customer "_s + QString::number(i));
    open();
    customers().clickHead();
    key(Qt::Key_A);
    EXPECT_FALSE(customers().box->isVisible()) << "not before the next click on a cell";
    customers().click(2, 2);
    customers().grid->setTopRow(20);
    EXPECT_FALSE(customers().box->isVisible());
    key(Qt::Key_Shift);
    EXPECT_FALSE(customers().box->isVisible());
    type(u"x"_s);
    EXPECT_TRUE(customers().isBoxOverCell()) << "a key brings it back";
    EXPECT_EQ(customers().text(2, 2), u" x"_s) << "the cursor has stayed";
}

TEST_F(CustomerTest, blankMandatoryCellsAreRefused) {
    frmCustomer& form = open();
    key(Qt::Key_Down);
    EXPECT_EQ(customers().cell(), Cell(1, 1)) << "an empty last row appends nothing";
    messages.expect(u"Customer Name cannot be left blank....Error"_s, style::critical, u"Tallywell"_s);
    press(form, "cmdSaveCustomer");
    for (const char* button : {"cmdAddRespondent", "cmdSaveRespondent"}) {
        messages.expect(u"Designation cannot be left blank....Error"_s, style::critical, u"Tallywell"_s);
        press(form, button);
        EXPECT_TRUE(respondents().cell() == Cell(1, 2) && respondents().box->hasFocus());
    }
    // The customer is not stored yet, so the statement has no key and fails; nothing is stored.
    customers().enter(1, 1, u"Acme"_s);
    respondents().enter(1, 2, u"Buyer"_s);
    expectFault(Incomplete);
    press(form, "cmdSaveRespondent");
    expectIdle();
    EXPECT_EQ(countOf(u"respondent"_s), u"0"_s);
}

TEST_F(CustomerTest, respondentsThatCannotBeReadAreNotSaved) {
    addRespondent(addCustomer(u"Acme"_s), u"Ann"_s);
    const int bolt = addCustomer(u"Bolt"_s);
    addRespondent(bolt, u"Bea"_s);
    frmCustomer& form = open();
    withoutTable(u"respondent"_s, [] { customers().click(2, 1); });
    EXPECT_EQ(respondents().row(1), u"|||"_s);
    respondents().enter(1, 2, u"Buyer"_s);
    messages.expectInformation(u"The respondents of this customer could not be read. Click the customer to "
                               "read them. Nothing has been saved."_s);
    press(form, "cmdSaveRespondent");
    EXPECT_EQ(countOf(u"respondent"_s), u"2"_s);
    customers().click(2, 1);
    EXPECT_EQ(respondents().text(1, 1), u"Bea"_s);
}

TEST_F(CustomerTest, aReloadFollowsTheRowAndShowsOnlyItsCells) {
    const int acme = addCustomer(u"Acme"_s);
    addCustomer(u"Bolt"_s);
    addRespondent(acme, u"Ann"_s);
    run(u"update respondent set emailid='ann@acme.example'"_s);
    addRespondent(2, u"Bea"_s);
    frmCustomer& form = open();
    customers().click(2, 1);
    EXPECT_EQ(respondents().row(1), u"Bea|Buyer||2"_s) << "without the address of the row's earlier owner";
    key(Qt::Key_Down); // two new rows: the first has a stored name, the second is current
    type(u"ACME"_s);
    key(Qt::Key_Down);
    type(u"Core"_s);
    respondents().enter(1, 1, u"Cy"_s);
    respondents().enter(1, 2, u"Chief"_s);
    key(Qt::Key_Down);
    type(u"typed on"_s);
    press(form, "cmdSaveCustomer");
    EXPECT_EQ(customers().cell(), Cell(3, 1)) << "Core, one row higher";
    EXPECT_EQ(customers().text(3, 1), u"Core"_s);
    EXPECT_EQ(respondents().text(1, 1), u"Cy"_s) << "typed for the customer that is stored now";
    respondents().enter(2, 1, u"Cyd"_s);
    respondents().enter(2, 2, u"Clerk"_s);
    press(form, "cmdSaveRespondent");
    EXPECT_EQ(rows(u"select respondentname, emailid from respondent where custid=3 and emailid is not null "
                   "order by 1"_s),
              (QStringList{u"Cy|"_s, u"Cyd|"_s}));
}

TEST_F(CustomerTest, aPastedBlockFillsRowsOrNothing) {
    addCustomer(u"Acme"_s);
    open();
    EditedGrid::paste(u"One\t1 Street\r\nTwo\t\"2\nRoad\"\r\n"_s);
    EXPECT_EQ(customers().row(1), u"One|1 Street||"_s);
    EXPECT_EQ(customers().row(2), u"Two|2 Road||"_s);
    EXPECT_EQ(customers().box->text(), u"One"_s);
    customers().click(1, 2);
    messages.expectTitled(u"Other cells whose texts the pasted block would replace: 1. Replace them?"_s,
                          style::yesNo + style::secondButton + style::information, Answer::No);
    EditedGrid::paste(u"1 Street\nTown"_s);
    EXPECT_EQ(customers().text(2, 2), u"2 Road"_s);
}

TEST_F(CustomerTest, pastedRespondentsAreStoredExceptDuplicates) {
    addRespondent(addCustomer(u"Acme"_s), u"Ann"_s, u"Buyer"_s);
    frmCustomer& form = open();
    press(form, "cmdAddRespondent");
    EditedGrid::paste(u"Ben\tClerk\nAnn\tBuyer\nCy\tClerk\nBen\tClerk"_s);
    press(form, "cmdSaveRespondent");
    EXPECT_EQ(rows(u"select respondentname from respondent"_s), QStringList({u"Ann"_s, u"Ben"_s, u"Cy"_s}));
    EXPECT_EQ(respondents().grid->Rows(), 4);
}

TEST_F(CustomerTest, edgeCasesOfTheDuplicateCheck) {
    const int acme = addCustomer(u"O’Hara & Co"_s);
    addRespondent(acme, u"Ann"_s, u"Buyer"_s);
    addRespondent(acme, u"D’Arcy"_s, u"Buyer"_s);
    frmCustomer& form = open();
    const std::tuple<QString, QString, const char*> added[] = {
        {u"ann"_s, u"BUYER"_s, "2"}, // the same person; no message
        {u"Ann"_s, u"Owner"_s, "3"},
        {u"D'Arcy"_s, u"Buyer"_s, "4"}, // with an apostrophe in one text no duplicate is found
        {u"D'Arcy"_s, u"Buyer's"_s, "5"},
        {u"D'Arcy"_s, u"Buyer's"_s, "5"}, // with one in both texts it is
    };
    for (const auto& [name, designation, count] : added) {
        press(form, "cmdAddRespondent");
        respondents().enter(respondents().grid->Rows() - 1, 1, name);
        respondents().enter(respondents().grid->Rows() - 1, 2, designation);
        press(form, "cmdSaveRespondent");
        EXPECT_EQ(countOf(u"respondent where emailid is not null"_s), QLatin1StringView(count));
    }
    customers().enter(1, 1, u"O'Hara"_s); // not saved: it cannot be looked up, and so no duplicate is found
    press(form, "cmdAddRespondent");
    respondents().enter(6, 1, u"D'Arcy"_s);
    respondents().enter(6, 2, u"Buyer's"_s);
    messages.expectBeginning(u"Error : -3100\r\n"_s);
    press(form, "cmdSaveRespondent");
    EXPECT_EQ(countOf(u"respondent where emailid is not null"_s), u"6"_s);
}

TEST_F(CustomerTest, theColumnOfNumbersIsWiderThanItsShareOnlyForLongOnes) {
    addCustomer(u"Acme"_s);
    run(u"update customer set telno='123'"_s);
    frmCustomer& form = open();
    const forms::MSHFlexGrid& grid = *customers().grid;
    const auto share = [&] { return double(grid.columnWidth(2)) / grid.width(); };
    EXPECT_NEAR(share(), 0.1, 0.01);
    const QString number = u"+44 1632 960 123 ext. 45"_s;
    run(u"update customer set telno='"_s + number + u"'");
    form.toRefreshCustomerDetails();
    EXPECT_GT(grid.columnWidth(2), grid.fontMetrics().horizontalAdvance(number));
    EXPECT_NEAR(double(grid.ColWidth(3)) / grid.gridWidth(), 0.1, 0.001);
}

TEST_F(CustomerTest, deletingAsksOnlyIfTheCustomerHasRespondents) {
    addRespondent(addCustomer(u"Acme"_s), u"Ann"_s);
    addCustomer(u"Bolt"_s);
    frmCustomer& form = open();
    const auto remove = [&](Answer answer) {
        messages.expect(u"Deleting of Customer will delete all the Corresponding records"_s,
                        style::okCancel + style::secondButton, u"Tallywell"_s, answer);
        press(form, "cmdDeleteCustomer");
        return rows(u"select custname from customer"_s);
    };
    customers().click(1, 1);
    EXPECT_EQ(remove(Answer::Cancel), (QStringList{u"Acme"_s, u"Bolt"_s}));
    EXPECT_FALSE(QDir(path(u"backup"_s)).exists()) << "nothing was lost yet";
    EXPECT_EQ(remove(Answer::Ok), QStringList{u"Bolt"_s});
    EXPECT_EQ(countOf(u"respondent"_s), u"0"_s);
    keyOn(form, "cmdDeleteCustomer", Qt::Key_Return); // without a question
    EXPECT_EQ(countOf(u"customer"_s), u"0"_s);
    EXPECT_EQ(QDir(path(u"backup"_s)).entryList(QDir::Files).size(), 1) << "one copy a run";
}
} // namespace
