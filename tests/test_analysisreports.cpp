// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmCompareGroups.h"
#include "analysis/frmDateToDate.h"
#include "analysis/frmDtoDActionPlan.h"
#include "analysis/frmDtoDSatisfactionOverview.h"
#include "core/base/reports.h"
#include "platform/ado/value.h"
#include "tests/support/reporttest.h"

namespace {
const QString customer = u"Bäckerei Müller"_s;
const QString ofCustomer = u"{log.custname}='"_s + customer + u"'"_s;
const QString ofRespondent =
    u"{reportlinktable.respondentname} = ['Jörg'] and {reportlinktable.custname}=['"_s + customer +
    u"'] and {reportlinktable.sdate}=date(2002,03,15)"_s;

struct AnalysisReportsTest : ReportTest {
    /// Two respondents, two dates, unrated answers of both kinds, actions on, between and outside the dates.
    static void addAcme() {
        const int acme = addCustomer(u"Acme"_s);
        const int ann = addRespondent(acme, u"Ann"_s);
        const int bob = addRespondent(acme, u"Émile"_s);
        const int price = addParameter(u"Price"_s);
        const int fair = addQuestion(price, u"Fair?"_s);
        const int clear = addQuestion(price, u"Clear?"_s);
        addQuestion(addParameter(u"Service"_s), u"Why?"_s, false);
        const int first = addSurvey(acme, spring);
        addSurvey(acme, spring); // two surveys on one date are one entry
        const int second = addSurvey(acme, autumn);
        addQuestionnaire(ann, first, {fair, clear, 3});
        addScore(ann, fair, first, spring, 5, 8);
        addScore(bob, fair, first, spring, 4, 6);
        addScore(ann, clear, first, spring, 0, 9);
        addScore(bob, clear, first, spring, 3, 0);
        addWords(ann, 3, first, spring, u"Très bien"_s, 2);
        addWords(bob, 3, first, spring, u"No idea"_s);
        addScore(ann, fair, second, autumn, 1, 2);
        addCustomer(u"Brown"_s);
        run(u"insert into actionplan values (1, 1, '2024-03-01', 'Ring', '2024-03-31', True), "
            "(2, 1, '2024-09-01', 'Ask again', '2024-10-01', False), "
            "(3, 1, '2024-02-29', 'Too early', null, 0), (4, 1, '2025-01-01', 'Too late', null, 0), "
            "(5, 2, '2024-03-01', 'Somebody else''s', null, 0)"_s);
    }
    /// The text of a report's PDF.
    QString pages(const QString& file, const QString& selection) {
        startReport(report, file, u"CompanyName"_s, u"Title of "_s + file, selection,
                    {u"Customer='A'"_s, u"SurveyDate='B'"_s, u"Period='C'"_s});
        EXPECT_EQ(title, u"Title of "_s + file);
        return takePages().join(u' ');
    }

