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
};

TEST_F(OrderTest, aMoveExchangesNeighboursAndTheCursorFollows) {
    struct Case {
        int row;
        const char* button;
        const char* after;
        int cursor;
        bool fails = false;
    };
    const std::vector<Case> cases = {
        {2, "cmdUpward", "1:1 2:0 3:4", 1},   {3, "cmdUpward", "1:0 2:4 3:1", 2},
        {1, "cmdDownward", "1:1 2:0 3:4", 2}, {2, "cmdDownward", "1:0 2:4 3:1", 3},
        {1, "cmdUpward", "1:0 2:1 3:4", 1},   {4, "cmdUpward", "1:0 2:1 3:4", 4},
        {3, "cmdDownward", "1:0 2:1 3:4", 3}, {4, "cmdDownward", "1:0 2:1 3:4", 4, true}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.button << " on row " << c.row);
        run(u"delete * from responquesindex"_s);
        addStored(ann, today, {0, 1, 4});
        addStored(bob, today, {1, 0});
        open();
        if (c.fails)
            messages.expectBeginning(u"Error : 1\r\n"_s);
        move(c.row, c.button);
        EXPECT_EQ(stored(ann), u"05/03 "_s + QString::fromLatin1(c.after));
        EXPECT_EQ(stored(bob), u"05/03 1:1 2:0"_s);
        EXPECT_EQ(grid()->Row(), c.cursor);
        EXPECT_EQ(messages.left(), 0);
        frmNewSurvey::unload();
    }
}

TEST_F(OrderTest, theNeighbourMayBeAnotherSurveys) {
    struct Case {
        std::vector<int> first, second; // the survey of today, that of a later day
        QString after;
    };
    const std::vector<Case> cases = {// found in the first survey, to which the question goes over
                                     {{0, 1}, {2, 3}, u"05/03 1:3 2:0 2:1 01/04 1:2"_s},
                                     // the same question in the same position is taken from both
                                     {{0, 3}, {2, 3}, u"05/03 1:3 2:0 01/04 1:2"_s}};
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
    const QString before = stored(ann);
    messages.expectBeginning(u"Error : 13\r\n"_s);
    move(1, "cmdDownward");
    EXPECT_EQ(stored(ann), before);
}

TEST_F(OrderTest, aDeletedQuestionIsSavedAsTheOneAbove) {
    addStored(ann, today, {0, 1, 4});
    open();
    run(u"delete * from questions where questionid="_s + QString::number(question[1]));
    addByButton(3);
    EXPECT_EQ(stored(ann), u"05/03 1:3 2:0 3:0 4:4"_s);
    EXPECT_EQ(shown()[2], u"Delivery: On time?"_s);
}

/// A second respondent's rows let an index refuse the last write of a step; what the step did before is gone.
TEST_F(OrderTest, aFailingStepLeavesTheStoreAsItWas) {
    addStored(bob, today, {0, 1, 3});
    addStored(ann, today, {4, 2, 1});
    run(u"create unique index refuses on responquesindex (questionid, [Order])"_s);
    const QString before = stored(ann);
    open();
    const auto fails = [&](const std::function<void()>& step) {
        messages.expectBeginning(u"Error : 19\r\nUNIQUE constraint failed"_s);
        step();
        EXPECT_EQ(messages.left(), 0);
        EXPECT_FALSE(cnnMain->InTransaction());
        cnnMain->Close(); // the store as the next start of the program finds it
        toReconnect();
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
    EXPECT_EQ(rows(u"select sdate from survey"_s), QStringList{u"01/04/2024"_s});
    EXPECT_EQ(stored(ann), QString());
}

} // namespace
