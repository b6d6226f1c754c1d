// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/satisfactionindex.h"
#include "analysis/frmSatisfactionIndex.h"
#include "platform/chart/mschart.h"
#include "tests/support/listview.h"
#include "tests/support/reporttest.h"

namespace {
constexpr auto none = std::nullopt;
constexpr std::int16_t largest = 32767, smallest = -32768;

TEST(SatisfactionIndex, ofGroups) {
    const std::tuple<const char*, std::vector<RatedAnswer>, double> cases[] = {
        {"no answer", {}, 0},
        {"worked example: a skipped row stays in the count", {{5, 8}, {3, 6}, {0, 9}}, 7.333333492279053},
        {"a weightage without a score weighs nothing", {{5, 0}, {5, 8}}, 8},
        {"Null in either is not rated", {{none, 9}, {4, none}, {4, 6}, {none, none}}, 6},
        {"nothing weighed", {{0, 9}, {0, 5}}, 0},
        // 5 x 0.5 = 2.5 -> 2, then 2 + 1 x 1.5 = 3.5 -> 4
        {"ties go to even in each step", {{1, 5}, {3, 1}}, 2},
        // 3 x 7.0588 and 15.0588 are 36.24 in all; each step loses its 0.0588
        {"rounding is in every step and not once", {{3, 10}, {3, 10}, {3, 10}, {8, 8}}, 9},
        // 3 x 1.4 and 2 x 0.4 are 5 in all
        {"fractions below a half are lost one by one", {{7, 1}, {7, 1}, {7, 1}, {2, 1}, {2, 1}}, 3.0 / 5},
        {"negative ratings", {{-5, 8}, {-3, 6}}, 7},
        {"weightages that cancel", {{5, 8}, {-5, 6}}, 0},
        {"the largest sum", {{1, largest}}, largest},
        {"the smallest sum", {{1, smallest}}, smallest},
        {"the sum of the weightages may pass 16 bits", {{largest, 1}, {largest, 1}, {largest, 1}}, 1},
    };
    for (const auto& [what, answers, index] : cases)
        EXPECT_EQ(satisfactionIndex(answers), static_cast<float>(index)) << what;
}

TEST(SatisfactionIndex, leavingSixteenBitsIsAnOverflow) {
    using Group = std::vector<RatedAnswer>;
    for (const Group& answers : {Group{{1, largest}, {1, 1}}, Group{{1, smallest}, {1, -1}},
                                 Group{{1, largest}, {1, 1}, {1, -1}}, Group{{largest, largest}, {0, 0}}})
        EXPECT_THROW(satisfactionIndex(answers), Failure);
}

const QDate summer{2024, 6, 1};

struct SatisfactionIndexTest : ReportTest {
    /// Acme has answers to Price on three dates, to Service on two, to Quality on none; Brown has nothing.
    void SetUp() override {
        ReportTest::SetUp();
        const int acme = addCustomer(u"Acme"_s);
        const int ann = addRespondent(acme, u"Ann"_s);
        const int bob = addRespondent(acme, u"Bob"_s);
        const int price = addParameter(u"Price"_s);
        const int priceA = addQuestion(price, u"Fair?"_s);
        const int priceB = addQuestion(price, u"Clear?"_s);
        const int service = addQuestion(addParameter(u"Service"_s), u"Quick?"_s);
        const int quality = addQuestion(addParameter(u"Quality"_s), u"Lasting?"_s);
        for (const QDate& date : {spring, summer, autumn})
            addQuestionnaire(ann, addSurvey(acme, date), {priceA, priceB, service, quality});
        addScore(ann, priceA, 1, spring, 5, 8); // two respondents in one group; the last answer is not rated
        addScore(ann, priceB, 1, spring, 3, 6);
        addScore(bob, priceA, 1, spring, 0, 9);
        addScore(ann, priceA, 2, summer, 2, 9);
        addScore(ann, priceA, 3, autumn, 4, 7);
        addScore(ann, service, 1, spring, 1, 4);
        addScore(ann, service, 2, summer, 5, 0); // a row with index 0
        addScore(ann, service, 3, autumn, 1, 10);
        addCustomer(u"Brown"_s);
        form().Show();
        parameters = control<forms::ListBox>(form(), "lstParameter");
        from = control<forms::DTPicker>(form(), "dtFrom");
        to = control<forms::DTPicker>(form(), "dtTo");
        drawn = control<chart::MSChart>(form(), "mschart");
    }
    static frmSatisfactionIndex& form() { return frmSatisfactionIndex::instance(); }
    static void view() { press(form(), "cmdView"); }
    void choose(std::initializer_list<const char*> names) {
        for (int i = 0; i < parameters->ListCount(); ++i)
            parameters->setSelected(
                i, std::count(names.begin(), names.end(), parameters->List(i).toStdString()));
    }
    void expectNoRecords() {
        messages.expectInformation(u"No record(s) present to evaluates Satisfaction Index"_s);
    }
    void expectTip(int point, const QString& index) {
        messages.expect(u"Satisfaction Index : "_s + index);
        QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(1, point));
    }
    static QStringList lines() {
        return rows(u"select Parameter, sdate, sindex, custname from linetable order by Parameter, sdate"_s);
    }

