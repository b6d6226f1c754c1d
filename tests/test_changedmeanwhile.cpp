// SPDX-License-Identifier: GPL-3.0-or-later
// What someone else has changed in the store since a form read it is neither overwritten nor lost unasked.
#include "core/base/frmChangedMeanwhile.h"
#include "exchange/frmSetting.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "reference/frmCustomer.h"
#include "reference/frmParameter.h"
#include "survey/frmEditExistingSurvey.h"
#include "tests/support/changedrows.h"
#include "tests/support/gridform.h"

#include <QTableWidget>

namespace {
struct ChangedMeanwhileTest : StoreTest, protected ChangedRows {
    void SetUp() override {
        StoreTest::SetUp();
        add(u"customer"_s, {{"custname", u"Acme"_s}, {"Address", u"Hill 1"_s}, {"telno", u"12"_s}});
        addRespondent(1, u"Ann"_s);
        addQuestion(addParameter(u"Delivery"_s), u"On time?"_s);
    }
    /// As another program does.
    static void other(const QString& sql) {
        ado::Connection elsewhere;
        elsewhere.ConnectionString = connectionText();
        elsewhere.Open();
        elsewhere.Execute(sql);
    }

    struct Case {
        QString mine;   ///< entered; empty: nothing
        QString others; ///< assignments of the other program; empty: none
        Keep answer;
        bool isAsked;
        QString stored; ///< in the end
        QString shown;
    };
    /// Saves the one row that the form shows after both have changed it, case by case.
    template <class Form>
    void expectKept(const char* button, const QString& table, const QString& fields,
                    const std::function<void(const QString&)>& enter, const std::function<QString()>& shown,
                    const std::vector<Case>& cases) {
        for (const Case& given : cases) {
            SCOPED_TRACE(testing::Message() << given.others << int(given.answer));
            enter(given.mine);
            if (!given.others.isEmpty())
                other(u"update %1 set "_s.arg(table) + given.others);
            asked.clear();
            answer = given.answer;
            press(Form::instance(), button);
            ASSERT_EQ(asked.size(), given.isAsked ? 1U : 0U);
            EXPECT_EQ(rows(u"select %1 from %2"_s.arg(fields, table)), QStringList(given.stored));
            EXPECT_EQ(shown(), given.shown);
            expectIdle();
        }
    }
};

TEST_F(ChangedMeanwhileTest, onlyTheSameFieldOfARowConflicts) {
    const auto grid = [] {
        return EditedGrid(frmCustomer::instance(), "grdCustomerDtls", "txtCustomerDtls");
    };
    const auto enter = [&](const QString& number) {
        frmCustomer::unload();
        run(u"update customer set custname='Acme', Address='Hill 1', telno='12'"_s);
        frmCustomer::instance().Show();
        if (!number.isEmpty())
            grid().enter(1, 3, number);
    };
    const QString both = u"custname='Acme Ltd', telno='99'"_s;
    const QString others = u"Acme Ltd|Hill 1|99"_s;
    expectKept<frmCustomer>(
        "cmdSaveCustomer", u"customer"_s, u"custname || '|' || Address || '|' || telno"_s, enter,
        [&] { return grid().text(1, 3); },
        {{u"34"_s, {}, Keep::Both, false, u"Acme|Hill 1|34"_s, u"34"_s},
         {{}, both, Keep::Both, false, others, u"99"_s},
         {u"34"_s, u"Address='Dale 2'"_s, Keep::Both, false, u"Acme|Dale 2|34"_s, u"34"_s},
         {u"99"_s, both, Keep::Both, false, others, u"99"_s},
         {u"34"_s, both, Keep::Both, true, others, u"34"_s}, // what was typed stays
         {u"34"_s, both, Keep::Stored, true, others, u"99"_s},
         {u"34"_s, both, Keep::Mine, true, u"Acme Ltd|Hill 1|34"_s, u"34"_s}});
    EXPECT_EQ(asked[0], (ChangedRow{u"Customer Name: Acme"_s, {{u"Tel.No"_s, u"12"_s, u"99"_s, u"34"_s}}}));
}

TEST_F(ChangedMeanwhileTest, respondentsParametersAndQuestionsAreComparedToo) {
    answer = Keep::Mine;
    frmCustomer::instance().Show();
    const EditedGrid respondents{frmCustomer::instance(), "grdRespondentDtls", "txtRespondentDtls"};
    respondents.enter(1, 2, u"Chief"_s);
    other(u"update respondent set respondentdesignation='Clerk'"_s);
    press(frmCustomer::instance(), "cmdSaveRespondent");
    EXPECT_EQ(rows(u"select respondentdesignation from respondent"_s), QStringList(u"Chief"_s));

    frmParameter& form = show<frmParameter>();
    const EditedGrid parameters{form, "grdParameterDtls", "txtParameterDtls"};
    parameters.enter(1, 1, u"Supply"_s);
    other(u"update parameter set parametername='Shipping'"_s);
    press(form, "cmdSaveParameter");
    const EditedGrid questions{form, "grdQuestionDtls", "txtQuestionDtls"};
    questions.enter(1, 2, u"d"_s);
    other(u"update questions set question='In time?'"_s);
    press(form, "cmdSaveQuestion");
    EXPECT_EQ(rows(u"select parametername || '|' || question || '|' || Type from parameter join questions"_s),
              QStringList(u"Supply|In time?|0"_s));
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].name, u"Respondent Name: Ann"_s);
    EXPECT_EQ(asked[1].fields,
              (std::vector<ChangedField>{{u"Parameter Name"_s, u"Delivery"_s, u"Shipping"_s, u"Supply"_s}}));
}

