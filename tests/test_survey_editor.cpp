// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "tests/support/drag.h"
#include "tests/support/surveytest.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace {

class EditorTest : public SurveyTest {
protected:
    static constexpr int nowhere = -2;
    enum Gesture { Button, DoubleClick, Enter, Drag };

    static void add(Gesture gesture, int number) {
        const QPoint at = number == nowhere ? tree()->viewport()->rect().bottomRight() : nodeAt(number);
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, at);
        if (gesture == Button)
            press(frmNewSurvey::instance(), "cmdAdd");
        else if (gesture == DoubleClick)
            QTest::mouseDClick(tree()->viewport(), Qt::LeftButton, {}, at);
        else if (gesture == Enter)
            QTest::keyClick(tree(), Qt::Key_Return);
        else
            drag(number, true);
    }

    static void drag(int number, bool toGrid) {
        dragNode(tree(), nodeAt(number), toGrid ? grid()->viewport() : nullptr);
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
    EXPECT_EQ(stored(ann), u"05/03 1:4 2:2 3:1 4:0"_s);
}

TEST_F(EditorTest, withoutAChosenNodeEachGestureAsksForOne) {
    open();
    for (const Gesture gesture : {Button, DoubleClick, Enter}) {
        messages.expect(u"Select a Question to add"_s, 16, u"Gaugewell v2.1"_s);
        add(gesture, nowhere);
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
    EXPECT_EQ(stored(ann), u"05/03 1:0 2:2 3:1"_s);
    EXPECT_EQ(grid()->Row(), 1);
    clickRow(4); // the blank row
    addByButton(3);
    EXPECT_EQ(stored(ann), u"05/03 1:0 2:2 3:1 4:3"_s);
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
        QString after;
    };
    const QString both = u"05/03 1:0 2:1"_s;
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
        const QPoint ground = cells->rect().bottomLeft() + QPoint(5, -5);
        if (c.how == ByButton)
            press(form, "cmdRemove");
        else
            QTest::mouseDClick(c.how == OnHead ? grid()->horizontalHeader()->viewport() : cells,
                               Qt::LeftButton, {}, c.how == OnGround ? ground : rowAt(c.row));
        EXPECT_EQ(stored(ann), c.after);
        EXPECT_EQ(grid()->Rows(), 2 + c.after.count(u':'));
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
    EXPECT_EQ(stored(ann), u"05/03 1:0 2:2"_s);
    EXPECT_EQ(stored(bob), u"05/03 1:1 2:3"_s);
    EXPECT_EQ(rows(u"select surveyid from survey"_s), QStringList{toGetSurveyID(u"05/03/2024"_s, u"acme"_s)});
    EXPECT_EQ(toGetRespondentID(u"Bob"_s, u"Acme"_s), QString::number(bob));
    EXPECT_EQ(toGetRespondentID(u"Bob"_s, u"Nobody"_s), QString());
}

} // namespace
