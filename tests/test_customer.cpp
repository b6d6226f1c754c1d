// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "reference/frmCustomer.h"
#include "tests/support/gridform.h"

#include <QDir>
#include <QElapsedTimer>

using namespace Qt::StringLiterals;
using forms::Answer;
using Cell = std::pair<int, int>;

namespace {

class CustomerTest : public StoreTest {
protected:
    frmCustomer& open() {
        frmCustomer& form = frmCustomer::instance();
        form.Show();
        customers = std::make_unique<EditedGrid>(form, "grdCustomerDtls", "txtCustomerDtls");
        respondents = std::make_unique<EditedGrid>(form, "grdRespondentDtls", "txtRespondentDtls");
        customers->box->setFocus();
        return form;
    }

    std::unique_ptr<EditedGrid> customers;
    std::unique_ptr<EditedGrid> respondents;
};

TEST_F(CustomerTest, enterWalksTheCellsAndStoresAtTheLast) {
    open();
    EXPECT_EQ(customers->cell(), Cell(1, 1));
    for (const char16_t* text : {u"Acme", u"1 High Street", u"", u"post@acme.example"}) {
        EXPECT_TRUE(customers->boxLiesOverCell());
        type(QString::fromUtf16(text));
        key(Qt::Key_Return);
    }
    EXPECT_EQ(rows(u"select custname, Address, telno, email from customer"_s),
              QStringList{u"Acme|1 High Street||post@acme.example"_s});
    EXPECT_EQ(customers->cell(), Cell(2, 1));
    EXPECT_TRUE(customers->boxLiesOverCell() && customers->box->hasFocus());
    // The empty row that was begun is caught by the next command.
    messages.expect(u"Customer Name Cannot be left blank....Error"_s, 16, u"Gaugewell v2.1"_s);
    for (int i = 0; i < 4; ++i)
        key(Qt::Key_Return);
    EXPECT_EQ(customers->cell(), Cell(2, 1));
}

TEST_F(CustomerTest, arrowsLeaveTheCellOnlyAtTheEndsOfItsText) {
    addCustomer(u"Acme"_s);
    addCustomer(u"Bolt"_s);
    open();
    struct Step {
        Qt::Key pressed;
        int caret; // before the key; -1 leaves it where it is
        Cell cell;
    };
    const Step steps[] = {
        {Qt::Key_Right, 2, {1, 1}}, {Qt::Key_Right, 4, {1, 2}},  {Qt::Key_Left, 1, {1, 2}},
        {Qt::Key_Left, 0, {1, 1}},  {Qt::Key_Left, 0, {1, 1}},   {Qt::Key_Up, -1, {1, 1}},
        {Qt::Key_Down, -1, {2, 1}}, {Qt::Key_Up, -1, {1, 1}},    {Qt::Key_Right, 4, {1, 2}},
        {Qt::Key_Right, 1, {1, 3}}, {Qt::Key_Right, -1, {1, 4}}, {Qt::Key_Right, -1, {1, 4}},
    };
    int number = 0;
    for (const Step& step : steps) {
        if (step.caret >= 0)
            customers->box->setCursorPosition(step.caret);
        key(step.pressed);
        EXPECT_EQ(customers->cell(), step.cell) << "step " << number;
        EXPECT_TRUE(customers->boxLiesOverCell() && customers->box->hasFocus()) << "step " << number++;
    }
}

TEST_F(CustomerTest, downOnAFilledLastRowAppendsWithoutASave) {
    open();
    key(Qt::Key_Down);
    EXPECT_EQ(customers->cell(), Cell(1, 1)) << "an empty last row appends nothing";
    type(u"Acme"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(customers->cell(), Cell(2, 1));
    EXPECT_EQ(customers->grid->Rows(), 3);
    EXPECT_EQ(value(u"select count(*) from customer"_s), u"0"_s);
    // A respondent's own name is tested there, although the designation is the mandatory cell.
    respondents->click(1, 1);
    type(u"Ann"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(respondents->grid->Rows(), 3);
}

TEST_F(CustomerTest, headAndScrollHideTheBox) {
    for (int i = 0; i < 60; ++i)
        addCustomer(u"Customer "_s + QString::number(i));
    open();
    customers->clickHead(1);
    EXPECT_FALSE(customers->box->isVisible());
    customers->grid->setFocus();
    key(Qt::Key_A);
    EXPECT_FALSE(customers->box->isVisible()) << "not before the next click on a cell";
    customers->click(2, 2);
    EXPECT_TRUE(customers->boxLiesOverCell() && customers->box->hasFocus());
    customers->grid->setTopRow(20);
    EXPECT_FALSE(customers->box->isVisible());
    EXPECT_EQ(customers->cell(), Cell(2, 2)) << "the cursor stays";
    type(u"x"_s);
    EXPECT_TRUE(customers->boxLiesOverCell()) << "a key brings it back";
    EXPECT_EQ(customers->grid->TextMatrix(2, 2), u" x"_s);
}

TEST_F(CustomerTest, keysThatTheBoxHasNoUseForEndThere) {
    addCustomer(u"Acme"_s);
    open();
    for (const Qt::Key pressed : {Qt::Key_Shift, Qt::Key_CapsLock, Qt::Key_F5, Qt::Key_PageDown})
        QTest::keyClick(customers->box, pressed);
    QTest::keyClick(customers->box, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(customers->cell(), Cell(1, 1));
    EXPECT_TRUE(customers->box->hasFocus());
    customers->grid->setTopRow(1);
    customers->clickHead(1);
    customers->grid->setFocus();
    QTest::keyClick(customers->grid, Qt::Key_Shift);
    EXPECT_FALSE(customers->box->isVisible());
}

TEST_F(CustomerTest, aPressThatSlipsToAnotherRowStaysWithItsOwn) {
    addRespondent(addCustomer(u"Acme"_s), u"Ann"_s);
    addCustomer(u"Bolt"_s);
    open();
    customers->click(2, 1);
    const auto middle = [&](int row) {
        return customers->grid->visualRect(customers->grid->model()->index(row - 1, 1)).center();
    };
    QWidget* cells = customers->grid->viewport();
    QTest::mousePress(cells, Qt::LeftButton, {}, middle(1));
    QMouseEvent slip(QEvent::MouseMove, middle(2), cells->mapToGlobal(middle(2)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(cells, &slip);
    QTest::mouseRelease(cells, Qt::LeftButton, {}, middle(2));
    EXPECT_EQ(customers->cell(), Cell(1, 2));
    EXPECT_TRUE(customers->boxLiesOverCell());
    EXPECT_EQ(respondents->grid->TextMatrix(1, 1), u"Ann"_s) << "the click counts for that row";
}

TEST_F(CustomerTest, accessKeysPressTheFormsButtonsAndEnterTheFocusedOne) {
    frmCustomer& form = open();
    type(u"Acme"_s);
    key(Qt::Key_S, Qt::AltModifier); // also the access key of a menu
    EXPECT_EQ(value(u"select custname from customer"_s), u"Acme"_s);
    key(Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(customers->grid->Rows(), 3);
    control<QWidget>(form, "cmdDeleteCustomer")->setFocus();
    customers->grid->setRow(1);
    key(Qt::Key_Return);
    EXPECT_EQ(value(u"select count(*) from customer"_s), u"0"_s);
}

TEST_F(CustomerTest, savingSkipsAStoredNameAndFiltersApostrophes) {
    addCustomer(u"Acme"_s);
    frmCustomer& form = open();
    customers->enter(1, 1, u"Acme Ltd"_s);
    customers->enter(1, 3, u"12'3"_s);
    key(Qt::Key_Down);
    customers->enter(2, 1, u"D'Arcy's"_s);
    key(Qt::Key_Down);
    customers->enter(3, 1, u"acme LTD"_s);
    press(form, "cmdSaveCustomer");
    EXPECT_EQ(rows(u"select custid, custname, Address, telno from customer"_s),
              (QStringList{u"1|Acme Ltd| |12’3"_s, u"2|D’Arcy’s| |"_s}));
    EXPECT_EQ(customers->grid->Rows(), 3) << "the refresh drops the skipped row";
    EXPECT_EQ(customers->grid->TextMatrix(2, 1), u"D’Arcy’s"_s);
    EXPECT_EQ(customers->grid->TextMatrix(2, 2), u" "_s);
    customers->enter(2, 1, u"Acme Ltd"_s);
    press(form, "cmdSaveCustomer");
    EXPECT_EQ(value(u"select count(*) from customer where custname='acme ltd'"_s), u"2"_s)
        << "a stored customer may take another's name";
}

TEST_F(CustomerTest, blankMandatoryCellsAreRefused) {
    frmCustomer& form = open();
    messages.expect(u"Customer Name cannot be left blank....Error"_s, 16, u"Tallywell"_s);
    press(form, "cmdSaveCustomer");
    messages.expect(u"Customer Name Cannot be left blank....Error"_s, 16, u"Gaugewell v2.1"_s);
    press(form, "cmdAddCustomer");
    for (const char* button : {"cmdAddRespondent", "cmdSaveRespondent"}) {
        messages.expect(u"Designation cannot be left blank....Error"_s, 16, u"Tallywell"_s);
        press(form, button);
        EXPECT_EQ(respondents->cell(), Cell(1, 2));
        EXPECT_TRUE(respondents->box->hasFocus());
    }
    respondents->enter(1, 2, u"Buyer"_s);
    messages.expect(u"Select a Customer to Add Respondent(s)"_s, 80, u"Gaugewell v2.1"_s);
    press(form, "cmdSaveRespondent");
    // The customer's row is typed and not stored: the statement is incomplete, and nothing is kept.
    customers->enter(1, 1, u"Acme"_s);
    respondents->enter(1, 2, u"Buyer"_s);
    messages.expectBeginning(u"Error : 1\r\n"_s);
    press(form, "cmdSaveRespondent");
    EXPECT_EQ(form.MousePointer(), forms::DefaultPointer);
    EXPECT_FALSE(cnnMain->InTransaction());
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"0"_s);
}

TEST_F(CustomerTest, respondentsFollowTheCustomerUnderTheCursor) {
    const int acme = addCustomer(u"Acme"_s);
    addCustomer(u"Bolt"_s);
    addRespondent(acme, u"Ann"_s);
    addRespondent(acme, u"Abe"_s);
    open();
    EXPECT_EQ(respondents->grid->Rows(), 3);
    EXPECT_EQ(respondents->cell(), Cell(2, 1)) << "the last respondent is at hand";
    customers->click(2, 1);
    EXPECT_EQ(respondents->grid->TextMatrix(1, 1), u""_s);
    respondents->enter(1, 1, u"unsaved"_s);
    customers->click(1, 1);
    EXPECT_EQ(respondents->grid->TextMatrix(1, 1), u"Ann"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(respondents->grid->TextMatrix(1, 1), u""_s) << "unsaved cells are dropped";
    key(Qt::Key_Up);
    EXPECT_EQ(respondents->grid->TextMatrix(2, 1), u"Abe"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(respondents->box->text(), u""_s) << "no respondent of another customer";
}

TEST_F(CustomerTest, theDuplicateTestKeepsItsOddities) {
    const int acme = addCustomer(u"O’Hara & Co"_s);
    addRespondent(acme, u"Ann"_s, u"Buyer"_s);
    addRespondent(acme, u"D’Arcy"_s, u"Buyer"_s);
    frmCustomer& form = open();
    const auto addRow = [&](const QString& name, const QString& designation) {
        press(form, "cmdAddRespondent");
        respondents->enter(respondents->grid->Rows() - 1, 1, name);
        respondents->enter(respondents->grid->Rows() - 1, 2, designation);
        press(form, "cmdSaveRespondent");
        return value(u"select count(*) from respondent"_s).toInt();
    };
    EXPECT_EQ(addRow(u"ann"_s, u"BUYER"_s), 2) << "the same person, without a word";
    EXPECT_EQ(addRow(u"Ann"_s, u"Owner"_s), 3);
    EXPECT_EQ(addRow(u"D'Arcy"_s, u"Buyer"_s), 4) << "with an apostrophe in one text nothing is found";
    EXPECT_EQ(addRow(u"D'Arcy"_s, u"Buyer's"_s), 5);
    EXPECT_EQ(addRow(u"D'Arcy"_s, u"Buyer's"_s), 5) << "with one in both it is";
    EXPECT_EQ(rows(u"select emailid from respondent where emailid is null"_s), QStringList());
}

TEST_F(CustomerTest, deletingAsksOnlyWhereRespondentsHangOnTheCustomer) {
    const int acme = addCustomer(u"Acme"_s);
    addCustomer(u"Bolt"_s);
    addRespondent(acme, u"Ann"_s);
    frmCustomer& form = open();
    const QString question = u"Deleting of Customer will delete all the Corresponding records"_s;
    customers->click(1, 1);
    messages.expect(question, 1, u"Tallywell"_s, Answer::Cancel);
    press(form, "cmdDeleteCustomer");
    EXPECT_EQ(value(u"select count(*) from customer"_s), u"2"_s);
    EXPECT_FALSE(QDir(home() + u"/backup").exists()) << "nothing was lost yet";
    messages.expect(question, 1, u"Tallywell"_s, Answer::Ok);
    press(form, "cmdDeleteCustomer");
    EXPECT_EQ(rows(u"select custname from customer"_s), QStringList{u"Bolt"_s});
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"0"_s);
    press(form, "cmdDeleteCustomer");
    EXPECT_EQ(value(u"select count(*) from customer"_s), u"0"_s) << "without a question";
    EXPECT_EQ(QDir(home() + u"/backup").entryList(QDir::Files).size(), 1) << "one copy a run";
    EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), u""_s);
}

TEST_F(CustomerTest, aRespondentIsDeletedAtOnceAndAFailingCopyStopsTheDeletion) {
    const int acme = addCustomer(u"Acme"_s);
    addRespondent(acme, u"Ann"_s);
    frmCustomer& form = open();
    QFile blocker(home() + u"/backup");
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    messages.expectBeginning(u"Error : 14\r\nThe copy of the database"_s);
    press(form, "cmdDeleteRespondent");
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"1"_s);
    blocker.remove();
    press(form, "cmdDeleteRespondent");
    EXPECT_EQ(value(u"select count(*) from respondent"_s), u"0"_s);
    EXPECT_TRUE(respondents->box->hasFocus());
}

TEST_F(CustomerTest, aStoreThatCannotBeWrittenIsToldAndNothingTypedIsLost) {
    addCustomer(u"Acme"_s);
    frmCustomer& form = open();
    runRaw(u"pragma query_only = 1"_s); // as of a file or folder without the right to write
    customers->enter(1, 2, u"1 High Street"_s);
    messages.expect(u"Error : 8\r\nThe database cannot be changed: the file or its folder is read-only."_s);
    press(form, "cmdSaveCustomer");
    EXPECT_EQ(customers->grid->TextMatrix(1, 2), u"1 High Street"_s);
    EXPECT_EQ(form.MousePointer(), forms::DefaultPointer);
    runRaw(u"pragma query_only = 0"_s);
    press(form, "cmdSaveCustomer");
    EXPECT_EQ(value(u"select Address from customer"_s), u"1 High Street"_s);
}

TEST_F(CustomerTest, escapeClosesFromAnyControlAndDropsWhatWasTyped) {
    open();
    type(u"Acme"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
    frmCustomer& form = open();
    EXPECT_EQ(customers->grid->TextMatrix(1, 1), u""_s);
    control<QWidget>(form, "cmdHelp")->setFocus();
    key(Qt::Key_Escape);
    EXPECT_EQ(frmCustomer::loaded(), nullptr);
}

TEST_F(CustomerTest, twoThousandCustomersOpenAndSaveAtOnce) {
    cnnMain->BeginTrans();
    for (int i = 0; i < 2000; ++i)
        addRespondent(addCustomer(u"Customer "_s + QString::number(i)), u"Someone"_s);
    cnnMain->CommitTrans();
    QElapsedTimer clock;
    clock.start();
    frmCustomer& form = open();
    QCoreApplication::processEvents();
    const qint64 opening = clock.restart();
    customers->enter(1, 2, u"New address"_s);
    press(form, "cmdSaveCustomer");
    const qint64 saving = clock.elapsed();
    std::printf("opened in %lld ms, saved in %lld ms\n", opening, saving);
    EXPECT_LT(opening, 1500);
    EXPECT_LT(saving, 4000);
    EXPECT_EQ(value(u"select Address from customer where custid=1"_s), u"New address"_s);
}

} // namespace
