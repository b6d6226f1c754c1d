// SPDX-License-Identifier: GPL-3.0-or-later
#include "reference/frmParameter.h"
#include "tests/support/gridform.h"

using namespace Qt::StringLiterals;
using forms::Answer;
using Cell = std::pair<int, int>;

namespace {

class ParameterTest : public StoreTest {
protected:
    frmParameter& open() {
        frmParameter& form = frmParameter::instance();
        form.Show();
        parameters = std::make_unique<EditedGrid>(form, "grdParameterDtls", "txtParameterDtls");
        questions = std::make_unique<EditedGrid>(form, "grdQuestionDtls", "txtQuestionDtls");
        parameters->box->setFocus();
        return form;
    }

    std::unique_ptr<EditedGrid> parameters;
    std::unique_ptr<EditedGrid> questions;
};

TEST_F(ParameterTest, enterStoresParametersAndBeginsTheNext) {
    open();
    key(Qt::Key_Return);
    EXPECT_EQ(parameters->grid->Rows(), 2) << "an empty last row does nothing";
    for (const char16_t* name : {u"Price", u"Deliv'ry"}) {
        type(QString::fromUtf16(name));
        key(Qt::Key_Return);
    }
    EXPECT_EQ(rows(u"select parametername from parameter"_s), (QStringList{u"Price"_s, u"Deliv’ry"_s}));
    EXPECT_EQ(parameters->cell(), Cell(3, 1));
    EXPECT_TRUE(parameters->boxLiesOverCell() && parameters->box->hasFocus());
    type(u"PRICE"_s); // stands there already: vanishes without a word
    key(Qt::Key_Return);
    EXPECT_EQ(value(u"select count(*) from parameter"_s), u"2"_s);
    parameters->click(1, 1);
    key(Qt::Key_Return);
    EXPECT_EQ(parameters->cell(), Cell(2, 1));
}

TEST_F(ParameterTest, oneKeyFillsTheTypeAndAnythingElseIsWiped) {
    addParameter(u"Price"_s);
    open();
    questions->enter(1, 1, u"Is it fair?"_s);
    key(Qt::Key_Return);
    ASSERT_EQ(questions->cell(), Cell(1, 2));
    struct Row {
        const char16_t* typed;
        const char16_t* cell;
    };
    const Row table[] = {
        {u"x", u""}, {u"s", u"Score"}, {u"!", u"Score!"}, {u"5", u""}, {u"D", u"Descriptive"}};
    for (const Row& row : table) {
        if (row.typed[0] == u'5') // replaces the whole word
            questions->box->selectAll();
        type(QString::fromUtf16(row.typed));
        EXPECT_EQ(questions->grid->TextMatrix(1, 2), QString::fromUtf16(row.cell));
        EXPECT_EQ(questions->box->text(), QString::fromUtf16(row.cell));
    }
    for (int i = 0; i < 8; ++i)
        key(Qt::Key_Backspace);
    EXPECT_EQ(questions->box->text(), u"Des"_s) << "shortened from the right";
    questions->box->setCursorPosition(1);
    key(Qt::Key_Backspace);
    EXPECT_EQ(questions->box->text(), u""_s) << "without its capital";
}

TEST_F(ParameterTest, questionsAreStoredUnderTheParameterAtHand) {
    const int price = addParameter(u"Price"_s);
    const int delivery = addParameter(u"Delivery"_s);
    addQuestion(delivery, u"On time?"_s);
    frmParameter& form = open();
    questions->enter(1, 1, u"On time?"_s);
    key(Qt::Key_Return);
    type(u"s"_s);
    key(Qt::Key_Return); // appends a row, saves nothing
    EXPECT_EQ(questions->cell(), Cell(2, 1));
    EXPECT_EQ(value(u"select count(*) from questions"_s), u"1"_s);
    key(Qt::Key_Return);
    key(Qt::Key_Return); // an empty question goes nowhere
    EXPECT_EQ(questions->cell(), Cell(2, 2));
    questions->enter(2, 1, u"What's missing?"_s);
    key(Qt::Key_Down);
    questions->enter(3, 1, u"ON TIME?"_s);
    press(form, "cmdSaveQuestion");
    EXPECT_EQ(rows(u"select question, Type, paramid from questions order by questionid"_s),
              (QStringList{u"On time?|True|2"_s, u"On time?|True|1"_s, u"What’s missing?|False|1"_s}))
        << price;
    EXPECT_EQ(questions->grid->TextMatrix(2, 2), u"Descriptive"_s) << "an empty type";
    // An edit that gains an apostrophe finds no row and is not stored; any other edit is.
    questions->enter(1, 1, u"On time, isn't it?"_s);
    questions->enter(2, 2, u"s"_s);
    press(form, "cmdSaveQuestion");
    EXPECT_EQ(rows(u"select question, Type from questions where paramid=1"_s),
              (QStringList{u"On time?|True"_s, u"What’s missing?|True"_s}));
    parameters->click(2, 1);
    EXPECT_EQ(questions->grid->Rows(), 2);
    EXPECT_EQ(questions->grid->TextMatrix(1, 1), u"On time?"_s);
    EXPECT_EQ(questions->box->maxLength(), 255);
}

TEST_F(ParameterTest, blankCellsAreRefusedByEachCommand) {
    addParameter(u"Price"_s);
    frmParameter& form = open();
    press(form, "cmdAddParameter");
    struct Row {
        const char* button;
        const char16_t* message;
    };
    const Row table[] = {
        {"cmdAddParameter", u"Parameter Name Cannot be left blank....Error"},
        {"cmdSaveParameter", u"Parameter Name cannot be left blank....Error"},
        {"cmdAddQuestion", u"Question Cannot be left blank....Error"},
        {"cmdSaveQuestion", u"Question name cannot be left blank...Error"},
    };
    for (const Row& row : table) {
        messages.expect(QString::fromUtf16(row.message), 16, u"Gaugewell v2.1"_s);
        press(form, row.button);
        EXPECT_EQ(messages.left(), 0) << row.button;
    }
    EXPECT_EQ(parameters->cell(), Cell(2, 1));
    EXPECT_TRUE(questions->box->hasFocus());
}

TEST_F(ParameterTest, deletingAParameterSavesTheRowsThatStay) {
    for (const char16_t* name : {u"Price", u"Delivery", u"Support"})
        addParameter(QString::fromUtf16(name));
    addQuestion(1, u"Is it fair?"_s);
    frmParameter& form = open();
    const QString question = u"Deleting of parameter will delete all the Corresponding records"_s;
    parameters->enter(2, 1, u"Delivery time"_s);
    parameters->enter(3, 1, u"lost edit of the last row"_s);
    parameters->click(1, 1);
    messages.expect(question, 1, u"Gaugewell v2.1"_s, Answer::Cancel);
    press(form, "cmdDeleteParameter");
    EXPECT_EQ(rows(u"select parametername from parameter"_s),
              (QStringList{u"Price"_s, u"Delivery time"_s, u"Support"_s}));
    EXPECT_EQ(parameters->grid->TextMatrix(3, 1), u"Support"_s);
    parameters->click(1, 1);
    messages.expect(question, 1, u"Gaugewell v2.1"_s, Answer::Ok);
    press(form, "cmdDeleteParameter");
    EXPECT_EQ(rows(u"select parametername from parameter"_s),
              (QStringList{u"Delivery time"_s, u"Support"_s}));
    EXPECT_EQ(value(u"select count(*) from questions"_s), u"0"_s);
    parameters->click(1, 1);
    press(form, "cmdDeleteParameter"); // has no questions: asks nothing
    EXPECT_EQ(rows(u"select parametername from parameter"_s), QStringList{u"Support"_s});
    press(form, "cmdDeleteParameter");
    EXPECT_EQ(parameters->grid->TextMatrix(1, 1), u""_s) << "the last one; no grid row is taken away";
}

TEST_F(ParameterTest, aQuestionIsDeletedAtOnce) {
    addQuestion(addParameter(u"Price"_s), u"Is it fair?"_s);
    frmParameter& form = open();
    questions->click(1, 1);
    press(form, "cmdDeleteQuestion");
    EXPECT_EQ(value(u"select count(*) from questions"_s), u"0"_s);
    EXPECT_TRUE(questions->box->hasFocus());
}

TEST_F(ParameterTest, aSaveThatFailsPartWayLeavesTheStoreAsItWas) {
    runRaw(u"create trigger stop before insert on parameter when new.parametername = 'Third' "
           u"begin select raise(abort, 'stopped'); end"_s);
    frmParameter& form = open();
    for (const char16_t* name : {u"First", u"Second", u"Third"}) {
        type(QString::fromUtf16(name));
        key(Qt::Key_Down);
    }
    parameters->enter(4, 1, u"Fourth"_s);
    messages.expect(u"Error : 19\r\nstopped"_s);
    press(form, "cmdSaveParameter");
    EXPECT_EQ(value(u"select count(*) from parameter"_s), u"0"_s);
    EXPECT_FALSE(cnnMain->InTransaction());
    EXPECT_EQ(parameters->grid->TextMatrix(3, 1), u"Third"_s) << "nothing typed is lost";
}

} // namespace
