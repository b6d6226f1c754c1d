// SPDX-License-Identifier: GPL-3.0-or-later
#include "improvement/frmImprovementPlan.h"
#include "tests/support/listview.h"

namespace {
const QString stored = u"select customerid, Date, Action, targetdate, Status from actionplan order by 1, 2"_s;

struct ImprovementTest : StoreTest {
    Replaced<forms::todayHook> fixedDay{[] { return QDate(2024, 3, 5); }};

    void SetUp() override {
        StoreTest::SetUp();
        for (const QString& name : {u"Acme"_s, u"Bold"_s, u"Cora"_s})
            addCustomer(name);
        run(u"insert into actionplan (customerid, Date, Action, targetdate, Status) values "
            "(1, '2024-01-10', 'Call', '2024-01-17', True), (1, '2024-02-20', 'Visit', '2024-02-27', False), "
            "(2, '2024-02-20', 'Train', '2024-02-27', False)"_s);
        control<QAction>(MDIMain::instance(), "mnuImprovementPlan")->trigger();
    }
    static frmImprovementPlan& form() { return frmImprovementPlan::instance(); }
    static forms::ListView& list() { return *control<forms::ListView>(form(), "lsvDtls"); }
    static QLineEdit& box() { return *control<QLineEdit>(form(), "txtDescription"); }
    static forms::DTPicker& date(const char* name) { return *control<forms::DTPicker>(form(), name); }
    static void clickCustomer(int row, Qt::KeyboardModifiers held = {}) {
        clickEntry(form(), "lstCusName", row, held);
    }
    static void enter(const QString& text) {
        box().setFocus();
        box().selectAll();
        type(text);
    }
    /// The contents of the boxes: text, plan date, target date, whether complete.
    static QString shown() {
        const bool complete = control<QRadioButton>(form(), "opnComplete")->isChecked();
        return QStringList{box().text(), date("dtdate").text(), date("dttargetDate").text(),
                           complete ? u"yes"_s : u"no"_s}
            .join(u'|');
    }
    /// Opens the context menu over a row or the list's background and sends it the keys.
    static void popUp(int row, const std::vector<Qt::Key>& keys) {
        if (row < 0)
            QTest::mouseClick(list().viewport(), Qt::RightButton, {}, list().viewport()->rect().bottomLeft());
        else
            clickRow(list(), row, Qt::RightButton);
        for (const Qt::Key pressed : keys) {
            ASSERT_NE(QApplication::activePopupWidget(), nullptr);
            QTest::keyClick(QApplication::activePopupWidget(), pressed);
        }
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    }
    void popUpDelete(int row, Answer answer) {
        messages.expectTitled(u"Do you want to delete"_s, style::yesNo + style::secondButton, answer);
        popUp(row, {Qt::Key_D});
    }
};

TEST_F(ImprovementTest, aCustomerAndADateShowTheirAction) {
    clickRow(list(), 0);
    EXPECT_EQ(shown(), u"Call|10/01/2024|17/01/2024|yes"_s);
    EXPECT_EQ(list().SelectedRows(), std::vector<int>{0}) << "changing the date refills the list";
    clickCustomer(1);
    EXPECT_EQ(listed(list()), QStringList{u"Train|20/02/2024|27/02/2024|Not Complete"_s});
    EXPECT_EQ(shown(), u"|10/01/2024|05/03/2024|no"_s) << "nothing on that date";
    clickCustomer(2, Qt::ControlModifier);
    EXPECT_EQ(shown(), u"|05/03/2024|05/03/2024|no"_s);
    clickCustomer(1, Qt::ControlModifier); // only the third is left
    EXPECT_EQ(list().ListCount(), 0);
}

TEST_F(ImprovementTest, savingWritesEachChosenCustomerAndOverwritesWithoutAWarning) {
    clickCustomer(1);
    clickCustomer(2, Qt::ControlModifier);
    QStringList expected = rows(stored);
    messages.expectTitled(u"Enter the description to save......."_s, 0);
    enter(u"  "_s);
    press(form(), "cmdSave");
    EXPECT_EQ(rows(stored), expected);

    enter(u" Cora's van "_s);
    date("dttargetDate").setValue({2023, 1, 1}); // before the plan date
    press(form(), "cmdSave");
    const QString saved = u"05/03/2024|Cora\u2019s van|01/01/2023|"_s;
    expected << u"2|"_s + saved + u"False" << u"3|"_s + saved + u"False";
    EXPECT_EQ(rows(stored), expected);

    clickCustomer(2);
    enter(u"Lorry"_s);
    control<QRadioButton>(form(), "opnComplete")->click();
    press(form(), "cmdSave");
    expected.last() = u"3|05/03/2024|Lorry|01/01/2023|True"_s;
    EXPECT_EQ(rows(stored), expected);

    clickCustomer(0, Qt::ControlModifier);
    enter(u"Fails"_s);
    refuse(u"update on actionplan"_s);
    expectFault(Refused); // at the second customer
    press(form(), "cmdSave");
    EXPECT_EQ(rows(stored), expected) << "the first customer's action went back";
    for (const int customer : {0, 2})
        clickCustomer(customer, Qt::ControlModifier);
    enter(u"Kept"_s);
    press(form(), "cmdSave"); // for no customer
    EXPECT_TRUE(box().isModified());
}

TEST_F(ImprovementTest, whatIsTypedGoesToTheDateTypedAfterIt) {
    const QStringList before = rows(stored);
    const auto typeDate = [](const QString& text) {
        date("dtdate").setFocus();
        date("dtdate").lineEdit()->selectAll();
        type(text);
    };
    enter(u"Write"_s);
    typeDate(u"31/2/2024"_s);
    messages.expectCritical(u"“31/2/2024” is no date. Enter it as day/month/year, from 1601 to 9999."_s);
    press(form(), "cmdSave");
    EXPECT_EQ(rows(stored), before);
    EXPECT_TRUE(date("dtdate").hasFocus());
    typeDate(u"1/3/2024"_s);
    key(Qt::Key_S, Qt::AltModifier); // includes the text being typed
    QStringList expected = before;
    expected.insert(2, u"1|01/03/2024|Write|05/03/2024|False"_s);
    EXPECT_EQ(rows(stored), expected);
    typeDate(u"2/3/2024"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(shown(), u"|02/03/2024|05/03/2024|no"_s) << "stored, no longer being typed";
    enter(u"Ask"_s);
    typeDate(u"20/2/2024"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(shown(), u"Visit|20/02/2024|27/02/2024|no"_s);
}

TEST_F(ImprovementTest, thePopUpMenuChangesTheChosenRowsOfAllChosenCustomers) {
    const QStringList before = rows(stored);
    const QDir backup(path(u"backup"_s));
    popUpDelete(0, Answer::No);
    list().clearSelection();
    popUpDelete(-1, Answer::Yes);
    EXPECT_EQ(rows(stored), before) << "no row was chosen";
    EXPECT_FALSE(backup.exists());

    clickCustomer(1, Qt::ControlModifier);
    popUp(1, {Qt::Key_U, Qt::Key_Return}); // complete: 20/02/2024 of the first and the second
    QStringList expected = before;
    expected[1].replace(u"False"_s, u"True"_s);
    expected[2].replace(u"False"_s, u"True"_s);
    EXPECT_EQ(rows(stored), expected);
    clickCustomer(0);
    popUp(0, {Qt::Key_U, Qt::Key_Down, Qt::Key_Return}); // not complete
    expected[0].replace(u"True"_s, u"False"_s);
    EXPECT_EQ(rows(stored), expected);

    clickRow(list(), 0);
    clickRow(list(), 1, Qt::LeftButton, Qt::ShiftModifier);
    popUpDelete(0, Answer::Yes);
    EXPECT_EQ(rows(stored), QStringList{expected[2]}) << "both rows, and nothing of the second customer";
    EXPECT_EQ(list().ListCount(), 0);
    EXPECT_EQ(backup.entryList({u"*.mdb"_s}).size(), 1);
}

TEST_F(ImprovementTest, nothingIsWrittenForADeletedCustomer) {
    for (int customer = 1; customer < 3; ++customer)
        clickCustomer(customer, Qt::ControlModifier);
    clickRow(list(), 0);
    enter(u"Call again"_s);
    run(u"delete * from customer where custname = 'Bold'"_s);
    const QStringList before = rows(stored);
    const QString gone = u"The customer Bold is no longer in the database. Nothing has been changed."_s;
    const auto expectRefused = [&](const std::function<void()>& step) {
        messages.expectCritical(gone);
        step();
        expectIdle();
        EXPECT_EQ(rows(stored), before);
    };
    expectRefused([] { press(form(), "cmdSave"); });
    expectRefused([] { popUp(0, {Qt::Key_U, Qt::Key_Return}); });
    expectRefused([] { form().toDeleteActionForSelectedCustomer(); });
    EXPECT_FALSE(QDir(path(u"backup"_s)).exists());
}

TEST_F(ImprovementTest, aDeletionThatFailsPartWayDeletesNothing) {
    const QStringList before = rows(stored);
    list().selectAll();
    refuse(u"delete on actionplan"_s, u"old.Action = 'Visit'"_s);
    expectFault(Refused);
    form().toDeleteActionForSelectedCustomer();
    EXPECT_EQ(rows(stored), before);
}
} // namespace
