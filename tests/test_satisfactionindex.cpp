// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/frmSatisfactionIndex.h"
#include "core/MDIMain.h"
#include "platform/chart/mschart.h"
#include "platform/forms/clock.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/lists.h"
#include "tests/support/storetest.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

const QDate spring{2024, 3, 1};
const QDate summer{2024, 6, 1};
const QDate autumn{2024, 9, 1};
const QDate today{2024, 12, 31};
const QString noRecords = u"No record(s) present to evaluates Satisfaction Index"_s;

class SatisfactionIndexTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        forms::todaySeat = [] { return today; };
    }
    void TearDown() override {
        StoreTest::TearDown();
        forms::todaySeat = [] { return QDate::currentDate(); };
    }

    /// Acme with Price on three dates, Service on two of them, Quality asked and never answered.
    void addAcme() {
        acme = addCustomer(u"Acme"_s);
        const int ann = addRespondent(acme, u"Ann"_s);
        const int bob = addRespondent(acme, u"Bob"_s);
        const int price = addParameter(u"Price"_s);
        const int priceA = addQuestion(price, u"Is the price fair?"_s);
        const int priceB = addQuestion(price, u"Is the price clear?"_s);
        const int service = addQuestion(addParameter(u"Service"_s), u"Are we quick?"_s);
        const int quality = addQuestion(addParameter(u"Quality"_s), u"Does it last?"_s);
        for (const QDate& date : {spring, summer, autumn}) {
            surveys << addSurvey(acme, date);
            addQuestionnaire(ann, surveys.last(), {priceA, priceB, service, quality});
        }
        addScore(ann, priceA, surveys[0], spring, 5,
                 8); // two respondents are one group, the last one not rated
        addScore(ann, priceB, surveys[0], spring, 3, 6);
        addScore(bob, priceA, surveys[0], spring, 0, 9);
        addScore(ann, priceA, surveys[1], summer, 2, 9);
        addScore(ann, priceA, surveys[2], autumn, 4, 7);
        addScore(ann, service, surveys[0], spring, 1, 4);
        addScore(ann, service, surveys[1], summer, 5, 0); // a row of index 0
        addScore(ann, service, surveys[2], autumn, 1, 10);
    }

    frmSatisfactionIndex& open() {
        frmSatisfactionIndex& form = frmSatisfactionIndex::instance();
        form.Show();
        parameters = control<forms::ListBox>(form, "lstParameter");
        drawn = control<chart::MSChart>(form, "mschart");
        return form;
    }

    void choose(std::initializer_list<const char*> names) {
        for (int i = 0; i < parameters->ListCount(); ++i)
            parameters->setSelected(
                i, std::count(names.begin(), names.end(), parameters->List(i).toStdString()));
    }

    void clickPoint(int series, int point) {
        QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(series, point));
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

    int acme = 0;
    QList<int> surveys;
    forms::ListBox* parameters = nullptr;
    chart::MSChart* drawn = nullptr;
};

TEST_F(SatisfactionIndexTest, viewFillsTheTablesAndTheChart) {
    addAcme();
    frmSatisfactionIndex& form = open();
    EXPECT_EQ(control<forms::DTPicker>(form, "dtFrom")->Value(), spring);
    EXPECT_EQ(control<forms::DTPicker>(form, "dtTo")->Value(), today);
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
    QStringList names;
    for (int i = 1; i <= 3; ++i) {
        drawn->setColumn(i);
        drawn->setRow(i);
        names << drawn->ColumnLabel() << drawn->RowLabel();
        for (int row = 1; names[2 * i - 2] == u"Quality" && row <= 3; ++row)
            EXPECT_EQ(drawn->GetData(row, i), std::nullopt) << "a parameter without results";
        if (names[2 * i - 2] == u"Service") {
            EXPECT_EQ(drawn->GetData(2, i), std::nullopt) << "an index of 0 is no point";
            EXPECT_EQ(drawn->GetData(3, i), 10);
        }
    }
    EXPECT_EQ(names.filter(u"/2024"_s), (QStringList{u"01/03/2024"_s, u"01/06/2024"_s, u"01/09/2024"_s}));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(names[2 * i], parameters->List(i)) << "a column for each parameter in the list's order";
    EXPECT_EQ(MDIMain::instance().stsBar->Panels(1).Text(), QString());
}

TEST_F(SatisfactionIndexTest, pointTellsItsIndex) {
    addAcme();
    press(open(), "cmdView");
    choose({"Price"});
    press(open(), "cmdView");
    messages.expect(u"Satisfaction Index : 7.3333335"_s);
    clickPoint(1, 1);
    messages.expect(u"Satisfaction Index : 9"_s);
    clickPoint(1, 2);
}

