// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/MDIMain.h"
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "platform/forms/lists.h"
#include "search/frmSearch.h"
#include "tests/support/listview.h"
#include "tests/support/storecompare.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

class SearchTest : public StoreTest {
protected:
    static frmSearch& form() { return frmSearch::instance(); }
    static forms::ListView& list() { return *control<forms::ListView>(form(), "lsvDtls"); }
    static QLineEdit& box() { return *control<QLineEdit>(form(), "txtKeyword"); }
    static QStringList search(const QString& words) {
        box().setFocus();
        box().selectAll();
        type(words);
        key(Qt::Key_Return);
        return listed(list());
    }
    /// The action that the improvement plan shows.
    static QString shownAction() {
        return control<QLineEdit>(frmImprovementPlan::instance(), "txtDescription")->text();
    }
    /// A customer with an answer of each kind on 14/03/2006 and an action on 01/06/2006.
    static void fillSmall() {
        const QDate march(2006, 3, 14);
        addRespondent(addCustomer(u"Acme"_s), u"Ann"_s);
        addQuestion(addParameter(u"Sales"_s), u"How LATE was the van?"_s);
        addQuestion(1, u"Wishes?"_s, false);
        addSurvey(1, march);
        addQuestionnaire(1, 1, {1, 2});
        addScore(1, 1, 1, march, 4, 7);
        run(u"insert into feedbackdescriptive (respondentid, questionid, surveyid, surveydate, Description) "
            "values (1, 2, 1, '2006-03-14', 'Ann\u2019s goods came too late')"_s);
        run(u"insert into actionplan (customerid, Date, Action) values "
            "(1, '2006-06-01', 'No late van, ever'), (1, null, null)"_s);
    }
    /// 30 customers, each with a survey, an answer of each kind and an action on six dates.
    static void fillLarge() {
        run(u"insert into customer (custid, custname) with recursive n(i) as (select 1 union all select "
            "i + 1 from n where i < 30) select i, 'Customer ' || i from n"_s);
        run(u"insert into survey (custid, sdate) with recursive n(k) as (select 1 union all select k + 1 "
            "from n where k < 6) select custid, date('2024-03-02', '+' || k || ' days') from customer, n "
            "where true order by 1, k"_s);
        run(u"insert into respondent (respondentid, custid, respondentname) select custid, custid, 'Ann' "
            "from customer"_s);
        addQuestion(addParameter(u"Sales"_s), u"On time?"_s);
        addQuestion(1, u"Wishes?"_s, false);
        const QString answers =
            u" select custid, questionid, surveyid, sdate, 7 from survey, questions where Type="_s;
        const QString fields = u" (respondentid, questionid, surveyid, surveydate, weightage)"_s;
        run(u"insert into responquesindex select custid, questionid, surveyid, questionid from survey, "
            "questions"_s);
        run(u"insert into feedbackobjective"_s + fields + answers + u"True");
        run(u"insert into feedbackdescriptive"_s + fields + answers + u"False");
        run(u"insert into actionplan (customerid, Date, Action) select custid, sdate, 'Call ' || surveyid "
            "from survey"_s);
    }
};

TEST_F(SearchTest, findsKeywordsInQuestionsAnswersAndActions) {
    fillSmall();
    form().Show();
    const QString score = u"14/03/2006|How LATE was the van?|Acme|Survey (Objective)|1"_s;
    const QString words = u"14/03/2006|Wishes?|Acme|Survey (Descriptive)|1"_s;
    const QString action = u"01/06/2006|No late van, ever|Acme|Improvement Plan|1"_s;
    const std::pair<QString, QStringList> table[] = {
        {u"LATE"_s, {score, words, action}},
        {u"late van"_s, {score, words, action}}, // each once
        {u" van, nothing "_s, {action}},         // the comma belongs to the keyword
        {u"Ann's"_s, {words}},
        {u"goods wishes"_s, {words}},
        {u"x  y"_s, {score, words, action}}, // the empty keyword finds all that is not Null
        {u"a0 a1 a2 a3 a4 a5 a6 a7 a8 lorry"_s, {}},
        {u"a0 a1 a2 a3 a4 a5 a6 a7 a8 ever"_s, {action}},
        {u"late a1 a2 a3 a4 a5 a6 a7 a8 a9 b0"_s, {}}, // eleven
    };
    for (const auto& [keywords, hits] : table) {
        EXPECT_EQ(search(keywords), hits) << keywords.toStdString();
        EXPECT_EQ(value(u"select count(*) from search"_s).toInt(), hits.size());
    }
    search(u"late"_s);
    key(Qt::Key_Backspace);
    EXPECT_EQ(list().ListCount(), 3);
    box().setText(u"  "_s);
    EXPECT_EQ(list().ListCount(), 0);
    press(form(), "cmdOK");
    EXPECT_EQ(list().ListCount(), 0);
    EXPECT_EQ(value(u"select count(*) from search"_s), u"3"_s) << "blanks do not search";
    box().setText(u"late"_s);
    press(form(), "cmdOK");
    EXPECT_EQ(list().ListCount(), 3);

    runRaw(u"drop view descquery"_s); // the second pass fails; what the first has found is listed
    messages.expectBeginning(u"Error : "_s);
    EXPECT_EQ(search(u"late"_s), QStringList{score});
    runRaw(u"drop table search"_s);
    messages.expectBeginning(u"Error : "_s);
    messages.expectBeginning(u"Error :1\r\n"_s);
    EXPECT_EQ(search(u"late"_s), QStringList());
    messages.expectBeginning(u"Error :1\r\n"_s);
    form().toOpenSearchHit(u"1"_s, u"Improvement Plan"_s);
}