TEST_F(ChangedMeanwhileTest, theMarksOfAnAnswerAreCompared) {
    addQuestionnaire(1, addSurvey(1, {2024, 3, 5}), {1});
    addScore(1, 1, 1, {2024, 3, 5}, 4, 5);
    frmFeedBackObj& form = show<frmFeedBackObj>();
    const EditedGrid marks{form, "grdDtls", "txtDtls"};
    ASSERT_EQ(marks.row(1), u"On time?|4|5|"_s);
    expectKept<frmFeedBackObj>(
        "cmdSave", u"feedbackobjective"_s, u"weightage || ' ' || score"_s,
        [&](const QString& score) { marks.enter(1, 3, score); }, [&] { return marks.row(1); },
        {{u"7"_s, u"weightage=9"_s, Keep::Both, false, u"9 7"_s, u"On time?|4|7|"_s},
         {u"8"_s, u"score=2"_s, Keep::Both, true, u"9 2"_s, u"On time?|4|8|"_s},
         {u"8"_s, u"score=3"_s, Keep::Stored, true, u"9 3"_s, u"On time?|9|3|"_s},
         {u"8"_s, u"score=1"_s, Keep::Mine, true, u"9 8"_s, u"On time?|9|8|"_s}});
}

TEST_F(ChangedMeanwhileTest, theFieldsOfAnActionAreCompared) {
    const Replaced<forms::todayHook> fixedDay{[] { return QDate(2024, 3, 5); }};
    run(u"insert into actionplan (customerid, Date, Action, targetdate, Status) values "
        "(1, '2024-03-05', 'Call', null, False)"_s);
    frmImprovementPlan& form = show<frmImprovementPlan>();
    auto* words = control<QLineEdit>(form, "txtDescription");
    const auto enter = [words](const QString& text) {
        if (text.isEmpty())
            return;
        words->setFocus();
        words->selectAll();
        type(text);
    };
    ASSERT_EQ(words->text(), u"Call"_s);
    expectKept<frmImprovementPlan>(
        "cmdSave", u"actionplan"_s, u"Action || ' ' || Status"_s, enter, [words] { return words->text(); },
        {{u"Ring"_s, u"Status=True"_s, Keep::Both, false, u"Ring -1"_s, u"Ring"_s},
         {u"Visit"_s, u"Action='Write'"_s, Keep::Both, true, u"Write -1"_s, u"Visit"_s},
         {u"Visit"_s, u"Action='Fax', Status=False"_s, Keep::Stored, true, u"Fax 0"_s, u"Fax"_s},
         {{}, u"Action='Meet'"_s, Keep::Both, false, u"Meet 0"_s, u"Meet"_s},
         {u"Visit"_s, u"Action='Post'"_s, Keep::Mine, true, u"Visit 0"_s, u"Visit"_s},
         {u"Don't"_s, u"Action='Don’t'"_s, Keep::Both, false, u"Don’t 0"_s, u"Don't"_s}});
    control<forms::DTPicker>(form, "dtdate")->setValue({2024, 3, 6}); // a day without an action
    enter(u"Mine"_s);
    run(u"insert into actionplan (customerid, Date, Action) values (1, '2024-03-06', 'Theirs')"_s);
    asked.clear();
    answer = Keep::Both;
    press(form, "cmdSave");
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].name, u"Action of 06/03/2024"_s);
    EXPECT_EQ(rows(u"select Action from actionplan order by Date"_s), (QStringList{u"Don’t"_s, u"Theirs"_s}));
}