TEST_F(SatisfactionIndexTest, datesAreInclusiveAndOneDateIsOnePoint) {
    addAcme();
    frmSatisfactionIndex& form = open();
    choose({"Price"});
    control<forms::DTPicker>(form, "dtFrom")->setValue(summer);
    control<forms::DTPicker>(form, "dtTo")->setValue(summer);
    press(form, "cmdView");
    EXPECT_EQ(lines(), QStringList{u"Price|01/06/2024|9|Acme"_s});
    EXPECT_EQ(drawn->RowCount(), 1);
    EXPECT_EQ(drawn->RowLabel(), u"01/06/2024");
    messages.expect(u"Satisfaction Index : 9"_s);
    clickPoint(1, 1);

    messages.expect(noRecords, forms::style::information, u"Gaugewell v2.1"_s); // from later than to
    control<forms::DTPicker>(form, "dtFrom")->setValue(autumn);
    press(form, "cmdView");
    expectExpanded(false, "no record");
    EXPECT_EQ(lines(), QStringList());
}

TEST_F(SatisfactionIndexTest, changesOfTheChoiceCollapse) {
    addAcme();
    addSurvey(addCustomer(u"Brown"_s), spring);
    frmSatisfactionIndex& form = open();
    auto* from = control<forms::DTPicker>(form, "dtFrom");
    auto* to = control<forms::DTPicker>(form, "dtTo");
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

    auto* customers = control<forms::ComboBox>(form, "cmdCustomerName");
    customers->setListIndex(1);
    expectExpanded(true, "a change of customer alone");
    EXPECT_EQ(parameters->ListCount(), 0);
    EXPECT_EQ(control<forms::ListBox>(form, "lstSurveyDates")->ListCount(), 3);
    EXPECT_EQ(from->Value(), spring.addDays(-1));
    parameters->setFocus();
    key(Qt::Key_Return); // an empty list runs nothing
    key(Qt::Key_Escape);
    EXPECT_EQ(frmSatisfactionIndex::loaded(), nullptr);
}

TEST_F(SatisfactionIndexTest, listOfDatesNeverHoldsAChoice) {
    addAcme();
    frmSatisfactionIndex& form = open();
    auto* dates = control<forms::ListBox>(form, "lstSurveyDates");
    QTest::mouseClick(dates->viewport(), Qt::LeftButton, {}, dates->visualItemRect(dates->item(1)).center());
    EXPECT_EQ(dates->Text(), u"01/06/2024");
    parameters->setFocus();
    EXPECT_EQ(dates->SelCount(), 0);
}

TEST_F(SatisfactionIndexTest, emptyStore) {
    frmSatisfactionIndex& form = open();
    EXPECT_EQ(control<forms::ComboBox>(form, "cmdCustomerName")->ListCount(), 0);
    messages.expect(noRecords, forms::style::information, u"Gaugewell v2.1"_s);
    press(form, "cmdView");
    EXPECT_FALSE(control<QPushButton>(form, "cmdPrint")->isVisible());
}

/// However large the store: no statement that a fill repeats walks through a whole table.
TEST_F(SatisfactionIndexTest, repeatedStatementsGoByIndexes) {
    const QString date = u"#03/01/2024#"_s;
    const QStringList statements{
        u"select parametername,surveydate,weightage,score from scatterqry where parametername='Price' and "
        u"surveydate between "_s +
            date + u" and " + date + u" and custname='Acme'",
        u"select * from linetable where parameter='Price' and sindex <> 0 order by sdate asc"_s,
        u"select * from surveydateorder where sdate="_s + date};
    for (const QString& sql : statements) {
        const QStringList plan = rows(u"explain query plan "_s + sql);
        EXPECT_FALSE(plan.isEmpty());
        EXPECT_EQ(plan.filter(u"SCAN"_s), QStringList()) << sql.toStdString();
    }
}

/// An overflow ends the fill without a word; the groups before it stay, and the chart shows them.
TEST_F(SatisfactionIndexTest, overflowIsSilentAndKeepsWhatWasWritten) {
    addAcme();
    run(u"update feedbackobjective set score = 32767 where surveydate = #06/01/2024# or surveydate = #09/01/2024#"_s);
    run(u"update feedbackobjective set weightage = 3 where weightage = 0"_s);
    const QString again =
        u"insert into feedbackobjective (respondentid, questionid, surveyid, surveydate, score, "
        "weightage) select respondentid, questionid, surveyid, surveydate, score, weightage from "
        "feedbackobjective where surveydate = #09/01/2024#"_s;
    run(again);
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
    messages.expect(noRecords, forms::style::information, u"Gaugewell v2.1"_s);
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
    messages.expect(noRecords, forms::style::information, u"Gaugewell v2.1"_s);
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
