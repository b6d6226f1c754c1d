// SPDX-License-Identifier: GPL-3.0-or-later
// From an empty store to the Satisfaction Index, by keys and clicks only.
#include "analysis/frmSatisfactionIndex.h"
#include "core/MDIMain.h"
#include "feedback/frmFeedBackObj.h"
#include "platform/chart/mschart.h"
#include "platform/forms/lists.h"
#include "platform/forms/treeview.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "survey/frmNewSurvey.h"
#include "survey/frmSelectSurvey.h"
#include "tests/support/drag.h"
#include "tests/support/gridform.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace {

using RoadTest = StoreTest;

void typeRow(const QStringList& cells) {
    for (const QString& cell : cells) {
        type(cell);
        key(Qt::Key_Return);
    }
}

void enterDate(QWidget& form, const char* picker, const QString& digits) {
    control<QWidget>(form, picker)->setFocus(Qt::TabFocusReason); // as the Tab key comes: the day is selected
    type(digits);
    key(Qt::Key_Tab);
}

void typeCustomers() {
    shortcut(Qt::Key_U);
    typeRow({u"Acme"_s, u"1 High Street"_s, u"555"_s, u"post@acme.example"_s});
    typeRow({u"Bolt's Garage"_s, u""_s, u""_s, u""_s});
    frmCustomer& form = frmCustomer::instance();
    const EditedGrid customers(form, "grdCustomerDtls", "txtCustomerDtls");
    const EditedGrid respondents(form, "grdRespondentDtls", "txtRespondentDtls");
    customers.click(2, 1);
    respondents.click(1, 1);
    typeRow({u"Zoë"_s, u"Owner"_s, u""_s});
    customers.click(1, 1);
    respondents.click(1, 1);
    typeRow({u"Ann"_s, u"Buyer"_s, u"ann@acme.example"_s});
    typeRow({u"Bob"_s, u"Director"_s, u""_s});
}

void typeCatalogue() {
    shortcut(Qt::Key_P);
    typeRow({u"Delivery"_s, u"Price"_s});
    frmParameter& form = frmParameter::instance();
    const EditedGrid parameters(form, "grdParameterDtls", "txtParameterDtls");
    const EditedGrid questions(form, "grdQuestionDtls", "txtQuestionDtls");
    parameters.click(1, 1);
    questions.click(1, 1);
    typeRow({u"On time?"_s, u"s"_s, u"Undamaged?"_s, u"s"_s, u"What else?"_s});
    type(u"d"_s);
    press(form, "cmdSaveQuestion");
    parameters.click(2, 1);
    questions.click(1, 1);
    typeRow({u"Fair?"_s});
    type(u"s"_s);
    press(form, "cmdSaveQuestion");
    key(Qt::Key_Escape);
}

/// Each question is put in at the top.
void composeByFourGestures() {
    frmNewSurvey& editor = frmNewSurvey::instance();
    auto* tree = control<forms::TreeView>(editor, "trvParameter");
    auto* grid = control<forms::MSHFlexGrid>(editor, "grdParamAndQuest");
    tree->setFocus();
    key(Qt::Key_Asterisk);
    tree->expandAll();
    const auto node = [&](int parameter, int question) {
        return tree->visualItemRect(tree->topLevelItem(parameter)->child(question)).center();
    };
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, node(0, 0));
    press(editor, "cmdAdd");
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, node(0, 1));
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, node(1, 0));
    tree->setFocus();
    key(Qt::Key_Return);
    dragNode(tree, node(0, 2), grid->viewport());
    ASSERT_EQ(grid->Rows(), 6);
}

/// The price question goes back up to the top.
void reorder() {
    auto* grid = control<forms::MSHFlexGrid>(frmNewSurvey::instance(), "grdParamAndQuest");
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, {60, grid->rowViewportPosition(1) + 5});
    press(frmNewSurvey::instance(), "cmdUpward");
    EXPECT_EQ(grid->TextMatrix(1, 2), u"Fair?"_s);
}

void compose(const QString& dateDigits) {
    shortcut(Qt::Key_N);
    frmSelectSurvey& selection = frmSelectSurvey::instance();
    auto* customer = control<forms::ComboBox>(selection, "cmbCustomer");
    customer->setFocus();
    key(Qt::Key_End);
    key(Qt::Key_Home);
    ASSERT_EQ(customer->Text(), u"Acme"_s);
    clickEntry(selection, "lstRespondent", 0);
    enterDate(selection, "dtSDate", dateDigits);
    press(selection, "cmdBlankSurvey");
    ASSERT_NE(frmNewSurvey::loaded(), nullptr);
    ASSERT_NO_FATAL_FAILURE(composeByFourGestures());
    if (dateDigits.endsWith(u"032002"))
        reorder();
    key(Qt::Key_Escape);
    EXPECT_EQ(frmNewSurvey::loaded(), nullptr);
}

