// SPDX-License-Identifier: GPL-3.0-or-later
#include "feedback/frmFeedBackObj.h"
#include "improvement/frmImprovementPlan.h"
#include "search/frmSearch.h"
#include "tests/support/listview.h"

namespace {
struct SearchTest : StoreTest {
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
    /// Opens the first hit.
    static void openHit() {
        form().Show();
        clickRow(list(), 0);
        key(Qt::Key_Return);
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
};

TEST_F(SearchTest, findsKeywordsInQuestionsAnswersAndActions) {
    fillSmall();
    control<QAction>(MDIMain::instance(), "mnuSearch")->trigger();
    const QString score = u"14/03/2006|How LATE was the van?|Acme|Survey (Objective)|1"_s;
    const QString words = u"14/03/2006|Wishes?|Acme|Survey (Descriptive)|1"_s;
    const QString action = u"01/06/2006|No late van, ever|Acme|Improvement Plan|1"_s;
    const std::pair<QString, QStringList> table[] = {
        {u"LATE"_s, {score, words, action}},
        {u"late van"_s, {score, words, action}}, // each only once
        {u" van, nothing "_s, {action}},         // the comma belongs to the keyword
        {u"Ann's"_s, {words}},
        {u"x  y"_s, {score, words, action}}, // the empty keyword finds all that is not Null
        {u"a0 a1 a2 a3 a4 a5 a6 a7 a8 ever"_s, {action}},
        {u"late a1 a2 a3 a4 a5 a6 a7 a8 a9 b0"_s, {}}, // eleven
    };
    for (const auto& [keywords, hits] : table) {
        EXPECT_EQ(search(keywords), hits) << keywords;
        EXPECT_EQ(value(u"select count(*) from search"_s).toInt(), hits.size());
    }

    runRaw(u"drop view descquery"_s); // the second pass fails; the hits of the first are listed
    expectFault(NoTable);
    EXPECT_EQ(search(u"late"_s), QStringList{score});
}

TEST_F(SearchTest, aHitOpensItsFormAndTheSearchStaysBehind) {
    fillSmall();
    form().Show();
    search(u"late"_s);
    clickRow(list(), 0);
    key(Qt::Key_End); // the action
    key(Qt::Key_Return);
    EXPECT_EQ(shownAction(), u"No late van, ever"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(activeForm(), u"frmSearch"_s);

    clickRow(list(), 1);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {},
                       list().visualRect(list().model()->index(1, 0)).center());
    EXPECT_EQ(activeForm(), u"frmFeedBackObj"_s);
    key(Qt::Key_Escape);

    run(u"delete * from search"_s); // by another program; the flag belongs to the search that set it
    list().setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(activeForm(), u"frmSearch"_s);
    key(Qt::Key_Escape);
    EXPECT_FALSE(blnSearchOpen);
    frmFeedBackObj::instance().Show();
    EXPECT_FALSE(blnSearchToFeedback);
}

TEST_F(SearchTest, aHitIsFoundInAnOlderFormOrNothingIsShownForIt) {
    fillSmall();
    run(u"update actionplan set Date = '2024-03-05' where Action is null"_s); // not the hit's
    frmFeedBackObj& feedback = show<frmFeedBackObj>();
    frmImprovementPlan& plan = show<frmImprovementPlan>();
    const QDate march(2024, 3, 5);
    const int aaron = addCustomer(u"Aaron"_s);
    const int bea = addRespondent(aaron, u"Bea"_s);
    const int asked = addQuestion(1, u"Is it fair?"_s);
    const int survey = addSurvey(aaron, march);
    addQuestionnaire(bea, survey, {asked});
    addScore(bea, asked, survey, march, 7, 8);
    run(u"insert into actionplan (customerid, Date, Action) values (2, '2024-03-04', 'Late again')"_s);
    form().Show();
    search(u"fair"_s);
    const auto* grid = control<forms::MSHFlexGrid>(feedback, "grdDtls");
    openHit();
    EXPECT_EQ(control<forms::ComboBox>(feedback, "cmbCusName")->Text(), u"Aaron"_s);
    EXPECT_EQ(grid->TextMatrix(1, 2), u"7"_s);
    run(u"delete * from survey"_s);
    messages.expectInformation(u"The survey of this hit is no longer there."_s);
    openHit();
    EXPECT_EQ(grid->TextMatrix(1, 1), QString()) << "nothing else is shown for it";

    form().Show();
    search(u"again"_s);
    const auto customer = [&] { return control<forms::ListBox>(plan, "lstCusName")->Text(); };
    openHit();
    EXPECT_EQ(customer() + shownAction(), u"AaronLate again"_s);
    run(u"delete * from customer where custid = 2"_s);
    messages.expectInformation(u"The customer of this hit is no longer there."_s);
    openHit();
    EXPECT_EQ(customer() + shownAction(), QString());
    EXPECT_EQ(control<forms::ListView>(plan, "lsvDtls")->ListCount(), 0);
}
} // namespace
