// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "tests/support/surveytest.h"

using namespace Qt::StringLiterals;

namespace {

const QDate later{2024, 4, 1};

class OrderTest : public SurveyTest {
protected:
    void move(int row, const char* button) {
        clickRow(row);
        press(frmNewSurvey::instance(), button);
        EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), QString());
        EXPECT_FALSE(cnnMain->InTransaction());
    }
    /// Reads the store as the next start of the program finds it.
    static void reopen() {
        cnnMain->Close();
        toReconnect();
    }
};

TEST_F(OrderTest, aMoveExchangesNeighboursAndTheCursorFollows) {
    struct Case {
        int row;
        const char* button;
        std::vector<int> after;
        int cursor;
        bool fails = false;
    };
    const std::vector<Case> cases = {
        {2, "cmdUpward", {1, 0, 4}, 1},   {3, "cmdUpward", {0, 4, 1}, 2},
        {1, "cmdDownward", {1, 0, 4}, 2}, {2, "cmdDownward", {0, 4, 1}, 3},
        {1, "cmdUpward", {0, 1, 4}, 1},   {4, "cmdUpward", {0, 1, 4}, 4},
        {3, "cmdDownward", {0, 1, 4}, 3}, {4, "cmdDownward", {0, 1, 4}, 4, true}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.button << " on row " << c.row);
        run(u"delete * from responquesindex"_s);
        addStored(ann, today, {0, 1, 4});
        addStored(bob, today, {1, 0});
        open();
        if (c.fails)
            messages.expectBeginning(u"Error : 1\r\n"_s);
        move(c.row, c.button);
        QStringList expected;
        for (std::size_t i = 0; i < c.after.size(); ++i)
            expected << u"05/03 %1 %2"_s.arg(i + 1).arg(c.after[i]);
        EXPECT_EQ(stored(ann), expected);
        EXPECT_EQ(stored(bob), (QStringList{u"05/03 1 1"_s, u"05/03 2 0"_s}));
        EXPECT_EQ(grid()->Row(), c.cursor);
        EXPECT_EQ(messages.left(), 0);
        frmNewSurvey::unload();
    }
}

TEST_F(OrderTest, theNeighbourMayBeAnotherSurveys) {
    struct Case {
        std::vector<int> first, second; // the survey of today, that of a later day
        QStringList after;
    };
    const std::vector<Case> cases = {
        // found in the first survey, to which the question goes over
        {{0, 1}, {2, 3}, {u"05/03 1 3"_s, u"05/03 2 0"_s, u"05/03 2 1"_s, u"01/04 1 2"_s}},
        // the same question in the same position is taken from both
        {{0, 3}, {2, 3}, {u"05/03 1 3"_s, u"05/03 2 0"_s, u"01/04 1 2"_s}}};
    for (const Case& c : cases) {
        run(u"delete * from responquesindex"_s);
        addStored(ann, today, c.first);
        addStored(ann, later, c.second);
        frmSelectSurvey::instance().dtSDate()->setValue(later);
        open();
        move(2, "cmdUpward");
        EXPECT_EQ(stored(ann), c.after);
        EXPECT_EQ(shown(), (QStringList{u"Quality: Overall?"_s, u": "_s}));
        frmNewSurvey::unload();
    }
}

TEST_F(OrderTest, withoutANeighbourNothingMoves) {
    addStored(ann, today, {0, 1});
    run(u"update responquesindex set [Order] = 4 where [Order] = 2"_s);
    open();
    const QStringList before = stored(ann);
    messages.expectBeginning(u"Error : 13\r\n"_s);
    move(1, "cmdDownward");
    EXPECT_EQ(stored(ann), before);
}

TEST_F(OrderTest, aDeletedQuestionIsSavedAsTheOneAbove) {
    addStored(ann, today, {0, 1, 4});
    open();
    run(u"delete * from questions where questionid="_s + QString::number(question[1]));
    addByButton(3);
    EXPECT_EQ(stored(ann), (QStringList{u"05/03 1 3"_s, u"05/03 2 0"_s, u"05/03 3 0"_s, u"05/03 4 4"_s}));
    EXPECT_EQ(shown()[2], u"Delivery: On time?"_s);
}

/// A second respondent's rows let an index refuse the last write of a step; what the step did before is gone.
TEST_F(OrderTest, aFailingStepLeavesTheStoreAsItWas) {
    addStored(bob, today, {0, 1, 3});
    addStored(ann, today, {4, 2, 1});
    run(u"create unique index refuses on responquesindex (questionid, [Order])"_s);
    const QStringList before = stored(ann);
    open();
    const auto fails = [&](const std::function<void()>& step) {
        messages.expectBeginning(u"Error : 19\r\nUNIQUE constraint failed"_s);
        step();
        EXPECT_EQ(messages.left(), 0);
        EXPECT_FALSE(cnnMain->InTransaction());
        reopen();
        EXPECT_EQ(stored(ann), before);
    };
    fails([&] { move(3, "cmdUpward"); });
    fails([&] {
        clickRow(3);
        addByButton(3);
    });
    EXPECT_EQ(grid()->Rows(), 6); // the added row stays in sight
    run(u"drop index refuses"_s);
    press(frmNewSurvey::instance(), "cmdRemove"); // of row 3, and the rest is saved
    EXPECT_EQ(stored(ann), before);
}

TEST_F(OrderTest, aSurveyThatCannotBeStoredIsTwoMessagesAndNoQuestionnaire) {
    addStored(bob, later, {0});
    run(u"create unique index refuses on survey (custid)"_s);
    open();
    messages.expectBeginning(u"Error : 19\r\n"_s); // of the survey row, which the save does not hear of
    messages.expectBeginning(u"Error : 1\r\n"_s);  // of the deletion without a surveyid
    addByButton(0);
    reopen();
    EXPECT_EQ(rows(u"select sdate from survey"_s), QStringList{u"01/04/2024"_s});
    EXPECT_TRUE(stored(ann).isEmpty());
}

TEST_F(OrderTest, lookups) {
    const int surveyid = addSurvey(acme, today);
    EXPECT_EQ(toGetSurveyID(u"05/03/2024"_s, u"acme"_s), QString::number(surveyid));
    EXPECT_EQ(toGetSurveyID(u"06/03/2024"_s, u"Acme"_s), QString());
    EXPECT_EQ(toGetSurveyID(u"05/03/2024"_s, u"Nobody"_s), QString());
    EXPECT_EQ(toGetRespondentID(u"Bob"_s, u"Acme"_s), QString::number(bob));
    EXPECT_EQ(toGetRespondentID(u"Bob"_s, u"Nobody"_s), QString());
}

} // namespace