/// The answers in the order of the questionnaire: weightage, score and description joined by a bar.
void enterAnswers(int date, const QStringList& answers) {
    frmFeedBackObj& form = frmFeedBackObj::instance();
    clickEntry(form, "lstSurveyDates", date);
    const EditedGrid grid(form, "grdDtls", "txtDtls");
    ASSERT_EQ(grid.grid->Rows(), answers.size() + 1);
    grid.click(1, 2);
    for (const QString& answer : answers) {
        typeRow(answer.split(u'|'));
        key(Qt::Key_Return); // past the question of the next row
    }
    press(form, "cmdSave");
}

void showIndex(ExpectedMessages& messages) {
    auto* menu = control<QMenu>(MDIMain::instance(), "mnuAnalysis");
    QTest::keyClick(&MDIMain::instance(), Qt::Key_A, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return menu->isVisible(); }));
    QTest::keyClick(menu, Qt::Key_I);
    ASSERT_NE(frmSatisfactionIndex::loaded(), nullptr);
    frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
    ASSERT_EQ(control<forms::ListBox>(form, "lstParameter")->ListCount(), 2);
    clickEntry(form, "lstParameter", 0);
    clickEntry(form, "lstParameter", 1, Qt::ShiftModifier);
    enterDate(form, "dtFrom", u"01012002"_s);
    enterDate(form, "dtTo", u"31122002"_s);
    press(form, "cmdView");
    auto* drawn = control<chart::MSChart>(form, "mschart");
    ASSERT_EQ(drawn->RowCount(), 2);
    ASSERT_EQ(drawn->ColumnCount(), 2);
    drawn->setRow(1);
    EXPECT_EQ(drawn->RowLabel(), u"15/03/2002"_s);
    drawn->setColumn(1);
    const int delivery = drawn->ColumnLabel() == u"Delivery" ? 1 : 2;
    // Delivery: (3, 6) and (5, 8), then (4, 10) and one not rated. Price: (2, 4), then (10, 7).
    EXPECT_EQ(drawn->GetData(1, delivery), 7);
    EXPECT_EQ(drawn->GetData(2, delivery), 10);
    EXPECT_EQ(drawn->GetData(1, 3 - delivery), 4);
    EXPECT_EQ(drawn->GetData(2, 3 - delivery), 7);
    messages.expect(u"Satisfaction Index : 10"_s);
    QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(delivery, 2));
    EXPECT_EQ(messages.left(), 0);
}

TEST_F(RoadTest, fromAnEmptyStoreToTheSatisfactionIndexAndBackAfterARestart) {
    typeCustomers();
    typeCatalogue();
    ASSERT_NO_FATAL_FAILURE(compose(u"15032002"_s));
    ASSERT_NO_FATAL_FAILURE(compose(u"16062002"_s));
    shortcut(Qt::Key_O);
    ASSERT_NO_FATAL_FAILURE(enterAnswers(0, {u"2|4|"_s, u"6||It's fine"_s, u"3|6|"_s, u"5|8|"_s}));
    ASSERT_NO_FATAL_FAILURE(enterAnswers(1, {u"||"_s, u"10|7|"_s, u"4|10|"_s, u"||"_s}));
    ASSERT_NO_FATAL_FAILURE(showIndex(messages));
    const QStringList answers = rows(u"select * from feedbackobjective order by feedbackobjid"_s);
    EXPECT_EQ(answers.size(), 6);
    EXPECT_EQ(rows(u"select weightage, Description from feedbackdescriptive"_s),
              (QStringList{u"6|It’s fine"_s, u"0|"_s}));

    const auto before = std::exchange(endSeat, [] {});
    shortcut(Qt::Key_Q);
    endSeat = before;
    EXPECT_EQ(cnnMain, nullptr);
    MDIMain::destroy();
    ASSERT_TRUE(toCreateDSN(u"gwl"_s, strDatabasePath));
    toOpenConnection();
    MDIMain::instance().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&MDIMain::instance()));
    EXPECT_EQ(rows(u"select * from feedbackobjective order by feedbackobjid"_s), answers);
    EXPECT_EQ(rows(u"select custname, Address, telno, email from customer"_s),
              (QStringList{u"Acme|1 High Street|555|post@acme.example"_s, u"Bolt’s Garage| ||"_s}));
    shortcut(Qt::Key_O);
    const EditedGrid grid(frmFeedBackObj::instance(), "grdDtls", "txtDtls");
    EXPECT_EQ(grid.row(1), u"Fair?|2|4|"_s);
}

} // namespace
