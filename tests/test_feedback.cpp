// SPDX-License-Identifier: GPL-3.0-or-later
#include "feedback/frmFeedBackObj.h"
#include "tests/support/gridform.h"

namespace {
const QDate march(2006, 3, 14);
const QString price = u"How do you rate the price?"_s;
const QString wishes = u"What do you wish?"_s;
const QString staff = u"How friendly is the staff?"_s;
const QString objective =
    u"select questionid, weightage, score, surveyid, surveydate from feedbackobjective"_s;
const QString descriptive = u"select Description, weightage from feedbackdescriptive"_s;

struct FeedbackTest : StoreTest {
    void SetUp() override {
        StoreTest::SetUp();
        acme = addCustomer(u"Acme"_s);
        ann = addRespondent(acme, u"Ann"_s);
        const int parameter = addParameter(u"Sales"_s);
        questions = {addQuestion(parameter, price), addQuestion(parameter, wishes, false),
                     addQuestion(parameter, staff)};
        survey = addSurvey(acme, march);
        addQuestionnaire(ann, survey, questions);
    }
    static frmFeedBackObj& open() { return show<frmFeedBackObj>(); }
    static EditedGrid grid() { return {frmFeedBackObj::instance(), "grdDtls", "txtDtls"}; }
    static QString label(const char* name) {
        return control<QLabel>(frmFeedBackObj::instance(), name)->text();
    }
    static void clickDate(int index) { clickEntry(frmFeedBackObj::instance(), "lstSurveyDates", index); }
    /// The expected record of an answer to a Score question.
    QString score(int question, const char* marks) const {
        return QString::number(questions.at(static_cast<std::size_t>(question))) + u'|' +
               QLatin1StringView(marks) + u'|' + QString::number(survey) + u"|14/03/2006";
    }

