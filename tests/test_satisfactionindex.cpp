// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSatisfactionIndex.h"
#include "analysis/satisfactionindex.h"
#include "core/MDIMain.h"
#include "platform/chart/mschart.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/lists.h"
#include "tests/support/reporttest.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

constexpr auto none = std::nullopt;
constexpr std::int16_t largest = 32767;
constexpr std::int16_t smallest = -32768;

TEST(SatisfactionIndex, ofGroups) {
    const std::tuple<const char*, std::vector<RatedAnswer>, double> cases[] = {
        {"no answer", {}, 0},
        {"worked example: a skipped row stays in the count", {{5, 8}, {3, 6}, {0, 9}}, 7.333333492279053},
        {"one answer is its score whatever its weightage", {{3, 7}}, 7},
        {"a weightage without a score weighs nothing", {{5, 0}, {5, 8}}, 8},
        {"Null in either is not rated", {{none, 9}, {4, none}, {4, 6}, {none, none}}, 6},
        {"nothing weighed", {{0, 9}, {0, 5}}, 0},
        {"nothing scored", {{5, 0}, {4, none}}, 0},
        // 5 x 0.5 = 2.5 -> 2, then 2 + 1 x 1.5 = 3.5 -> 4
        {"ties go to even in each step", {{1, 5}, {3, 1}}, 2},
        // the same answers the other way round: 1.5 -> 2, then 2 + 2.5 = 4.5 -> 4
        {"ties go to even downward too", {{3, 1}, {1, 5}}, 2},
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
        EXPECT_THROW(satisfactionIndex(answers), std::overflow_error);
}

const QDate spring{2024, 3, 1};
const QDate summer{2024, 6, 1};
const QDate autumn{2024, 9, 1};

class SatisfactionIndexTest : public ReportTest {
protected:
    /// Acme with Price on three dates, Service on two of them, Quality asked and never answered.
    static void addAcme() {
        const int acme = addCustomer(u"Acme"_s);
        const int ann = addRespondent(acme, u"Ann"_s);
        const int bob = addRespondent(acme, u"Bob"_s);
        const int price = addParameter(u"Price"_s);
        const int priceA = addQuestion(price, u"Is the price fair?"_s);
        const int priceB = addQuestion(price, u"Is the price clear?"_s);
        const int service = addQuestion(addParameter(u"Service"_s), u"Are we quick?"_s);
        const int quality = addQuestion(addParameter(u"Quality"_s), u"Does it last?"_s);
        for (const QDate& date : {spring, summer, autumn})
            addQuestionnaire(ann, addSurvey(acme, date), {priceA, priceB, service, quality});
        addScore(ann, priceA, 1, spring, 5, 8); // two respondents are one group, the last one not rated
        addScore(ann, priceB, 1, spring, 3, 6);
        addScore(bob, priceA, 1, spring, 0, 9);
        addScore(ann, priceA, 2, summer, 2, 9);
        addScore(ann, priceA, 3, autumn, 4, 7);
        addScore(ann, service, 1, spring, 1, 4);
        addScore(ann, service, 2, summer, 5, 0); // a row of index 0
        addScore(ann, service, 3, autumn, 1, 10);
    }
    frmSatisfactionIndex& open() {
        frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
        form.Show();
        parameters = control<forms::ListBox>(form, "lstParameter");
        from = control<forms::DTPicker>(form, "dtFrom");
        to = control<forms::DTPicker>(form, "dtTo");
        drawn = control<chart::MSChart>(form, "mschart");
        return form;
    }
    void choose(std::initializer_list<const char*> names) {
        for (int i = 0; i < parameters->ListCount(); ++i)
            parameters->setSelected(
                i, std::count(names.begin(), names.end(), parameters->List(i).toStdString()));
    }
    void expectNoRecords() {
        messages.expect(u"No record(s) present to evaluates Satisfaction Index"_s, forms::style::information,
                        u"Gaugewell v2.1"_s);
    }
    void expectTip(int point, const QString& index) {
        messages.expect(u"Satisfaction Index : "_s + index);
        QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(1, point));
    }
    void expectExpanded(bool expanded, const char* after) {
        frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
        EXPECT_EQ(drawn->isVisible(), expanded) << after;
        EXPECT_EQ(control<QPushButton>(form, "cmdPrint")->isVisible(), expanded) << after;
        EXPECT_EQ(form.height() > form.width() / 3, expanded) << after << ": " << form.height();
    }
    static QStringList lines() {
        return rows(u"select Parameter, sdate, sindex, custname from linetable order by Parameter, sdate"_s);
    }

    forms::ListBox* parameters = nullptr;
    forms::DTPicker* from = nullptr;
    forms::DTPicker* to = nullptr;
    chart::MSChart* drawn = nullptr;
};

