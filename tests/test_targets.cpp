// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmTargets.h"
#include "reference/frmCustomer.h"
#include "tests/support/changedrows.h"
#include "tests/support/storetest.h"

#include <QTableWidget>

namespace {
struct TargetsTest : StoreTest {
    void SetUp() override {
        StoreTest::SetUp();
        addCustomer(u"Acme"_s);
        addCustomer(u"Brown"_s);
        for (const QString& name : {u"Delivery"_s, u"Price"_s, u"Quality"_s})
            addParameter(name);
        run(u"insert into target (paramid, custid, target) values (1, null, 7.35), (2, 1, 6), (2, 2, 5)"_s);
        form().Show();
    }
    static frmTargets& form() { return frmTargets::instance(); }
    static QTableWidget& grid() { return *control<QTableWidget>(form(), "grdTargets"); }
    static forms::ComboBox& customers() { return *control<forms::ComboBox>(form(), "cmbCustomer"); }
    /// Types into the target of a row, from 0.
    static void enter(int row, const QString& text, bool isEnded = true) {
        grid().setCurrentCell(row, 1);
        grid().setFocus();
        key(Qt::Key_F2);
        key(Qt::Key_A, Qt::ControlModifier);
        key(Qt::Key_Delete);
        type(text);
        if (isEnded)
            key(Qt::Key_Return);
    }
    /// The targets on show, and those for all customers.
    static QStringList shown(int column = 1) {
        QStringList texts;
        for (int row = 0; row < grid().rowCount(); ++row)
            texts << grid().item(row, column)->text();
        return texts;
    }
    static QStringList stored() {
        return rows(u"select paramid, custid, target from target order by paramid, custid, target"_s);
    }
    void expectLoss(Answer answer) {
        messages.expectAsked(u"Targets have been changed and not saved. Give up these changes?"_s, answer);
    }
};

TEST_F(TargetsTest, eachChoiceHasItsOwn) {
    EXPECT_EQ(shown(), (QStringList{u"7.35"_s, {}, {}}));
    EXPECT_TRUE(grid().isColumnHidden(2));
    customers().setListIndex(1);
    EXPECT_EQ(shown(), (QStringList{{}, u"6.00"_s, {}}));
    EXPECT_EQ(shown(2), (QStringList{u"7.35"_s, {}, {}}));
    EXPECT_FALSE(grid().isColumnHidden(2));
    enter(0, u"8,5"_s);
    enter(1, {});
    enter(2, u" 10 "_s, false);
    key(Qt::Key_S, Qt::AltModifier); // takes what is being typed
    EXPECT_EQ(stored(), (QStringList{u"1||7.35"_s, u"1|1|8.5"_s, u"2|2|5"_s, u"3|1|10"_s}));
    EXPECT_EQ(shown(), (QStringList{u"8.50"_s, {}, u"10.00"_s}));
    expectIdle();
}

TEST_F(TargetsTest, whatIsNoTargetIsRefused) {
    const QStringList before = stored();
    for (const QString& text : {u"11"_s, u"10.01"_s, u"7.123"_s, u"-1"_s, u"high"_s, u"."_s, u"1e1"_s}) {
        enter(1, text);
        messages.expectCritical(u"“%1” is no target of Price: a target is a number from 0 to 10 with two "
                                "decimals at most. Nothing has been saved."_s.arg(text));
        press(form(), "cmdSave");
        EXPECT_EQ(grid().currentRow(), 1);
    }
    EXPECT_EQ(stored(), before);
    enter(1, {}); // as it was
    EXPECT_TRUE(form().Unload());
}

TEST_F(TargetsTest, changesAreNotLostUnasked) {
    enter(2, u"4"_s, false);
    key(Qt::Key_Escape); // takes back the typing only
    EXPECT_EQ(shown().last(), QString());
    enter(2, u"4"_s);
    expectLoss(Answer::No);
    customers().setListIndex(2);
    EXPECT_EQ(customers().ListIndex(), 0);
    expectLoss(Answer::No);
    key(Qt::Key_Escape);
    EXPECT_EQ(shown().last(), u"4"_s);
    expectLoss(Answer::Yes);
    customers().setListIndex(2);
    EXPECT_EQ(shown(), (QStringList{{}, u"5.00"_s, {}}));
    enter(0, u"0"_s, false);
    expectLoss(Answer::Yes);
    press(form(), "cmdClose");
    EXPECT_EQ(frmTargets::loaded(), nullptr);
    EXPECT_EQ(stored().size(), 3);
}

TEST_F(TargetsTest, theListHasTheCustomersAndTheOneOnShow) {
    withoutTable(u"target"_s, [] { customers().setListIndex(1); });
    EXPECT_EQ(QStringList(customers().Text()) << shown()[0], (QStringList{u"All customers"_s, u"7.35"_s}))
        << "the choice without its targets";
    customers().setListIndex(1);
    enter(2, u"4"_s);
    const auto activate = [](const QString& change) -> QString {
        frmCustomer::instance().Show();
        run(change);
        form().Show();
        return customers().Text() + u'|' + shown().last() + u'|' + QString::number(customers().ListCount());
    };
    EXPECT_EQ(activate(u"insert into customer (custname) values ('Clark')"_s), u"Acme|4|4"_s);
    EXPECT_EQ(activate(u"delete * from customer where custid=1"_s), u"Acme|4|4"_s);
    enter(2, {});
    EXPECT_EQ(activate(u"delete * from customer where custid=2"_s), u"All customers||2"_s);
}

TEST_F(TargetsTest, aFileThatCouldNotBeUpgradedHasNone) {
    if (!cnnMain->IsFile())
        GTEST_SKIP() << "a server's store of version 1 is refused";
    EXPECT_EQ(targetsThatHold(u"Acme"_s, {u"Delivery"_s, u"Price"_s}),
              (std::map<QString, double>{{u"delivery"_s, 7.35}, {u"price"_s, 6}}));
    frmTargets::unload();
    runRaw(u"pragma user_version = 1"_s);
    messages.expectCritical(u"This database could not be updated to this version of the program: it takes no "
                            "targets. See the help, topic Targets."_s);
    form().Show();
    press(form(), "cmdSave");
    EXPECT_TRUE(targetsThatHold(u"Acme"_s, {u"Delivery"_s}).empty());
}

TEST_F(TargetsTest, ofTwoUsersEachWritesTheirOwnChanges) {
    ChangedRows changed;
    const QString adds = u"insert into target values (1, 1, %1)"_s;
    const struct {
        const char* about;
        QString others;
        Keep answer;
        bool isAsked;
        QString stored; ///< those of Acme
    } cases[] = {
        {"another parameter", u"update target set target=9 where paramid=2 and custid=1"_s, Keep::Both, false,
         u"1|8 2|9"_s},
        {"the same target", adds.arg(8), Keep::Both, false, u"1|8 2|6"_s},
        {"another target", adds.arg(3), Keep::Both, true, u"1|3 2|6"_s},
        {"theirs", adds.arg(3), Keep::Stored, true, u"1|3 2|6"_s},
        {"mine", adds.arg(3), Keep::Mine, true, u"1|8 2|6"_s},
        {"no parameter", u"delete * from parameter where paramid=1"_s, Keep::Both, false, u"2|6"_s},
    };
    customers().setListIndex(1);
    for (const auto& given : cases) {
        SCOPED_TRACE(given.about);
        enter(0, u"8"_s);
        run(given.others);
        changed.answer = given.answer;
        changed.asked.clear();
        press(form(), "cmdSave");
        EXPECT_EQ(changed.asked.size(), given.isAsked ? 1U : 0U);
        EXPECT_EQ(rows(u"select paramid, target from target where custid=1 order by paramid"_s).join(u' '),
                  given.stored);
        expectIdle();
        run(u"delete * from target where custid=1"_s);
        run(u"insert into target (paramid, custid, target) values (2, 1, 6)"_s);
        if (given.isAsked && given.answer == Keep::Both)
            expectLoss(Answer::Yes);
        customers().setListIndex(0);
        customers().setListIndex(1);
    }
    enter(0, u"1"_s);
    run(u"delete * from customer where custid=1"_s);
    messages.expectCritical(u"The customer has been deleted meanwhile. Nothing has been saved."_s);
    press(form(), "cmdSave");
    expectLoss(Answer::Yes);
    customers().setListIndex(0);
    EXPECT_EQ(stored().size(), 3);
}
} // namespace
