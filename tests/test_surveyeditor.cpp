// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/frmEditExistingSurvey.h"
#include "tests/support/surveytest.h"

#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>

namespace {
const QDate later{2024, 4, 1};

void drop(QWidget* target, const QMimeData* carried) {
    QDragEnterEvent enter({20, 20}, Qt::CopyAction, carried, Qt::LeftButton, {});
    QApplication::sendEvent(target, &enter);
    EXPECT_TRUE(target->acceptDrops() && enter.isAccepted());
    QDropEvent end({20, 20}, Qt::CopyAction, carried, Qt::LeftButton, {});
    QApplication::sendEvent(target, &end);
}

/// Drags the node at that point of the tree by mouse to the target, or elsewhere if there is none.
void dragNode(forms::TreeView* tree, const QPoint& node, QWidget* target) {
    const Replaced<forms::TreeView::dragHook> carries([target](QDrag& carried) {
        if (target)
            drop(target, carried.mimeData());
    });
    QWidget* source = tree->viewport();
    QTest::mousePress(source, Qt::LeftButton, {}, node);
    for (const int far : {10, 30}) {
        const QPoint at = node + QPoint(far, far);
        QMouseEvent move(QEvent::MouseMove, at, source->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(source, &move);
    }
    QTest::mouseRelease(source, Qt::LeftButton, {}, node);
}

struct EditorTest : SurveyTest {
    static frmSelectSurvey& select() {
        frmSelectSurvey& form = show<frmSelectSurvey>();
        return form;
    }
    void expectQuestion(Answer answer) {
        messages.expectTitled(
            u"Survey already exists for Selected Survey Date,Customer and Respondent....\r\n"
            "Do you wish to Edit the same Survey....Press 'Yes' to continue"_s,
            style::yesNo + style::information, answer);
    }
    enum Gesture { Button, DoubleClick, Enter, Drag };

    static void add(Gesture gesture, int number) {
        const QPoint at = nodeAt(number);
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, at);
        if (gesture == Button)
            press(frmNewSurvey::instance(), "cmdAdd");
        else if (gesture == DoubleClick)
            QTest::mouseDClick(tree()->viewport(), Qt::LeftButton, {}, at);
        else if (gesture == Enter)
            QTest::keyClick(tree(), Qt::Key_Return);
        else
            dragNode(tree(), at, grid()->viewport());
    }
    void move(int row, const char* button) {
        clickRow(row);
        press(frmNewSurvey::instance(), button);
        expectIdle();
    }
};

TEST_F(EditorTest, anOpenEditorKeepsItsOwnerAndWithoutACustomerNothingIsWritten) {
    addRespondent(addCustomer(u"Bolt"_s), u"Carl"_s);
    frmSelectSurvey& form = select();
    form.cmbCustomer()->setListIndex(1);
    press(form, "cmdBlankSurvey");
    form.cmbCustomer()->setListIndex(0);
    press(form, "cmdBlankSurvey");
    EXPECT_EQ(control<QLabel>(frmNewSurvey::instance(), "lblRespondentName")->text(), u"Carl"_s);
    run(u"delete * from customer"_s);
    frmSelectSurvey::unload();
    frmNewSurvey::unload();
    press(select(), "cmdBlankSurvey");
    messages.expectCritical(u"No customer is selected. Nothing has been changed."_s);
    press(frmNewSurvey::instance(), "cmdRemove");
    EXPECT_EQ(value(u"select count(*) from survey"_s), u"0"_s);
}

TEST_F(EditorTest, asksBeforeAnExistingQuestionnaireIsEdited) {
    addStored(ann, today, {0});
    const std::tuple<int, bool, std::optional<Answer>, int> cases[] = {
        // respondent, pasted before, answer to the question, rows of the editor
        {0, false, Answer::No, 0},
        {0, false, Answer::Yes, 3},
        {0, true, {}, 3},
        {1, false, {}, 2}};
    for (const auto& [respondent, pasted, answer, shownRows] : cases) {
        frmSelectSurvey& form = select();
        form.lstRespondent()->setListIndex(respondent);
        blnSurveyPasted = pasted;
        if (answer)
            expectQuestion(*answer);
        press(form, "cmdBlankSurvey");
        EXPECT_FALSE(blnSurveyPasted);
        expectIdle();
        EXPECT_EQ(frmNewSurvey::loaded() ? grid()->Rows() : 0, shownRows);
        frmNewSurvey::unload();
    }
    run(u"drop view existingsurvey"_s); // a look-up that fails counts as existing
    expectFault(NoTable);
    expectQuestion(Answer::No);
    press(select(), "cmdBlankSurvey");
}

TEST_F(EditorTest, eachGestureInsertsAtTheTopAndSkipsDuplicatesAndParameters) {
    open();
    for (const auto& [gesture, number] : {std::pair(Button, 0), {DoubleClick, 1}, {Enter, 2}, {Drag, 4}}) {
        add(gesture, number);
        expectIdle();
        add(gesture, number);
        add(gesture, -1);
    }
    QWidget& twin = frmEditExistingSurvey::instance(); // on the same questionnaire
    dragNode(tree(), nodeAt(3), control<forms::MSHFlexGrid>(twin, "grdParamAndQuest")->viewport());
    QMimeData ofAnotherProgram;
    ofAnotherProgram.setData(QLatin1StringView(forms::TreeView::nodeMimeType), "x");
    drop(grid()->viewport(), &ofAnotherProgram);
    dragNode(tree(), nodeAt(3), nullptr);
    EXPECT_EQ(stored(ann), u"05/03 1:4 2:2 3:1 4:0"_s);
}

TEST_F(EditorTest, removing) {
    enum How { ByButton, OnRow, OnHead, OnGround };
    const QString both = u"05/03 1:0 2:1"_s;
    const std::tuple<std::vector<int>, int, How, QString> cases[] = {
        // questions before, current row
        {{0, 3, 1}, 2, ByButton, both}, {{0, 3, 1}, 2, OnRow, both}, {{0}, 1, ByButton, {}},
        {{0, 1}, 3, OnRow, both},       {{0, 1}, 1, OnHead, both},   {{0, 1}, 1, OnGround, both},
        {{}, 1, ByButton, {}}};
    for (const auto& [before, row, how, after] : cases) {
        SCOPED_TRACE(testing::Message() << testing::PrintToString(before) << " by " << how);
        run(u"delete * from responquesindex"_s);
        addStored(ann, today, before);
        open();
        clickRow(row);
        QWidget* cells = grid()->viewport();
        if (how == ByButton)
            press(frmNewSurvey::instance(), "cmdRemove");
        else
            QTest::mouseDClick(how == OnHead ? grid()->horizontalHeader()->viewport() : cells, Qt::LeftButton,
                               {}, how == OnGround ? cells->rect().bottomLeft() + QPoint(5, -5) : rowAt(row));
        EXPECT_EQ(stored(ann), after);
        expectIdle();
        frmNewSurvey::unload();
    }
}

TEST_F(EditorTest, aMoveExchangesNeighboursAndTheCursorFollows) {
    const std::vector<std::tuple<int, const char*, const char*, int>> cases = {
        {3, "cmdUpward", "1:0 2:4 3:1", 2},   {1, "cmdDownward", "1:1 2:0 3:4", 2},
        {1, "cmdUpward", "1:0 2:1 3:4", 1},   {4, "cmdUpward", "1:0 2:1 3:4", 4},
        {3, "cmdDownward", "1:0 2:1 3:4", 3}, {4, "cmdDownward", "1:0 2:1 3:4", 4}};
    for (const auto& [row, button, after, cursor] : cases) {
        SCOPED_TRACE(testing::Message() << button << " on row " << row);
        run(u"delete * from responquesindex"_s);
        addStored(ann, today, {0, 1, 4});
        addStored(bob, today, {1, 0});
        open();
        if (row == 4 && QLatin1StringView(button) == "cmdDownward"_L1)
            expectFault(Incomplete);
        move(row, button);
        EXPECT_EQ(stored(ann), u"05/03 "_s + QLatin1StringView(after));
        EXPECT_EQ(stored(bob), u"05/03 1:1 2:0"_s);
        EXPECT_EQ(grid()->Row(), cursor);
        frmNewSurvey::unload();
    }
}

TEST_F(EditorTest, theNeighbourMayBeAnotherSurveysOrMissing) {
    const std::pair<std::vector<int>, QString> cases[] = {
        // found in the first survey, which gets the question
        {{0, 1}, u"05/03 1:3 2:0 2:1 01/04 1:2"_s},
        // the same question in the same position is removed from both
        {{0, 3}, u"05/03 1:3 2:0 01/04 1:2"_s}};
    for (const auto& [ofToday, after] : cases) {
        run(u"delete * from responquesindex"_s);
        addStored(ann, today, ofToday);
        addStored(ann, later, {2, 3});
        frmSelectSurvey::instance().dtSDate()->setValue(later);
        open();
        move(2, "cmdUpward");
        EXPECT_EQ(stored(ann), after);
        frmNewSurvey::unload();
    }
    run(u"delete * from responquesindex"_s);
    addStored(ann, later, {0, 1});
    run(u"update responquesindex set [Order] = 6"_s); // as after a copy
    open();
    for (const auto& [row, button] : {std::pair(1, "cmdDownward"), {2, "cmdUpward"}}) {
        messages.expectCritical(u"The questions are not numbered one after the other. Add or remove a "
                                "question, which numbers them anew, and then move this one."_s);
        move(row, button);
        EXPECT_EQ(stored(ann), u"01/04 6:0 6:1"_s);
    }
}

TEST_F(EditorTest, aDeletedQuestionIsSavedAsTheOneAbove) {
    addStored(ann, today, {0, 1, 4});
    open();
    dropQuestion(1);
    addByButton(3);
    EXPECT_EQ(stored(ann), u"05/03 1:3 2:0 3:0 4:4"_s);
    dropQuestion(2);
    messages.expectCritical(u"No longer in the catalogue and not added:\r\nOverall? (Quality)"_s);
    addByButton(2); // no question above
    EXPECT_EQ(stored(ann), u"05/03 1:3 2:0 3:0 4:4"_s);
    dropQuestion(3);
    messages.expectCritical(
        u"The question Sturdy? (Quality) is no longer in the catalogue. Nothing has been changed."_s);
    move(1, "cmdDownward");
    EXPECT_EQ(stored(ann), u"05/03 1:3 2:0 3:0 4:4"_s);
}

TEST_F(EditorTest, nothingIsWrittenForADeletedOwner) {
    addStored(ann, today, {0, 1});
    const std::function<void()> steps[] = {[] { addByButton(3); },
                                           [] { press(frmNewSurvey::instance(), "cmdRemove"); },
                                           [this] { move(1, "cmdDownward"); }};
    for (const QString& name : {u"Acme"_s, u"Ann"_s}) {
        for (const auto& step : steps) {
            open();
            withoutOwner(name, step);
            EXPECT_EQ(grid()->Rows(), 2) << "as stored";
            frmNewSurvey::unload();
        }
    }
}

TEST_F(EditorTest, aLockedStoreShowsOneMessageAndLosesNoQuestionnaire) {
    addStored(ann, today, {0, 1});
    open();
    whileLocked([] { frmNewSurvey::instance().toRefreshGrid(); });
    for (const char* command : {"cmdRemove", "cmdDownward"}) {
        press(frmNewSurvey::instance(), command); // the stored state is unknown: reads it again
        EXPECT_EQ(stored(ann), u"05/03 1:0 2:1"_s);
        whileLocked([] { frmNewSurvey::instance().toRefreshGrid(); });
    }
    addByButton(3);
    EXPECT_EQ(stored(ann), u"05/03 1:3 2:0 3:1"_s);
}

/// An index rejects the last write of a step because of another respondent's rows; the whole step is undone.
TEST_F(EditorTest, aFailingStepLeavesTheStoreAsItWas) {
    addStored(bob, today, {0, 1, 3});
    addStored(ann, today, {4, 2, 1});
    run(u"create unique index refuses on responquesindex (questionid, [Order])"_s);
    open();
    const auto expectFailure = [&](const std::function<void()>& step, const QString& before) {
        expectFault(Duplicate);
        step();
        expectIdle();
        cnnMain->Close(); // as after a restart
        reconnect();
        EXPECT_EQ(stored(ann), before);
    };
    expectFailure([&] { move(3, "cmdUpward"); }, u"05/03 1:4 2:2 3:1"_s);
    clickRow(3);
    expectFailure([] { addByButton(3); }, u"05/03 1:4 2:2 3:1"_s);
    run(u"drop index refuses"_s + (cnnMain->IsFile() ? u""_s : u" on responquesindex"_s));
    addByButton(3); // does not count as chosen
    EXPECT_EQ(stored(ann), u"05/03 1:4 2:2 3:3 4:1"_s);
    EXPECT_EQ(stored(bob), u"05/03 1:0 2:1 3:3"_s);
    EXPECT_EQ(grid()->Row(), 1);
}
} // namespace