    crystal::CrystalReport report;
};

TEST_F(AnalysisReportsTest, surveyResponse) {
    addAcme();
    frmDateToDate& form = show<frmDateToDate>();
    auto* dates = control<forms::ListBox>(form, "lstSurveyDate");
    EXPECT_EQ(dates->ListCount(), 2);
    EXPECT_EQ(dates->Text(), u"01/03/2024");
    run(u"update questions set paramid=1"_s);
    expectInOrder(print(form, u"Survey Report"_s),
                  {u"Larkmoor Ltd"_s, u"Customer Acme"_s, u"Survey date 01/03/2024"_s, u"Price"_s,
                   u"3 answers"_s, u"Fair? Ann 5 8"_s, u"Émile 4 6"_s, u"Why? Ann 2 Très bien"_s,
                   u"Mean 4.50 7.00"_s}); // of the Score questions only
    dates->setListIndex(1);
    expectInOrder(print(form, u"Survey Report"_s), {u"Fair? Ann 1 2"_s});
    control<forms::ComboBox>(form, "cmbCustomer")->setListIndex(1);
    EXPECT_EQ(dates->ListCount(), 0);
    messages.expectBeginning(u"Error : -3100\r\n"_s); // without a date the condition is incomplete
    print(form, {});
}

TEST_F(AnalysisReportsTest, satisfactionOverview) {
    addAcme();
    auto& form = show<frmDtoDSatisfactionOverview>();
    auto* from = control<forms::DTPicker>(form, "dtFrom");
    EXPECT_EQ(from->Value(), today);
    from->setValue(spring);
    expectInOrder(print(form, u"Satisfaction Overview"_s),
                  {u"Survey Objective"_s, u"5 entries"_s, u"Price"_s, u"Clear? 01/03/2024 Ann 9"_s,
                   u"Émile 3"_s, u"Fair? 01/03/2024 Ann 5 8"_s, u"Émile 4 6"_s, u"01/09/2024 Ann 1 2"_s,
                   u"Survey Descriptive"_s, u"2 entries"_s, u"Service"_s,
                   u"Why? 01/03/2024 Ann 2 Très bien"_s, u"Émile No idea"_s, u"Planned Actions"_s,
                   u"2 entries"_s, u"Ring 01/03/2024 Completed"_s, u"Ask again 01/09/2024 Not Completed"_s});
    from->setValue(today.addDays(1)); // later than the end of the range
    EXPECT_TRUE(print(form, u"Satisfaction Overview"_s).contains(u"no answers and no actions"));
}

TEST_F(AnalysisReportsTest, improvementPlan) {
    addAcme();
    auto& form = show<frmDtoDActionPlan>();
    control<forms::DTPicker>(form, "dtFrom")->setValue(spring);
    const QString text = print(form, u"Analysis on Improvement Plan"_s);
    expectInOrder(text, {u"Customer Acme"_s, u"Period 01/03/2024 to "_s + ado::toText(today),
                         u"Not Completed"_s, u"1 action"_s, u"01/09/2024 Ask again 01/10/2024"_s,
                         u"Completed"_s, u"01/03/2024 Ring 31/03/2024"_s});
    for (const QString& absent : {u"Too early"_s, u"Too late"_s, u"Somebody"_s})
        EXPECT_FALSE(text.contains(absent)) << absent;
    const QString later = ado::toText(today.addDays(1));
    control<forms::DTPicker>(form, "dtFrom")->setValue(today.addDays(1));
    expectInOrder(print(form, u"Analysis on Improvement Plan"_s),
                  {u"Customer Acme"_s, u"Period "_s + later + u" to ", u"There are no actions"_s});
    ASSERT_TRUE(QFile::remove(home() + u"/actionplan.rpt"_s));
    messages.expectBeginning(u"Error : 20500\r\n"_s + home() + u"/actionplan.rpt"_s);
    print(form, {});
    EXPECT_EQ(MDIMain::instance().crpReport.SelectionFormula, QString());
}

TEST_F(AnalysisReportsTest, compareGroups) {
    addAcme();
    run(u"insert into segment (custid, kind, name) values (1, 'Region', 'North')"_s);
    frmCompareGroups& form = show<frmCompareGroups>();
    control<forms::ListBox>(form, "lstParameters")->setSelected(1, false);
    const auto printed = [&] {
        press(form, "cmdView");
        return print(form, u"Compare Groups Report"_s);
    };
    expectInOrder(printed(), {u"Larkmoor Ltd"_s, u"Region"_s, u"01/03/2024 to 31/12/2024"_s,
                              u"Parameters Price"_s, u"North Q1 2024 7.25 2 respondents, 2 ratings"_s,
                              u"Q3 2024 2.00 1 respondent, 1 rating"_s});
    control<QCheckBox>(form, "chkBasis")->setChecked(true);
    control<forms::ComboBox>(form, "cboView")->setListIndex(1);
    expectInOrder(printed(), {u"Parameter Weightage Score"_s,
                              u"North Price 2.60 5.00 2 of 2 respondents, 3 of 3 questions rated"_s});
    form.Show();
    control<forms::ListBox>(form, "lstGroups")->setSelected(0, false);
    EXPECT_FALSE(control<QPushButton>(form, "cmdPrint")->isVisible());
}

TEST_F(AnalysisReportsTest, registerAndQuestionnaireShowTheirOwnRecordsInOrder) {
    run(u"insert into log (custname, respname, xlsfilename, sdate, Status) values "
        "('Bäckerei Müller', 'Jörg', 'a.xls', '2002-03-15', True), "
        "('Bäckerei Müller', 'Jörg', 'b.xls', '2002-03-16', False), "
        "('Other', 'Ana', 'c.xls', '2002-03-15', False)"_s);
    runRaw(u"insert into reportlinktable (custname, respondentname, sdate, question, Parameter, Type, "
           "weightage, score) with recursive n(i) as (select 0 union all select i + 1 from n where i < 9) "
           "select 'Bäckerei Müller', name, '2002-03-15', 'Question ' || i || '.', "
           "'Parameter ' || (i % 2), -(i % 5 <> 0), 4, case when i % 5 <> 0 then 8 end "
           "from n, (select 'Jörg' as name union select 'Ana') as names"_s);
    const QString files = pages(u"log.rpt"_s, ofCustomer);
    expectInOrder(files, {u"Larkmoor Ltd"_s, customer, u"16/03/2002 Jörg b.xls Outstanding"_s,
                          u"15/03/2002 Jörg a.xls Read in"_s});
    const QString asked = pages(u"rptrating.rpt"_s, ofRespondent);
    expectInOrder(asked, {customer, u"Jörg"_s, u"15/03/2002"_s, u"Parameter 0"_s, u"5 questions"_s,
                          u"Question 0. Descriptive 4"_s, u"Question 8. Score 4 8"_s, u"Parameter 1"_s});
    EXPECT_FALSE(files.contains(u"Ana"_s) || asked.contains(u"Ana"_s));
}
} // namespace