    forms::ListBox* parameters = nullptr;
    forms::DTPicker *from = nullptr, *to = nullptr;
    chart::MSChart* drawn = nullptr;
};

TEST_F(SatisfactionIndexTest, viewFillsTheTablesAndTheChart) {
    choose({"Price", "Quality", "Service"});
    view();
    EXPECT_EQ(lines(), (QStringList{u"Price|01/03/2024|7.3333335|Acme"_s, u"Price|01/06/2024|9|Acme"_s,
                                    u"Price|01/09/2024|7|Acme"_s, u"Service|01/03/2024|4|Acme"_s,
                                    u"Service|01/06/2024|0|Acme"_s, u"Service|01/09/2024|10|Acme"_s}));
    ASSERT_EQ(drawn->RowCount(), 3);
    ASSERT_EQ(drawn->SeriesCount(), 3);
    for (int i = 1; i <= 3; ++i) { // neither a parameter without results nor an index of 0 is a point
        const QString name = parameters->List(i - 1);
        for (int row = 1; row <= 3; ++row)
            EXPECT_EQ(drawn->GetData(row, i).has_value(),
                      name == u"Price" || (name == u"Service" && row != 2));
    }
    expectIdle();
}

TEST_F(SatisfactionIndexTest, datesAreInclusiveAndAPointShowsItsIndex) {
    choose({"Price"});
    view();
    expectTip(1, u"7.3333335"_s);
    to->setValue(summer);
    from->setFocus(Qt::TabFocusReason);
    type(u"1/6/2024"_s);
    key(Qt::Key_V, Qt::AltModifier); // includes the date being typed
    EXPECT_EQ(lines(), QStringList{u"Price|01/06/2024|9|Acme"_s});
    EXPECT_EQ(drawn->RowCount(), 1);
    expectTip(1, u"9"_s);

    expectNoRecords(); // "from" is after "to"
    from->setValue(autumn);
    view();
    EXPECT_FALSE(drawn->isVisible());
    EXPECT_EQ(lines(), QStringList());
}

TEST_F(SatisfactionIndexTest, theBasisStandsInTheListTheTipAndTheChart) {
    const int price = value(u"select min(questionid) from questions"_s).toInt();
    for (const int number : {3, 4, 5, 6, 7}) { // two of them do not answer
        const int respondent = addRespondent(1, QString::number(number));
        for (const int survey : {1, 2})
            addQuestionnaire(respondent, survey, {price});
        if (number > 5)
            continue;
        addScore(respondent, price, 1, spring, number, 6);
        addScore(respondent, price, 2, summer, number, 9);
    }
    choose({"Price", "Service"});
    view();
    const QStringList linesWithout = lines();
    QImage plain = drawn->Picture();
    auto* basis = control<QCheckBox>(form(), "chkBasis");
    EXPECT_FALSE(basis->isChecked() || control<QWidget>(form(), "lsvBasis")->isVisible());
    QTest::keyClick(&form(), Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(lines(), linesWithout);
    QStringList basisRows;
    for (const QString& row : listed(*control<forms::ListView>(form(), "lsvBasis")))
        basisRows << row.section(u'|', 1, 1) + u' ' + row.section(u'|', 3, 5).replace(u'|', u' ');
    EXPECT_EQ(
        basisRows,
        (QStringList{u"01/03/2024 5.51 to 7.16 4 of 6 respondents, 5 of 7 questions rated "_s,
                     u"01/06/2024 8.54 to 9.46 4 of 6 respondents, 4 of 7 questions rated +2.60, 4 "
                     "respondents: more than chance"_s,
                     u"01/09/2024 too few to say 1 of 1 respondent, 1 of 2 questions rated too few to say"_s,
                     u"01/03/2024 too few to say 1 of 1 respondent, 1 of 1 question rated "_s,
                     u"01/09/2024 too few to say 1 of 1 respondent, 1 of 1 question rated too few to "
                     "say"_s}));
    EXPECT_NE(drawn->Picture(), plain);
    messages.expectBeginning(u"Satisfaction Index : "_s);
    QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(1, 1));
    frmSatisfactionIndex::unload();
    form().Show();
    EXPECT_TRUE(control<QCheckBox>(form(), "chkBasis")->isChecked()) << "remembered";
}