TEST_F(SearchTest, aHitOpensItsFormAndTheSearchStaysBehind) {
    fillLarge();
    frmImprovementPlan::instance().Show(); // stands already, at the first customer
    form().Show();
    EXPECT_EQ(search(u"wish 139"_s).size(), 181);
    clickRow(list(), 0);
    key(Qt::Key_End); // the action
    key(Qt::Key_Return);
    EXPECT_EQ(activeForm(), u"frmImprovementPlan"_s);
    EXPECT_EQ(shownAction(), u"Call 139"_s);
    EXPECT_TRUE(blnSearchOpen);
    EXPECT_EQ(strSearchKeywords, u"139"_s);
    EXPECT_FALSE(blnSearchToImprovement || blnSearchToFeedback) << "the form has taken its flag";
    EXPECT_EQ(intSearchIndex, 181);
    key(Qt::Key_Escape);
    EXPECT_EQ(frmImprovementPlan::loaded(), nullptr);
    EXPECT_EQ(activeForm(), u"frmSearch"_s);

    list().scrollTo(list().model()->index(100, 0));
    clickRow(list(), 100);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {},
                       list().visualRect(list().model()->index(100, 0)).center());
    EXPECT_EQ(activeForm(), u"frmFeedBackObj"_s);
    frmFeedBackObj& feedback = frmFeedBackObj::instance();
    EXPECT_EQ(control<QLabel>(feedback, "lblSDate")->text(), list().Text(100));
    EXPECT_EQ(control<forms::ComboBox>(feedback, "cmbCusName")->Text(), list().Text(100, 2));
    key(Qt::Key_Escape);

    run(u"delete * from search"_s); // by another program; the flag goes with the search that set it
    list().setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(activeForm(), u"frmSearch"_s);
    key(Qt::Key_Escape);
    EXPECT_FALSE(blnSearchOpen);
    frmFeedBackObj::instance().Show();
    EXPECT_FALSE(blnSearchToFeedback);
}

TEST_F(SearchTest, findingAndDeletingActionsTouchesNothingElseInTheStore) {
    fillLarge();
    const QStringList before = storeRows(*cnnMain);
    form().Show();
    const QString third = u"03/03/2024|Call 139|Customer 24|Improvement Plan|139"_s;
    EXPECT_EQ(search(u"39 139"_s),
              QStringList({u"05/03/2024|Call 39|Customer 7|Improvement Plan|39"_s, third}));
    list().setFocus();
    key(Qt::Key_Home);
    key(Qt::Key_Return);
    auto& actions = *control<forms::ListView>(frmImprovementPlan::instance(), "lsvDtls");
    EXPECT_EQ(actions.ListCount(), 6);
    EXPECT_EQ(shownAction(), u"Call 39"_s);
    const auto deleteRow = [&](int row, forms::Answer answer) {
        messages.expect(u"Do you want to delete"_s, forms::style::yesNo, u"Gaugewell v2.1"_s, answer);
        clickRow(actions, row, Qt::RightButton);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_D);
    };
    deleteRow(2, forms::Answer::No);
    run(u"delete * from search"_s);
    EXPECT_EQ(storeRows(*cnnMain), before);
    deleteRow(2, forms::Answer::Yes);
    EXPECT_EQ(actions.ListCount(), 5);
    EXPECT_EQ(search(u"39"_s), QStringList{third});
    const QStringList after = storeRows(*cnnMain);
    EXPECT_EQ(goneRows(before, after), QStringList{u"actionplan|39|7|05/03/2024|Call 39||False"_s});
    EXPECT_EQ(goneRows(after, before),
              QStringList{u"search|139|Call 139|Customer 24|Improvement Plan|03/03/2024"_s});
}

TEST_F(SearchTest, aHundredThousandHitsAreListedAndTheLastOneCanBeOpened) {
    run(u"insert into customer (custid, custname) values (1, 'Acme')"_s);
    run(u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 100000) insert into "
        "actionplan (customerid, Date, Action) select 1, date('1800-01-01', '+' || i || ' days'), 'Action ' "
        "|| i from n"_s);
    form().Show();
    EXPECT_EQ(search(u"action"_s).size(), 100000);
    list().setFocus();
    key(Qt::Key_End);
    key(Qt::Key_Return);
    EXPECT_EQ(intSearchIndex, 100000);
    EXPECT_EQ(shownAction(), u"Action 100000"_s);
}

} // namespace