    int acme = 0, ann = 0, survey = 0;
    std::vector<int> questions;
};

TEST_F(FeedbackTest, cellsAcceptOnlyValidInput) {
    open();
    const std::tuple<int, int, QString, QString> cases[] = {
        {1, 1, u"x"_s, price},
        {1, 2, u"105"_s, u""_s},
        {1, 2, u"a7é-"_s, u"7"_s},
        {1, 3, u"11"_s, u""_s},
        {1, 4, u"good"_s, u""_s},
        {2, 3, u"5"_s, u""_s},
        {2, 4, u"Très 1"_s, u"Très 1"_s},
    };
    for (const auto& [row, col, typed, cell] : cases) {
        grid().enter(row, col, typed);
        EXPECT_EQ(grid().text(row, col), cell) << typed;
    }
    grid().enter(3, 2, u"8"_s);
    QInputMethodEvent composed;
    composed.setCommitString(u"é"_s);
    QApplication::sendEvent(grid().box, &composed);
    EXPECT_EQ(grid().row(3), staff + u"|8||");
    const std::pair<QString, QString> pastes[] = {{u"10.5"_s, u"10.5"_s}, // rounds half to even
                                                  {u"10.6"_s, {}},
                                                  {u"eight"_s, {}},
                                                  {u"9999999999"_s, {}}};
    for (const auto& [pasted, cell] : pastes) {
        grid().box->selectAll();
        EditedGrid::paste(pasted);
        EXPECT_EQ(grid().text(3, 2), cell) << pasted;
    }
}

TEST_F(FeedbackTest, marksAreCheckedWhenTypedAndReplacedWhenEntered) {
    addScore(ann, questions[0], survey, march, 77, -3);
    frmFeedBackObj& form = open();
    for (const int col : {2, 3, 2}) {
        grid().click(1, col);
        EXPECT_EQ(grid().row(1), price + u"|77|-3|") << "visited only";
    }
    key(Qt::Key_Right); // the text is selected
    EXPECT_EQ(grid().cell(), std::pair(1, 3));
    press(form, "cmdSave");
    EXPECT_EQ(rows(objective).value(0), score(0, "77|-3"));
    grid().click(1, 2);
    type(u"7"_s);
    EXPECT_EQ(grid().text(1, 2), u"7"_s);
    EditedGrid::paste(u"8\t6\n5\n"_s); // the second question takes words: a weightage, no score
    EXPECT_EQ(grid().row(1) + grid().row(2), price + u"|8|6|" + wishes + u"|5||");
    messages.expectInformation(u"The pasted cells do not fit from here on: “6” has no place in row 2, column "
                               "3. Nothing has been pasted."_s);
    EditedGrid::paste(u"8\n7\t6"_s);
    EXPECT_EQ(grid().row(1) + grid().row(2), price + u"|8|6|" + wishes + u"|5||");
}

TEST_F(FeedbackTest, answersAreSavedForTheirOwnerOnly) {
    add(u"respondent"_s, {{"custid", acme}, {"respondentdesignation", u"Nameless"_s}, {"emailid", u""_s}});
    frmFeedBackObj& form = open();
    clickEntry(form, "lstRespname", 1); // a respondent without a name; no message
    EXPECT_EQ(grid().row(1), u"|||"_s);
    clickEntry(form, "lstRespname", 0);
    grid().enter(1, 2, u"9"_s);
    for (const QString& change :
         {u"update customer set custname='Acme Ltd'"_s, u"delete * from respondent"_s}) {
        run(change);
        messages.expectCritical(u"The customer or respondent has changed meanwhile. Choose the respondent "
                                "anew to see the answers as they are stored. Nothing has been saved."_s);
        press(form, "cmdSave");
        EXPECT_EQ(rows(objective), QStringList{});
        run(u"update customer set custname='Acme'"_s);
    }
}

TEST_F(FeedbackTest, newAnswersAreStoredAndEmptiedOnesFollowTheirColumn) {
    frmFeedBackObj& form = open();
    grid().enter(1, 2, u"10"_s);
    grid().enter(1, 3, u"0"_s);
    grid().enter(2, 2, u"7"_s);
    grid().enter(2, 4, u" it's fine "_s);
    press(form, "cmdSave");
    EXPECT_EQ(rows(objective), (QStringList{score(0, "10|0"), score(2, "0|0")})); // blank: defaults
    EXPECT_EQ(rows(descriptive), QStringList{u"it’s fine|7"_s});

    clickDate(0);
    EXPECT_EQ(grid().row(1), price + u"|10||");
    EXPECT_EQ(grid().row(2), wishes + u"|7||it’s fine");
    for (const auto& [row, col] : {std::pair(1, 2), {2, 2}, {2, 4}})
        grid().enter(row, col, {});
    grid().enter(3, 3, u"4"_s);
    press(form, "cmdSave");
    EXPECT_EQ(rows(objective), (QStringList{score(0, "0|0"), score(2, "0|4")}));
    EXPECT_EQ(rows(descriptive), QStringList{u"it’s fine|0"_s});

    expectIdle();
}

TEST_F(FeedbackTest, answersThatCannotBeReadAreNotSavedAsBlanks) {
    addScore(ann, questions[0], survey, march, 9, 8);
    frmFeedBackObj& form = open();
    withoutTable(u"feedbackobjective"_s, [] { clickDate(0); });
    messages.expectCritical(u"Cannot Save.....Question details are missing"_s);
    press(form, "cmdSave");
    EXPECT_EQ(rows(objective), QStringList{score(0, "9|8")});
}

TEST_F(FeedbackTest, questionOfTheSameTextResolvesToTheFirst) {
    questions.push_back(addQuestion(addParameter(u"Service"_s), price));
    run(u"delete * from responquesindex"_s);
    addQuestionnaire(ann, survey, questions);
    open();
    grid().enter(1, 2, u"2"_s);
    grid().enter(4, 2, u"5"_s);
    press(open(), "cmdSave");
    EXPECT_EQ(rows(objective), (QStringList{score(0, "5|0"), score(2, "0|0")}));
    clickDate(0);
    EXPECT_EQ(grid().row(1), price + u"|5||");
    EXPECT_EQ(grid().row(4), price + u"|5||");
}

TEST_F(FeedbackTest, selectionsShowTheirSurvey) {
    const int bob = addRespondent(acme, u"Bob"_s);
    addQuestionnaire(bob, addSurvey(acme, march.addDays(1)), {questions[1]});
    addRespondent(addCustomer(u"Empty"_s), u"Eve"_s);
    frmFeedBackObj& form = open();
    grid().enter(2, 4, u"typed for Ann"_s);
    keyOn(form, "lstRespname", Qt::Key_Down); // to Bob, who was not asked on that date
    EXPECT_EQ(grid().row(1) + label("lblSDate"), u"|||"_s);
    clickDate(1);
    EXPECT_EQ(grid().row(1) + label("lblSDate"), wishes + u"|||15/03/2006");
    keyOn(form, "cmbCusName", Qt::Key_Down); // to a customer without a survey
    messages.expectCritical(u"Cannot Save.....Question details are missing"_s);
    press(form, "cmdSave");
    EXPECT_EQ(rows(descriptive), QStringList{});
}

TEST_F(FeedbackTest, aFailureIsReportedAndTheFormStaysUsable) {
    frmFeedBackObj& form = open();
    grid().enter(1, 2, u"1"_s);
    grid().enter(3, 2, u"3"_s);
    key(Qt::Key_Down);
    EXPECT_EQ(grid().grid->Rows(), 4) << "no row is added behind the last question";
    // Another program deletes the second question: the rows before it are saved.
    run(u"delete * from responquesindex where questionid="_s + QString::number(questions[1]));
    messages.expectCritical(u"“%1” has left this survey. The answers above it have been saved, this one and "
                            "those below have not."_s.arg(wishes));
    press(form, "cmdSave");
    EXPECT_EQ(rows(objective), QStringList{score(0, "1|0")});
    clickDate(0);
    grid().enter(2, 2, u"9"_s);
    press(form, "cmdSave");
    EXPECT_EQ(rows(objective), (QStringList{score(0, "1|0"), score(2, "9|0")}));
}
} // namespace