/// The customer's own target goes before the one for all, whatever the case of the names.
TEST_F(SatisfactionIndexTest, targetsStandInTheChartTheTipAndTheReport) {
    run(u"insert into target (paramid, custid, target) values (1, null, 9), (1, 1, 7.35), (1, 2, 2), "
        "(2, null, 10), (99, 1, 5)"_s);
    run(u"update parameter set parametername='PRICE' where paramid=1"_s);
    choose({"Price", "Quality", "Service"});
    view();
    const QImage plain = drawn->Picture();
    expectTip(1, u"7.3333335"_s);
    const QString withoutTargets = print(form(), u"Survey Report"_s);
    EXPECT_FALSE(withoutTargets.contains(u"arget")) << withoutTargets;
    QTest::keyClick(&form(), Qt::Key_T, Qt::AltModifier);
    EXPECT_NE(drawn->Picture(), plain);
    expectTip(1, u"7.3333335\r\nTarget: 7.35"_s);
    expectInOrder(print(form(), u"Survey Report"_s),
                  {u"Customer Acme"_s, u"below its target"_s, u"PRICE 01/03/2024 7.33 7.35 below target"_s,
                   u"01/06/2024 9.00 7.35 target met"_s, u"01/09/2024 7.00 7.35 below target"_s,
                   u"Service 01/03/2024 4.00 10.00 below target"_s, u"01/06/2024 not rated 10.00"_s,
                   u"01/09/2024 10.00 10.00 target met"_s});
    for (int series = 1; series <= 3; ++series)
        EXPECT_EQ(drawn->SeriesItem(series).ComparedWith.has_value(),
                  parameters->List(series - 1) != u"Quality");
    frmSatisfactionIndex::unload();
    form().Show();
    auto* targets = control<QCheckBox>(form(), "chkTargets");
    EXPECT_TRUE(targets->isChecked()) << "remembered";
    drawn = control<chart::MSChart>(form(), "mschart");
    parameters = control<forms::ListBox>(form(), "lstParameter");
    view();
    targets->click();
    EXPECT_FALSE(drawn->SeriesItem(1).ComparedWith || !drawn->SeriesItem(1).MarkedRows.empty());
}

TEST_F(SatisfactionIndexTest, changesOfTheChoiceCollapse) {
    const std::pair<const char*, std::function<void()>> changes[] = {
        {"one more parameter", [] { clickEntry(form(), "lstParameter", 2, Qt::ControlModifier); }},
        {"from", [&] { from->setValue(spring.addDays(-1)); }},
        {"to", [&] { to->setValue(autumn); }}};
    for (const auto& [what, change] : changes) {
        choose({"Price"});
        keyOn(form(), "lstParameter", Qt::Key_Return);
        EXPECT_TRUE(drawn->isVisible()) << what;
        change();
        EXPECT_FALSE(drawn->isVisible() || control<QPushButton>(form(), "cmdPrint")->isVisible()) << what;
    }
    control<forms::ComboBox>(form(), "cmdCustomerName")->setListIndex(1);
    keyOn(form(), "lstParameter", Qt::Key_Return); // an empty list runs nothing
}

/// An overflow ends the fill silently; the groups before it are kept and shown.
TEST_F(SatisfactionIndexTest, overflowIsSilentAndKeepsWhatWasWritten) {
    run(u"update feedbackobjective set score = 32767 where surveydate >= #06/01/2024#"_s);
    run(u"update feedbackobjective set weightage = 3 where weightage = 0"_s);
    run(u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, score, weightage) "
        "select respondentid, questionid, surveyid, surveydate, score, weightage from feedbackobjective "
        "where surveydate = #09/01/2024#"_s);
    choose({"Price"});
    view();
    EXPECT_EQ(lines().size(), 2);
    EXPECT_EQ(drawn->RowCount(), 2);
    expectIdle();
}
} // namespace
