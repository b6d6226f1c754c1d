// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "tests/support/surveytest.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace {

class EditorTest : public SurveyTest {
protected:
    enum Gesture { Button, DoubleClick, Enter, Drag };

    static void add(Gesture gesture, int number) {
        clickNode(number);
        if (gesture == Button)
            press(frmNewSurvey::instance(), "cmdAdd");
        else if (gesture == DoubleClick)
            QTest::mouseDClick(tree()->viewport(), Qt::LeftButton, {}, nodeAt(number));
        else if (gesture == Enter)
            QTest::keyClick(tree(), Qt::Key_Return);
        else
            drag(number, true);
    }

    static void drag(int number, bool toGrid) {
        forms::TreeView::dragSeat = [toGrid](QDrag& carried) {
            if (!toGrid)
                return;
            QWidget* target = grid()->viewport();
            QDragEnterEvent enter({20, 20}, Qt::CopyAction, carried.mimeData(), Qt::LeftButton, {});
            QApplication::sendEvent(target, &enter);
            EXPECT_TRUE(target->acceptDrops() && enter.isAccepted());
            QDropEvent drop({20, 20}, Qt::CopyAction, carried.mimeData(), Qt::LeftButton, {});
            QApplication::sendEvent(target, &drop);
        };
        QWidget* source = tree()->viewport();
        QTest::mousePress(source, Qt::LeftButton, {}, nodeAt(number));
        for (const int far : {10, 30}) {
            const QPoint at = nodeAt(number) + QPoint(far, far);
            QMouseEvent move(QEvent::MouseMove, at, source->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                             {});
            QApplication::sendEvent(source, &move);
        }
        QTest::mouseRelease(source, Qt::LeftButton, {}, nodeAt(number));
    }

    static void expectAtRest() {
        EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), QString());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
};

TEST_F(EditorTest, eachGestureInsertsAtTheTopAndDoublesAndParametersAreLeftOut) {
    frmNewSurvey& form = open();
    EXPECT_EQ(form.Caption(), u"New Survey"_s);
    EXPECT_EQ(tree()->topLevelItem(1)->text(0), u"Quality"_s);
    const std::vector<std::pair<Gesture, int>> steps = {{Button, 0}, {DoubleClick, 1}, {Enter, 2}, {Drag, 4}};
    for (const auto& [gesture, number] : steps) {
        add(gesture, number);
        expectAtRest();
        EXPECT_TRUE(grid()->hasFocus()) << gesture;
    }
    const QStringList chosen{u"Quality: What else?"_s, u"Quality: Overall?"_s, u"Delivery: Overall?"_s,
                             u"Delivery: On time?"_s, u": "_s};
    EXPECT_EQ(shown(), chosen);
    for (const auto& [gesture, number] : steps) {
        add(gesture, number);
        add(gesture, -1);
        expectAtRest();
    }
    drag(3, false);
    EXPECT_EQ(shown(), chosen);
    EXPECT_EQ(stored(ann), (QStringList{u"05/03 1 4"_s, u"05/03 2 2"_s, u"05/03 3 1"_s, u"05/03 4 0"_s}));
}

TEST_F(EditorTest, withoutAChosenNodeEachGestureAsksForOne) {
    frmNewSurvey& form = open();
    const auto each = {+[](frmNewSurvey& editor) { press(editor, "cmdAdd"); },
                       +[](frmNewSurvey&) { QTest::keyClick(tree(), Qt::Key_Enter); },
                       +[](frmNewSurvey&) {
                           QTest::mouseDClick(tree()->viewport(), Qt::LeftButton, {},
                                              tree()->viewport()->rect().bottomRight());
                       }};
    for (const auto& gesture : each) {
        messages.expect(u"Select a Question to add"_s, 16, u"Gaugewell v2.1"_s);
        gesture(form);
        EXPECT_EQ(messages.left(), 0);
        EXPECT_TRUE(tree()->hasFocus());
        expectAtRest();
    }
    EXPECT_TRUE(rows(u"select * from survey"_s).isEmpty());
}

