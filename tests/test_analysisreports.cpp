// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmDateToDate.h"
#include "analysis/frmDtoDActionPlan.h"
#include "analysis/frmDtoDSatisfactionOverview.h"
#include "analysis/frmSatisfactionIndex.h"
#include "core/MDIMain.h"
#include "platform/forms/clock.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/lists.h"
#include "tests/support/reporttest.h"

#include <QAction>
#include <QElapsedTimer>
#include <QImage>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QDate spring{2024, 3, 1};
const QDate autumn{2024, 9, 1};

class AnalysisReportsTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        forms::todaySeat = [] { return autumn; };
    }
    void TearDown() override {
        ReportTest::TearDown();
        forms::todaySeat = [] { return QDate::currentDate(); };
    }
    static void addReply(int respondentid, int questionid, int weightage, const QString& words) {
        add(u"feedbackdescriptive"_s, {{"respondentid", respondentid},
                                       {"questionid", questionid},
                                       {"surveydate", spring},
                                       {"weightage", weightage},
                                       {"Description", words}});
    }
    static void addAction(int customerid, const QDate& date, const QString& text, bool done = false) {
        add(u"actionplan"_s, {{"customerid", customerid},
                              {"Date", date},
                              {"Action", text},
                              {"targetdate", date.addDays(30)},
                              {"Status", done}});
    }
    /// Two respondents, two dates, unrated answers of both kinds, actions on, between and outside the dates.
    void addAcme() {
        acme = addCustomer(u"Acme"_s);
        const int ann = addRespondent(acme, u"Ann"_s);
        const int bob = addRespondent(acme, u"Émile"_s);
        const int price = addParameter(u"Price"_s);
        const int fair = addQuestion(price, u"Fair?"_s);
        const int clear = addQuestion(price, u"Clear?"_s);
        const int why = addQuestion(addParameter(u"Service"_s), u"Why?"_s, false);
        const int first = addSurvey(acme, spring);
        addSurvey(acme, spring); // a date with two surveys is one entry
        const int second = addSurvey(acme, autumn);
        addQuestionnaire(ann, first, {fair, clear, why});
        addScore(ann, fair, first, spring, 5, 8);
        addScore(bob, fair, first, spring, 4, 6);
        addScore(ann, clear, first, spring, 0, 9);
        addScore(bob, clear, first, spring, 3, 0);
        addReply(ann, why, 2, u"Très bien"_s);
        addReply(bob, why, 0, u"No idea"_s);
        addScore(ann, fair, second, autumn, 1, 2);
        addAction(acme, spring, u"Ring"_s, true);
        addAction(acme, autumn, u"Visit"_s);
        addAction(acme, spring.addDays(-1), u"Too early"_s);
        addAction(acme, autumn.addDays(1), u"Too late"_s);
        addAction(addCustomer(u"Brown"_s), spring, u"Somebody else's"_s);
    }
    static void openByMenu(const char* entry) {
        MDIMain::instance().findChild<QAction*>(QLatin1StringView(entry))->trigger();
    }
    QString print(QWidget& form, const QString& expectedTitle) {
        title.clear();
        press(form, "cmdPrint");
        EXPECT_EQ(title, expectedTitle);
        EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), QString());
        return takePages().join(u' ');
    }

    int acme = 0;
};

TEST_F(AnalysisReportsTest, surveyResponse) {
    addAcme();
    openByMenu("mnuSurveyResponseAnalysis");
    ASSERT_NE(frmDateToDate::loaded(), nullptr);
    frmDateToDate& form = frmDateToDate::instance();
    auto* dates = control<forms::ListBox>(form, "lstSurveyDate");
    EXPECT_EQ(dates->ListCount(), 2);
    EXPECT_EQ(dates->Text(), u"01/03/2024");
    const QString text = print(form, u"Survey Report"_s);
    EXPECT_EQ(rows(u"select Parameter, question, responname, sc, wt, Type, Reply from report"_s),
              (QStringList{u"Price|Fair?|Ann|8|5|True|"_s, u"Price|Fair?|Émile|6|4|True|"_s,
                           u"Service|Why?|Ann||2|False|Très bien"_s}));
    expectInOrder(text, {u"Larkmoor Ltd"_s, u"Price"_s, u"2 answers"_s, u"Fair? Ann 5 8"_s, u"Émile 4 6"_s,
                         u"Mean 4.50 7.00"_s, u"Service"_s, u"1 answer"_s, u"Why? Ann 2 Très bien"_s});
    dates->setListIndex(1);
    expectInOrder(print(form, u"Survey Report"_s), {u"Fair? Ann 1 2"_s});
    control<forms::ComboBox>(form, "cmbCustomer")->setListIndex(1);
    EXPECT_EQ(dates->ListCount(), 0);
    messages.expectBeginning(u"Error : "_s); // no date is no condition
    print(form, {});
    key(Qt::Key_Escape);
    EXPECT_EQ(frmDateToDate::loaded(), nullptr);
}

