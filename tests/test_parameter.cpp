// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "reference/frmParameter.h"
#include "tests/support/gridform.h"

using Cell = std::pair<int, int>;

namespace {
struct ParameterTest : StoreTest {
    static EditedGrid parameters() {
        return {frmParameter::instance(), "grdParameterDtls", "txtParameterDtls"};
    }
    static EditedGrid questions() { return {frmParameter::instance(), "grdQuestionDtls", "txtQuestionDtls"}; }
    static frmParameter& open() {
        frmParameter::instance().Show();
        parameters().box->setFocus();
        return frmParameter::instance();
    }
    static QStringList names() { return rows(u"select parametername from parameter"_s); }
};

TEST_F(ParameterTest, enterOnTheLastRowStoresItUnlessItsNameExists) {
    open();
    for (const QString& name : {u""_s, u"Price"_s, u"Deliv'ry"_s, u"PRICE"_s}) {
        type(name);
        key(Qt::Key_Return);
    }
    EXPECT_EQ(names(), (QStringList{u"Price"_s, u"Deliv’ry"_s}));
}

TEST_F(ParameterTest, oneKeySetsTheTypeAndOtherTextIsCleared) {
    addParameter(u"Price"_s);
    open();
    questions().enter(1, 1, u"Is it fair?"_s);
    key(Qt::Key_Return);
    ASSERT_EQ(questions().cell(), Cell(1, 2));
    const std::pair<QString, QString> table[] = {
        {u"x"_s, u""_s}, {u"s"_s, u"Score"_s}, {u"5"_s, u""_s}, {u"D"_s, u"Descriptive"_s}};
    for (const auto& [typed, cell] : table) {
        if (typed == u"5") // replaces the whole word
            questions().box->selectAll();
        type(typed);
        EXPECT_EQ(questions().text(1, 2), cell);
    }
}

TEST_F(ParameterTest, aRefusalShowsTheQuestionsOfTheCurrentRow) {
    addQuestion(addParameter(u"Price"_s), u"Is it fair?"_s);
    addQuestion(addParameter(u"Service"_s), u"Is it kind?"_s);
    frmParameter& form = open();
    parameters().enter(1, 1, u""_s);
    parameters().click(2, 1);
    messages.expectCritical(u"Parameter Name Cannot be left blank....Error"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(parameters().cell(), Cell(2, 1));
    EXPECT_EQ(questions().text(1, 1), u"Is it kind?"_s);
    messages.expectCritical(u"Parameter Name cannot be left blank....Error"_s);
    press(form, "cmdSaveParameter"); // moves to the blank row, Enter to the last one
    EXPECT_EQ(parameters().cell(), Cell(1, 1));
    EXPECT_EQ(questions().text(1, 1), u"Is it fair?"_s);
    press(form, "cmdSaveQuestion");
    EXPECT_EQ(rows(u"select question, paramid from questions"_s),
              (QStringList{u"Is it fair?|1"_s, u"Is it kind?|2"_s}));
}

TEST_F(ParameterTest, pastedQuestionsFollowTheRulesOfTheirColumns) {
    addParameter(u"Price"_s);
    open();
    questions().click(1, 1);
    EditedGrid::paste(u"Is it fair?\ts\nWhat else?\tDescriptive\n"_s);
    EXPECT_EQ(questions().text(1, 2) + questions().text(2, 2), u"ScoreDescriptive"_s);
    questions().box->selectAll();
    messages.expectInformation(
        u"With the pasted text the cell would hold 256 characters; it takes 255. Nothing has been pasted."_s);
    EditedGrid::paste(QString(256, u'w'));
    EXPECT_EQ(questions().text(1, 1), u"Is it fair?"_s);
}

TEST_F(ParameterTest, questionsAreStoredUnderTheCurrentParameter) {
    addParameter(u"Price"_s);
    addQuestion(addParameter(u"Delivery"_s), u"On time?"_s);
    frmParameter& form = open();
    messages.expectCritical(u"Question name cannot be left blank...Error"_s);
    press(form, "cmdSaveQuestion");
    questions().enter(1, 1, u"On time?"_s);
    key(Qt::Key_Return);
    type(u"s"_s);
    key(Qt::Key_Return); // appends a row, saves nothing
    EXPECT_EQ(value(u"select count(*) from questions"_s), u"1"_s);
    questions().enter(2, 1, u"What's missing?"_s);
    key(Qt::Key_Down);
    questions().enter(3, 1, u"ON TIME?"_s);
    press(form, "cmdSaveQuestion");
    EXPECT_EQ(rows(u"select question, Type, paramid from questions order by questionid"_s),
              (QStringList{u"On time?|True|2"_s, u"On time?|True|1"_s, u"What’s missing?|False|1"_s}));
    EXPECT_EQ(questions().text(2, 2), u"Descriptive"_s) << "an empty type";
    // An edit that adds an apostrophe finds no row and is not stored; any other edit is.
    questions().enter(1, 1, u"On time, isn't it?"_s);
    questions().enter(2, 2, u"s"_s);
    press(form, "cmdSaveQuestion");
    EXPECT_EQ(rows(u"select question, Type from questions where paramid=1"_s),
              (QStringList{u"On time?|True"_s, u"What’s missing?|True"_s}));
    parameters().click(2, 1);
    questions().click(1, 1);
    press(form, "cmdDeleteQuestion"); // at once
    EXPECT_EQ(rows(u"select paramid from questions"_s), (QStringList{u"1"_s, u"1"_s}));
}

TEST_F(ParameterTest, deletingAParameterSavesTheRemainingRows) {
    for (const QString& name : {u"Price"_s, u"Delivery"_s, u"Support"_s})
        addParameter(name);
    addQuestion(1, u"Is it fair?"_s);
    frmParameter& form = open();
    parameters().enter(2, 1, u"Delivery time"_s);
    parameters().enter(3, 1, u"lost edit of the last row"_s);
    const auto removeFirst = [&](std::optional<Answer> answer) {
        if (answer)
            messages.expectTitled(u"Deleting of parameter will delete all the Corresponding records"_s,
                                  style::okCancel + style::secondButton, *answer);
        parameters().click(1, 1);
        press(form, "cmdDeleteParameter");
        return names();
    };
    EXPECT_EQ(removeFirst(Answer::Cancel), (QStringList{u"Price"_s, u"Delivery time"_s, u"Support"_s}));
    EXPECT_EQ(parameters().text(3, 1), u"Support"_s);
    EXPECT_EQ(removeFirst(Answer::Ok), (QStringList{u"Delivery time"_s, u"Support"_s}));
    EXPECT_EQ(value(u"select count(*) from questions"_s), u"0"_s);
    EXPECT_TRUE(MDIMain::instance().stsBar->Panels(2).Text().startsWith(u"1 parameter deleted"));
    EXPECT_EQ(removeFirst({}), QStringList{u"Support"_s}) << "has no questions: asks nothing";
    EXPECT_EQ(removeFirst({}), QStringList());
    EXPECT_EQ(parameters().text(1, 1), u""_s) << "the last one; no grid row is taken away";
}
} // namespace