TEST_F(SatisfactionIndexTest, viewFillsTheTablesAndTheChart) {
    addAcme();
    frmSatisfactionIndex& form = open();
    EXPECT_EQ(from->Value(), spring);
    EXPECT_EQ(to->Value(), today);
    EXPECT_EQ(parameters->SelCount(), 1);
    expectExpanded(false, "load");

    choose({"Price", "Quality", "Service"});
    press(form, "cmdView");
    EXPECT_EQ(lines(), (QStringList{u"Price|01/03/2024|7.3333335|Acme"_s, u"Price|01/06/2024|9|Acme"_s,
                                    u"Price|01/09/2024|7|Acme"_s, u"Service|01/03/2024|4|Acme"_s,
                                    u"Service|01/06/2024|0|Acme"_s, u"Service|01/09/2024|10|Acme"_s}));
    EXPECT_EQ(rows(u"select sdate, roworder from surveydateorder"_s),
              (QStringList{u"01/03/2024|1"_s, u"01/06/2024|2"_s, u"01/09/2024|3"_s}));
    EXPECT_EQ(form.toGetRowOrder(autumn), 3);
    EXPECT_EQ(form.toGetRowOrder(today), 0);
    EXPECT_EQ(value(u"select count(*) from linetable where sdate > '2024-09-01'"_s), u"0");

    ASSERT_EQ(drawn->RowCount(), 3);
    ASSERT_EQ(drawn->SeriesCount(), 3);
    for (int i = 1; i <= 3; ++i) {
        drawn->setRow(i);
        EXPECT_EQ(drawn->RowLabel(), u"01/%1/2024"_s.arg(3 * i, 2, 10, QChar(u'0')));
        drawn->setColumn(i);
        const QString name = drawn->ColumnLabel();
        EXPECT_EQ(name, parameters->List(i - 1)) << "a column for each parameter in the list's order";
        for (int row = 1; name == u"Quality" && row <= 3; ++row)
            EXPECT_EQ(drawn->GetData(row, i), std::nullopt) << "a parameter without results";
        if (name == u"Service") {
            EXPECT_EQ(drawn->GetData(2, i), std::nullopt) << "an index of 0 is no point";
            EXPECT_EQ(drawn->GetData(3, i), 10);
        }
    }
    EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), QString());
}

TEST_F(SatisfactionIndexTest, datesAreInclusiveAndAPointTellsItsIndex) {
    addAcme();
    frmSatisfactionIndex& form = open();
    choose({"Price"});
    press(form, "cmdView");
    expectTip(1, u"7.3333335"_s);
    from->setValue(summer);
    to->setValue(summer);
    press(form, "cmdView");
    EXPECT_EQ(lines(), QStringList{u"Price|01/06/2024|9|Acme"_s});
    EXPECT_EQ(drawn->RowCount(), 1);
    EXPECT_EQ(drawn->RowLabel(), u"01/06/2024");
    expectTip(1, u"9"_s);

    expectNoRecords(); // from later than to
    from->setValue(autumn);
    press(form, "cmdView");
    expectExpanded(false, "no record");
    EXPECT_EQ(lines(), QStringList());
}