TEST_F(EditorTest, aQuestionGoesInAtTheCurrentRow) {
    addStored(ann, today, {0, 1});
    open();
    clickRow(2);
    addByButton(2);
    EXPECT_EQ(stored(ann), (QStringList{u"05/03 1 0"_s, u"05/03 2 2"_s, u"05/03 3 1"_s}));
    EXPECT_EQ(grid()->Row(), 1);
    clickRow(4); // the blank row
    addByButton(3);
    EXPECT_EQ(stored(ann), (QStringList{u"05/03 1 0"_s, u"05/03 2 2"_s, u"05/03 3 1"_s, u"05/03 4 3"_s}));
}

TEST_F(EditorTest, fromSixQuestionsOnTheEndIsInView) {
    const int price = addParameter(u"Price"_s);
    for (const char* text : {"a", "b", "c", "d", "e", "f"})
        addQuestion(price, QString::fromLatin1(text));
    open();
    grid()->setFixedHeight(100);
    for (int i = 0; i < 6; ++i) {
        tree()->setCurrentItem(tree()->findItems(u"Price"_s, Qt::MatchExactly).value(0)->child(i));
        press(frmNewSurvey::instance(), "cmdAdd");
        EXPECT_EQ(grid()->TopRow() > 1, i == 5) << i;
    }
    EXPECT_TRUE(grid()->viewport()->rect().contains(rowAt(grid()->Rows() - 1)));
}

TEST_F(EditorTest, removing) {
    enum How { ByButton, OnRow, OnHead, OnGround };
    struct Case {
        std::vector<int> before;
        int row; // the current one
        How how;
        QStringList after;
    };
    const QStringList both{u"05/03 1 0"_s, u"05/03 2 1"_s};
    const std::vector<Case> cases = {
        {{0, 3, 1}, 2, ByButton, both}, {{0, 3, 1}, 2, OnRow, both}, {{0, 1, 4}, 3, OnRow, both},
        {{0}, 1, ByButton, {}},         {{0}, 1, OnRow, {}},         {{0, 1}, 3, ByButton, both},
        {{0, 1}, 3, OnRow, both},       {{0, 1}, 1, OnHead, both},   {{0, 1}, 1, OnGround, both},
        {{}, 1, ByButton, {}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << &c - cases.data());
        run(u"delete * from responquesindex"_s);
        addStored(ann, today, c.before);
        frmNewSurvey& form = open();
        clickRow(c.row);
        QWidget* cells = grid()->viewport();
        if (c.how == ByButton)
            press(form, "cmdRemove");
        else if (c.how == OnRow)
            QTest::mouseDClick(cells, Qt::LeftButton, {}, rowAt(c.row));
        else if (c.how == OnHead)
            QTest::mouseDClick(grid()->horizontalHeader()->viewport(), Qt::LeftButton, {}, {90, 5});
        else
            QTest::mouseDClick(cells, Qt::LeftButton, {}, cells->rect().bottomLeft() + QPoint(5, -5));
        EXPECT_EQ(stored(ann), c.after);
        EXPECT_EQ(grid()->Rows(), c.after.size() + 2);
        EXPECT_EQ(rows(u"select custid from survey"_s), QStringList{QString::number(acme)});
        expectAtRest();
        frmNewSurvey::unload();
    }
}

TEST_F(EditorTest, respondentsOfADateShareTheSurveyButNotTheQuestions) {
    for (const int respondent : {0, 1}) {
        open(respondent);
        addByButton(respondent + 2);
        addByButton(respondent);
        frmNewSurvey::unload();
    }
    EXPECT_EQ(stored(ann), (QStringList{u"05/03 1 0"_s, u"05/03 2 2"_s}));
    EXPECT_EQ(stored(bob), (QStringList{u"05/03 1 1"_s, u"05/03 2 3"_s}));
    EXPECT_EQ(rows(u"select sdate from survey"_s), QStringList{u"05/03/2024"_s});
}

TEST_F(EditorTest, anAddressOfNobodyStoresNothing) {
    run(u"delete * from respondent"_s);
    open();
    addByButton(0);
    EXPECT_EQ(shown(), (QStringList{u"Delivery: On time?"_s, u": "_s})); // the grid stays as it was
    EXPECT_TRUE(rows(u"select * from responquesindex"_s).isEmpty());
}

} // namespace