TEST_F(ChangedMeanwhileTest, aQuestionnaireRewrittenByTwoIsAskedAbout) {
    for (const QString& text : {u"Sturdy?"_s, u"Cheap?"_s})
        addQuestion(1, text);
    addQuestionnaire(1, addSurvey(1, {2024, 3, 5}), {1, 2});
    frmEditExistingSurvey& form = show<frmEditExistingSurvey>();
    auto* grid = control<forms::MSHFlexGrid>(form, "grdParamAndQuest");
    const auto remove = [&](int row) {
        grid->setRow(row);
        press(form, "cmdRemove");
    };
    const auto ids = [] {
        return rows(u"select questionid from responquesindex order by [Order]"_s).join(u' ');
    };
    const QString othersThree = u"update responquesindex set questionid=3 where questionid=2"_s;
    const std::tuple<Keep, QString, int> cases[] = {
        {Keep::Both, u"1 3"_s, 1}, {Keep::Stored, u"1 3"_s, 2}, {Keep::Mine, u"2"_s, 1}};
    for (const auto& [keep, kept, onShow] : cases) {
        run(u"delete from responquesindex"_s);
        addQuestionnaire(1, 1, {1, 2});
        form.toRefreshGrid();
        run(othersThree);
        asked.clear();
        answer = keep;
        remove(1);
        ASSERT_EQ(asked.size(), 1U);
        EXPECT_EQ(asked[0], (ChangedRow{u"Questionnaire of Ann, 05/03/2024"_s,
                                        {{u"Questions"_s, u"2 questions"_s,
                                          u"+ Cheap? (Delivery)\n− Sturdy? (Delivery)"_s,
                                          u"− On time? (Delivery)"_s}}}));
        EXPECT_EQ(ids(), kept);
        EXPECT_EQ(grid->Rows() - 2, onShow) << "questions in the grid";
        expectIdle();
    }
    run(u"insert into responquesindex (respondentid, surveyid, questionid, [Order]) values (1, 1, 3, 2)"_s);
    asked.clear();
    form.toSaveParamAndQuest(); // with nothing changed here
    EXPECT_EQ(ids(), u"2 3"_s);
    EXPECT_EQ(grid->Rows() - 2, 2);
    EXPECT_TRUE(asked.empty());
}

TEST_F(ChangedMeanwhileTest, aSettingLeftAloneIsNotWritten) {
    frmSetting::instance().Show();
    run(u"update setting set checkeduser=True"_s);
    press(frmSetting::instance(), "cmdOK");
    EXPECT_EQ(rows(u"select checkeduser from setting"_s), QStringList(u"True"_s));
    frmSetting::instance().Show();
    control<QRadioButton>(frmSetting::instance(), "opnSystemDefined")->click();
    press(frmSetting::instance(), "cmdOK");
    EXPECT_EQ(rows(u"select checkeduser from setting"_s), QStringList(u"False"_s));
}

TEST_F(ChangedMeanwhileTest, theDialogAsksAndLosesNothingByDefault) {
    const ChangedRow row{u"Customer Name: Acme"_s, {{u"Tel.No"_s, u"12"_s, u"99"_s, u"34"_s}}};
    const std::pair<std::function<void()>, Keep> cases[] = {
        {[] { QTest::keyClick(&frmChangedMeanwhile::instance(), Qt::Key_Return); }, Keep::Both},
        {[] { QTest::keyClick(&frmChangedMeanwhile::instance(), Qt::Key_Escape); }, Keep::Both},
        {[] { press(frmChangedMeanwhile::instance(), "cmdStored"); }, Keep::Stored},
        {[] { QTest::keyClick(&frmChangedMeanwhile::instance(), Qt::Key_M, Qt::AltModifier); }, Keep::Mine}};
    for (const auto& [act, expected] : cases) {
        QStringList shown;
        QTimer::singleShot(0, &frmChangedMeanwhile::instance(), [&] {
            const auto* grid = control<QTableWidget>(frmChangedMeanwhile::instance(), "grdFields");
            for (int column = 0; column < grid->columnCount(); ++column)
                shown << grid->item(0, column)->text();
            act();
        });
        EXPECT_EQ(frmChangedMeanwhile::ask(row), expected);
        EXPECT_EQ(shown, (QStringList{u"Tel.No"_s, u"12"_s, u"99"_s, u"34"_s}));
    }
}
} // namespace