TEST_F(SatisfactionIndexTest, changesOfTheChoiceCollapse) {
    addAcme();
    addSurvey(addCustomer(u"Brown"_s), spring);
    frmSatisfactionIndex& form = open();
    const auto at = [&](int item) { return parameters->visualItemRect(parameters->item(item)).center(); };
    const auto click = [&](int item, Qt::KeyboardModifiers with = {}) {
        QTest::mouseClick(parameters->viewport(), Qt::LeftButton, with, at(item));
    };
    const std::vector<std::pair<const char*, std::function<void()>>> changes{
        {"click", [&] { click(0); }},
        {"one more parameter", [&] { click(2, Qt::ControlModifier); }},
        {"the same parameter again", [&] { click(0); }},
        {"a key", [&] { key(Qt::Key_Down); }},
        {"from", [&] { from->setValue(spring.addDays(-1)); }},
        {"to", [&] { to->setValue(autumn); }}};
    for (const auto& [what, change] : changes) {
        choose({"Price"});
        parameters->setFocus();
        key(Qt::Key_Return);
        expectExpanded(true, what);
        change();
        expectExpanded(false, what);
    }
    choose({"Price", "Service"});
    QTest::mouseDClick(parameters->viewport(), Qt::LeftButton, {}, at(0));
    expectExpanded(true, "double click");

    control<forms::ComboBox>(form, "cmdCustomerName")->setListIndex(1);
    expectExpanded(true, "a change of customer alone");
    EXPECT_EQ(parameters->ListCount(), 0);
    auto* dates = control<forms::ListBox>(form, "lstSurveyDates");
    EXPECT_EQ(dates->ListCount(), 3);
    EXPECT_EQ(from->Value(), spring.addDays(-1));
    QTest::mouseClick(dates->viewport(), Qt::LeftButton, {}, dates->visualItemRect(dates->item(1)).center());
    EXPECT_EQ(dates->Text(), u"01/06/2024");
    parameters->setFocus();
    EXPECT_EQ(dates->SelCount(), 0) << "the list of dates keeps no choice";
    key(Qt::Key_Return); // an empty list runs nothing
    key(Qt::Key_Escape);
    EXPECT_EQ(frmSatisfactionIndex::loaded(), nullptr);
}

TEST_F(SatisfactionIndexTest, emptyStore) {
    frmSatisfactionIndex& form = open();
    EXPECT_EQ(control<forms::ComboBox>(form, "cmdCustomerName")->ListCount(), 0);
    expectNoRecords();
    press(form, "cmdView");
    expectExpanded(false, "no customer");
}

/// However large the store: no statement that a fill repeats walks through a whole table.
TEST_F(SatisfactionIndexTest, repeatedStatementsGoByIndexes) {
    const QStringList statements{
        u"select parametername,surveydate,weightage,score from scatterqry where parametername='Price' and "
        "surveydate between #03/01/2024# and #03/01/2024# and custname='Acme'"_s,
        u"select * from surveydateorder where sdate=#03/01/2024#"_s};
    for (const QString& sql : statements) {
        const QStringList plan = rows(u"explain query plan "_s + sql);
        EXPECT_FALSE(plan.isEmpty());
        EXPECT_EQ(plan.filter(u"SCAN"_s), QStringList()) << sql.toStdString();
    }
}

/// An overflow ends the fill without a word; the groups before it stay, and the chart shows them.
TEST_F(SatisfactionIndexTest, overflowIsSilentAndKeepsWhatWasWritten) {
    addAcme();
    run(u"update feedbackobjective set score = 32767 where surveydate >= #06/01/2024#"_s);
    run(u"update feedbackobjective set weightage = 3 where weightage = 0"_s);
    run(u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, score, weightage) "
        "select respondentid, questionid, surveyid, surveydate, score, weightage from feedbackobjective "
        "where surveydate = #09/01/2024#"_s);
    frmSatisfactionIndex& form = open();
    choose({"Price"});
    press(form, "cmdView");
    EXPECT_EQ(lines().size(), 2);
    EXPECT_EQ(drawn->RowCount(), 2);
    EXPECT_FALSE(cnnMain->InTransaction());
}

TEST_F(SatisfactionIndexTest, lockedStoreTellsItOnceAProcedure) {
    addAcme();
    frmSatisfactionIndex& form = open();
    ado::Connection other;
    other.ConnectionString = cnnMain->ConnectionString;
    other.Open();
    other.BeginTrans();
    messages.expectBeginning(u"Error : 5\r\nThe database is in use"_s);
    expectNoRecords();
    press(form, "cmdView");
    other.RollbackTrans();
    press(form, "cmdView");
    expectExpanded(true, "the lock is gone");
}

TEST_F(SatisfactionIndexTest, failuresAreToldByTheProcedureTheyEnd) {
    addAcme();
    frmSatisfactionIndex& form = open();
    choose({"Price"});
    press(form, "cmdView");
    run(u"alter table linetable rename to away"_s);
    messages.expectBeginning(u"Error : 1\r\nno such table"_s); // toFillTable
    messages.expectBeginning(u"Error : 1\r\nno such table"_s); // toCheckIndexRecords
    expectNoRecords();
    press(form, "cmdView");
    messages.expectBeginning(u"1 : no such table"_s);
    form.toDrawChart();
    run(u"alter table away rename to linetable"_s);

    form.toFillTable();
    run(u"delete * from surveydateorder"_s);
    messages.expect(u"9 : Subscript out of range"_s); // a date without a row
    form.toDrawChart();
}

} // namespace
