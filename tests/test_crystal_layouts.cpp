// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/failure.h"
#include "core/reports.h"
#include "tests/support/reporttest.h"

#include <QImage>

using namespace Qt::StringLiterals;

namespace {

const QString customer = u"Bäckerei Müller"_s;

/// The layouts of the program over a store with three respondents, eight parameters and forty questions.
class LayoutTest : public ReportTest {
protected:
    void SetUp() override {
        ReportTest::SetUp();
        QImage picture(300, 200, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        ASSERT_TRUE(picture.save(home() + u"/satis.bmp"_s) && picture.save(home() + u"/perform.bmp"_s));
    }

    static void fill() {
        const int other = addCustomer(u"Other"_s);
        const int custid = addCustomer(customer);
        cnnMain->BeginTrans();
        for (int question = 0; question < 40; ++question)
            addAnswers(question);
        for (int i = 0; i < 8; ++i) {
            const QString parameter = u"Parameter %1"_s.arg(i);
            add(u"linetable"_s, {{"custname", customer},
                                 {"Parameter", parameter},
                                 {"sindex", 7.25 - i},
                                 {"sdate", QDate(2002, 3, 15)}});
            add(u"scattertable"_s,
                {{"custname", customer}, {"Parameter", parameter}, {"wt", 5.5}, {"sc", 9.12 - i}});
        }
        const auto action = [](int owner, const QDate& date, const QString& text, bool done) {
            add(u"actionplan"_s, {{"customerid", owner},
                                  {"Date", date},
                                  {"Action", text},
                                  {"targetdate", date.addDays(30)},
                                  {"Status", done}});
        };
        action(custid, {2002, 3, 14}, u"Too early"_s, false);
        action(custid, {2002, 3, 15}, u"Ring the café"_s, true);
        action(custid, {2002, 4, 1}, u"Visit"_s, false);
        action(other, {2002, 3, 20}, u"Somebody else's"_s, false);
        add(u"reporttable"_s, {{"question", u"Ring the café"_s},
                               {"Type", u"Completed"_s},
                               {"sdate", QDate(2002, 3, 15)},
                               {"tablename", u"Planned Actions"_s}});
        add(u"log"_s, {{"custname", customer},
                       {"respname", u"Jörg"_s},
                       {"xlsfilename", u"a.xls"_s},
                       {"sdate", QDate(2002, 3, 15)},
                       {"Status", true}});
        add(u"log"_s, {{"custname", customer},
                       {"respname", u"Ana"_s},
                       {"xlsfilename", u"b.xls"_s},
                       {"sdate", QDate(2002, 6, 15)}});
        add(u"log"_s, {{"custname", u"Other"_s}, {"xlsfilename", u"c.xls"_s}});
        cnnMain->CommitTrans();
    }

    static void addAnswers(int question) {
        const QString text = u"Question %1."_s.arg(question);
        const QString parameter = u"Parameter %1"_s.arg(question % 8);
        const bool score = question % 5 != 0;
        for (const QString& name : {u"Émilie"_s, u"Jörg"_s, u"Ana"_s}) {
            add(u"report"_s, {{"responname", name},
                              {"question", text},
                              {"Parameter", parameter},
                              {"Type", score},
                              {"wt", 4},
                              {score ? "sc" : "Reply", score ? QVariant(8) : QVariant(u"Très bien"_s)}});
            add(u"reporttable"_s, {{"responname", name},
                                   {"question", text},
                                   {"Parameter", parameter},
                                   {"wt", 4},
                                   {"Type", score ? u"8"_s : u"Très bien"_s},
                                   {"sdate", QDate(2002, 3, 15)},
                                   {"tablename", score ? u"Survey Objective"_s : u"Survey Descriptive"_s}});
            add(u"reportlinktable"_s, {{"custname", customer},
                                       {"respondentname", name},
                                       {"sdate", QDate(2002, 3, 15)},
                                       {"question", text},
                                       {"Parameter", parameter},
                                       {"Type", score},
                                       {"weightage", 4},
                                       {"score", score ? QVariant(8) : QVariant()}});
        }
    }

    /// The pages of a report as another program reads its PDF.
    QStringList pages(const QString& file, const QString& formula, const QString& selection) {
        toStartReport(report, file, formula, u"Title of "_s + file, selection,
                      {u"Customer='"_s + customer + u"'", u"SurveyDate='15/03/2002'"_s, u"Period='2002'"_s});
        EXPECT_TRUE(report.Formulas(1).isEmpty());
        EXPECT_EQ(title, u"Title of "_s + file);
        EXPECT_TRUE(report.SelectionFormula.isEmpty());
        return takePages();
    }

    crystal::CrystalReport report;
};

struct Case {
    QString file, formula, selection;
    QString heading;     // of a column, on every page
    QStringList inOrder; // over all pages
    QStringList absent;
    int rows; // how often `counted` stands in the report
    QString counted, empty;
};

std::vector<Case> cases() {
    const QString actions = u"{action.custname}='"_s + customer + u"' and {action.date}>="_s +
                            toFormulaDate(u"15/03/2002"_s) + u"and {action.date}<="_s +
                            toFormulaDate(u"01/04/2002"_s);
    const QString rating =
        u"{reportlinktable.respondentname} = ['Jörg'] and {reportlinktable.custname}=['"_s + customer +
        u"'] and {reportlinktable.sdate}="_s + toFormulaDate(u"15/03/2002"_s);
    const QString capital = u"CompanyName"_s;
    const QString small = u"companyname"_s;
    return {
        {u"actionplan.rpt"_s,
         capital,
         actions,
         u"Target date"_s,
         {customer, u"15/03/2002"_s, u"Not completed"_s, u"1 action"_s, u"01/04/2002 Visit 01/05/2002"_s,
          u"Completed"_s, u"15/03/2002 Ring the café 14/04/2002"_s},
         {u"Too early"_s, u"Somebody"_s},
         2,
         u"1 action"_s,
         u"There are no actions in this period."_s},
        {u"satisfaction.rpt"_s,
         capital,
         {},
         u"Score, answer or status"_s,
         {u"Customer "_s + customer, u"Period 2002"_s, u"Survey Objective"_s, u"96 entries"_s,
          u"Parameter 0"_s, u"Question 16. 15/03/2002 Ana 4 8"_s, u"Survey Descriptive"_s, u"24 entries"_s,
          u"Parameter 0"_s, u"Question 0. 15/03/2002 Ana 4 Très bien"_s, u"Émilie"_s, u"Planned Actions"_s,
          u"1 entry"_s, u"Ring the café 15/03/2002 Completed"_s},
         {},
         96,
         u"4 8"_s,
         u"There are no answers and no actions in this period."_s},
        {u"surveyresponse.rpt"_s,
         capital,
         {},
         u"Answer in words"_s,
         {u"Customer "_s + customer, u"Survey date 15/03/2002"_s, u"Parameter 0"_s, u"15 answers"_s,
          u"Question 16. Ana 4 8"_s, u"Émilie 4 8"_s, u"Jörg 4 8"_s, u"Question 0. Ana 4 Très bien"_s,
          u"Mean 4.00 8.00"_s, u"Parameter 7"_s},
         {},
         24,
         u"Très bien"_s,
         u"There are no rated answers on this date."_s},
        {u"satisfactionindex.rpt"_s,
         small,
         {},
         u"Survey date"_s,
         {customer, u"Parameter 0 15/03/2002 7.25"_s, u"Parameter 7 15/03/2002 0.25"_s},
         {},
         10,
         u"15/03/2002"_s,
         u"There is no satisfaction index in this period."_s},
        {u"scatter.rpt"_s,
         small,
         {},
         u"Mean weightage"_s,
         {customer, u"Parameter 7 5.50 2.12"_s, u"Parameter 0 5.50 9.12"_s},
         {},
         8,
         u" 5.50 "_s,
         u"There are no rated answers on this date."_s},
        {u"rptrating.rpt"_s,
         capital,
         rating,
         u"Kind"_s,
         {customer, u"Jörg"_s, u"15/03/2002"_s, u"Parameter 0"_s, u"5 questions"_s,
          u"Question 0. In words 4"_s, u"Question 8. Score 4 8"_s, u"Parameter 7"_s},
         {u"Ana"_s, u"Émilie"_s},
         32,
         u"Score 4 8"_s,
         u"There are no questions for this respondent and date."_s},
        {u"log.rpt"_s,
         capital,
         u"{log.custname}='"_s + customer + u"'"_s,
         u"Survey file"_s,
         {customer, u"15/06/2002 Ana b.xls Outstanding"_s, u"15/03/2002 Jörg a.xls Read in"_s},
         {u"c.xls"_s},
         2,
         u".xls"_s,
         u"No survey file has been made for this customer."_s},
    };
}

TEST_F(LayoutTest, everyReportShowsItsRows) {
    fill();
    for (const Case& test : cases()) {
        SCOPED_TRACE(test.file.toStdString());
        const QStringList all = pages(test.file, test.formula, test.selection);
        for (qsizetype i = 0; i < all.size(); ++i)
            expectInOrder(all[i], {test.heading, u"Page %1 of %2"_s.arg(i + 1).arg(all.size())});
        const QString text = all.join(u' ');
        EXPECT_TRUE(all.value(0).startsWith(u"Larkmoor Ltd "_s));
        expectInOrder(text, test.inOrder);
        EXPECT_EQ(text.count(test.counted), test.rows) << text.toStdString();
        for (const QString& word : test.absent)
            EXPECT_FALSE(text.contains(word)) << word.toStdString();
    }
}

TEST_F(LayoutTest, everyReportSaysThatItIsEmpty) {
    for (const Case& test : cases()) {
        SCOPED_TRACE(test.file.toStdString());
        const QStringList all = pages(test.file, test.formula, test.selection);
        ASSERT_EQ(all.size(), 1);
        expectInOrder(all.front(), {test.empty, u"Page 1 of 1"_s});
    }
}

TEST_F(LayoutTest, aFailureReachesTheStandardMessageOnce) {
    ASSERT_TRUE(QFile::remove(home() + u"/perform.bmp"_s));
    messages.expect(u"Error : 20500\r\n%1/scatter.rpt, line 13: The picture '%1/perform.bmp' is not there or "
                    "cannot be read."_s.arg(home()));
    EXPECT_FALSE(guarded({}, [this] { toStartReport(report, u"scatter.rpt"_s, u"companyname"_s, u"T"_s); }));
    messages.expectBeginning(u"Error : 20500\r\n"_s + home() +
                             u"/log.rpt: The selection formula cannot be read"_s);
    EXPECT_FALSE(guarded({}, [this] {
        toStartReport(report, u"log.rpt"_s, u"CompanyName"_s, u"T"_s, u"{log.custname}='O'Hara'"_s);
    }));
    EXPECT_TRUE(report.SelectionFormula.isEmpty());
    EXPECT_EQ(shown, nullptr);
}

} // namespace