TEST_F(AnalysisReportsTest, satisfactionOverview) {
    addAcme();
    EXPECT_FALSE(MDIMain::instance().findChild<QAction*>(u"mnuSatisfactionOverviewAnalysis"_s)->isVisible());
    frmDtoDSatisfactionOverview& form = frmDtoDSatisfactionOverview::instance();
    form.Show();
    auto* from = control<forms::DTPicker>(form, "dtFrom");
    EXPECT_EQ(from->Value(), autumn);
    from->setValue(spring);
    const QString text = print(form, u"Satisfaction Overview"_s);
    EXPECT_EQ(rows(u"select tablename, Parameter, question, responname, wt, Type, sdate from reporttable"_s),
              (QStringList{u"Survey Descriptive|Service|Why?|Ann|2|Très bien|01/03/2024"_s,
                           u"Survey Descriptive|Service|Why?|Émile||No idea|01/03/2024"_s,
                           u"Survey Objective|Price|Fair?|Ann|5|8|01/03/2024"_s,
                           u"Survey Objective|Price|Clear?|Ann||9|01/03/2024"_s,
                           u"Survey Objective|Price|Fair?|Ann|1|2|01/09/2024"_s,
                           u"Survey Objective|Price|Fair?|Émile|4|6|01/03/2024"_s,
                           u"Survey Objective|Price|Clear?|Émile|3||01/03/2024"_s,
                           u"Planned Actions||Ring|||Completed|01/03/2024"_s,
                           u"Planned Actions||Visit|||Not Completed|01/09/2024"_s}));
    expectInOrder(text, {u"Survey Objective"_s, u"5 entries"_s, u"Survey Descriptive"_s, u"2 entries"_s,
                         u"Planned Actions"_s, u"2 entries"_s});
    from->setValue(autumn.addDays(1)); // later than the end of the range
    EXPECT_TRUE(print(form, u"Satisfaction Overview"_s).contains(u"no answers and no actions"));
}

TEST_F(AnalysisReportsTest, improvementPlan) {
    addAcme();
    openByMenu("mnuImprovementPlanAnalysis");
    ASSERT_NE(frmDtoDActionPlan::loaded(), nullptr);
    frmDtoDActionPlan& form = frmDtoDActionPlan::instance();
    control<forms::DTPicker>(form, "dtFrom")->setValue(spring);
    const QString text = print(form, u"Analysis on Improvement Plan"_s);
    expectInOrder(text, {u"Acme"_s, u"Not completed"_s, u"01/09/2024 Visit 01/10/2024"_s, u"Completed"_s,
                         u"01/03/2024 Ring 31/03/2024"_s});
    for (const QString& absent : {u"Too early"_s, u"Too late"_s, u"Somebody"_s})
        EXPECT_FALSE(text.contains(absent)) << absent.toStdString();
    EXPECT_EQ(MDIMain::instance().crpReport.SelectionFormula, QString());
    ASSERT_TRUE(QFile::remove(home() + u"/actionplan.rpt"_s));
    messages.expectBeginning(u"Error : 20500\r\n"_s + home() + u"/actionplan.rpt"_s);
    print(form, {});
}

TEST_F(AnalysisReportsTest, satisfactionIndex) {
    addAcme();
    openByMenu("mnuSatisfactionIndex");
    frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
    press(form, "cmdView");
    const QString text = print(form, u"Survey Report"_s);
    expectInOrder(text, {u"Larkmoor Ltd"_s, u"Acme"_s, u"Price"_s, u"01/03/2024"_s});
    EXPECT_GT(QImage(home() + u"/satis.bmp"_s).width(), 2000);
}

TEST_F(AnalysisReportsTest, withoutACustomerNothingIsPrinted) {
    frmDateToDate::instance().Show();
    print(frmDateToDate::instance(), {});
    frmDtoDSatisfactionOverview::instance().Show();
    print(frmDtoDSatisfactionOverview::instance(), {});
    frmDtoDActionPlan::instance().Show();
    print(frmDtoDActionPlan::instance(), {});
}

/// 5,000 answers: the report opens in time, and heading and page number stand on each of its pages.
TEST_F(AnalysisReportsTest, largeReports) {
    addAcme();
    cnnMain->BeginTrans();
    runRaw(u"with recursive n(i) as (select 1 union all select i + 1 from n where i < 5000) "
           "insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, score, weightage) "
           "select 1, 1, 3, '2024-09-01', 7, 3 from n"_s);
    cnnMain->CommitTrans();
    frmDateToDate& form = frmDateToDate::instance();
    form.Show();
    control<forms::ListBox>(form, "lstSurveyDate")->setListIndex(1);
    QElapsedTimer timer;
    timer.start();
    press(form, "cmdPrint");
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    EXPECT_LT(timer.elapsed(), 2000);
    const QStringList pages = takePages();
    EXPECT_GT(pages.size(), 50);
    qsizetype total = 0;
    for (qsizetype i = 0; i < pages.size(); ++i) {
        expectInOrder(pages[i],
                      {u"Answer in words"_s, u"Price"_s, u"Page %1 of %2"_s.arg(i + 1).arg(pages.size())});
        total += pages[i].count(u" 3 7"_s);
    }
    EXPECT_EQ(total, 5000);
}

} // namespace
