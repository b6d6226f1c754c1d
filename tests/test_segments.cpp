// SPDX-License-Identifier: GPL-3.0-or-later
// Groups of customers and respondents, and their figures. The oracle of a group of one customer is the given
// Satisfaction Index.
#include "analysis/figures/grouppoints.h"
#include "analysis/figures/performancematrix.h"
#include "analysis/frmCompareGroups.h"
#include "analysis/frmSatisfactionIndex.h"
#include "core/base/changedrow.h"
#include "core/store/segments.h"
#include "platform/chart/mschart.h"
#include "platform/forms/dtpicker.h"
#include "platform/forms/lists.h"
#include "platform/forms/listview.h"
#include "reference/frmSegments.h"
#include "tests/support/storetest.h"

#include <QLabel>
#include <QLineEdit>
#include <QTreeView>

#include <random>

using namespace Qt::StringLiterals;

namespace {

TEST(GroupFigures, areThoseOfOneCustomerWithoutTheirLimit) {
    std::mt19937 chance(7);
    const auto mark = [&] { return std::int16_t(chance() % 11); };
    for (int size = 0; size < 300; ++size) {
        std::vector<RatedAnswer> answers(std::size_t(size), RatedAnswer{});
        for (RatedAnswer& answer : answers)
            answer = {mark(), mark()};
        EXPECT_EQ(groupIndex(answers), satisfactionIndex(answers)) << size;
        const auto means = groupMeans(answers);
        const auto given = matrixMeans(answers);
        ASSERT_EQ(means.has_value(), given.has_value());
        EXPECT_TRUE(!means || (means->score == given->score && means->weightage == given->weightage));
    }
    std::vector<RatedAnswer> many(10'000, {4, 9});
    many[0] = {4, 8};
    EXPECT_THROW(satisfactionIndex(many), Failure);
    EXPECT_EQ(groupIndex(many), float(89'999 / 10'000.0));
    EXPECT_EQ(groupMeans(many)->score, 9);
}

TEST(Period, beginsAndIsNamed) {
    const std::tuple<Period, QDate, QDate, const char*> cases[] = {
        {Period::SurveyDate, {2024, 12, 31}, {2024, 12, 31}, "31/12/2024"},
        {Period::Month, {2024, 2, 29}, {2024, 2, 1}, "02/2024"},
        {Period::Quarter, {2024, 3, 31}, {2024, 1, 1}, "Q1 2024"},
        {Period::Quarter, {2024, 10, 1}, {2024, 10, 1}, "Q4 2024"},
        {Period::Year, {2024, 7, 1}, {2024, 1, 1}, "2024"}};
    for (const auto& [period, date, begin, name] : cases) {
        EXPECT_EQ(beginOf(period, date), begin) << name;
        EXPECT_EQ(nameOf(period, begin), QLatin1StringView(name));
    }
}

const QDate march{2024, 3, 1};
const QDate may{2024, 5, 1};

/// Acme has Ann and Bob, Brown has Cora; Price has two questions and Service has one.
class SegmentsTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        acme = addCustomer(u"Acme"_s);
        ann = addRespondent(acme, u"Ann"_s);
        bob = addRespondent(acme, u"Bob"_s);
        brown = addCustomer(u"Brown"_s);
        cora = addRespondent(brown, u"Cora"_s);
        price = addParameter(u"Price"_s);
        fair = addQuestion(price, u"Fair?"_s);
        clear = addQuestion(price, u"Clear?"_s);
        service = addParameter(u"Service"_s);
        quick = addQuestion(service, u"Quick?"_s);
    }
    /// A respondent of 0 is the customer.
    static void put(int custid, int respondentid, const QString& kind, const QString& name) {
        cnnMain->BeginTrans();
        writeSegments(kind, {{custid, respondentid, name}});
        cnnMain->CommitTrans();
    }
    static QStringList stored() {
        QStringList result;
        for (const QString& kind : readSegmentKinds())
            for (const SegmentRow& row : readSegmentRows(kind))
                if (!row.group.isEmpty())
                    result << kind + u' ' + row.name() + u": "_s + row.group;
        return result;
    }
    GroupChoice choice(const QStringList& groups, Period period) const {
        return {u"region"_s, groups, {price, service}, march, may, period, false, false};
    }
    static std::vector<GroupPoint> points(const GroupChoice& choice) {
        return readGroupPoints(choice, [](int, int) { return true; }).value();
    }

    static frmSegments& form() { return frmSegments::instance(); }
    static QTreeView* list() { return control<QTreeView>(form(), "lsvRows"); }
    static QString text(int row) {
        QStringList cells;
        for (int column = 0; column < 3; ++column)
            cells << list()->model()->index(row, column).data().toString();
        return cells.join(u'|');
    }
    /// Chooses rows, types a group and presses Enter.
    static void give(std::initializer_list<int> rows, const QString& group) {
        list()->clearSelection();
        for (const int row : rows)
            list()->selectionModel()->select(list()->model()->index(row, 0),
                                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
        typeInto("cboGroup", group);
        key(Qt::Key_Return);
    }
    static void typeInto(const char* box, const QString& text) {
        auto* combo = control<QComboBox>(form(), box);
        combo->setFocus();
        combo->lineEdit()->selectAll();
        key(Qt::Key_Delete);
        type(text);
    }

    int acme = 0, ann = 0, bob = 0, brown = 0, cora = 0;
    int price = 0, service = 0, fair = 0, clear = 0, quick = 0;
};

TEST_F(SegmentsTest, aRespondentIsInItsOwnGroupOrItsCustomers) {
    put(acme, 0, u"Region"_s, u"North"_s);
    put(acme, bob, u"region"_s, u"SOUTH"_s);
    put(brown, 0, u"Region"_s, u"south"_s);
    put(acme, 0, u"Role"_s, u"Buyer"_s);
    run(u"insert into segment (custid, kind, name) values (99, 'Gone', 'x')"_s);
    EXPECT_EQ(readSegmentKinds(), (QStringList{u"Region"_s, u"Role"_s}));
    using Groups = std::map<int, QString>;
    EXPECT_EQ(groupsOfRespondents(readSegmentRows(u"REGION"_s)),
              (Groups{{ann, u"North"_s}, {bob, u"SOUTH"_s}, {cora, u"south"_s}}));
    for (const auto& [respondent, question] : {std::pair(ann, fair), {bob, fair}, {cora, fair}})
        addScore(respondent, question, 1, march, 5, 4 + respondent);
    const std::vector<GroupPoint> both = points(choice({u"South"_s, u"North"_s}, Period::Year));
    ASSERT_EQ(both.size(), 2u);
    EXPECT_EQ(both[0].basis.respondents, 2);
    EXPECT_EQ(both[0].answers.size(), 2u) << "Bob and Cora, though Bob's customer is in the north";
    EXPECT_EQ(both[1].answers.size(), 1u);
    put(acme, bob, u"Region"_s, {});
    EXPECT_EQ(points(choice({u"north"_s}, Period::Year))[0].basis.respondents, 2);
}

TEST_F(SegmentsTest, aGroupOfOneCustomerHasTheGivenIndex) {
    put(acme, 0, u"Region"_s, u"North"_s);
    put(brown, 0, u"Region"_s, u"South"_s);
    std::mt19937 chance(11);
    for (const QDate& date : {may, march}) // ties depend on the order
        for (const int question : {quick, clear, fair})
            for (const int respondent : {bob, cora, ann})
                addScore(respondent, question, 1, date, int(chance() % 5), int(chance() % 11));
    addScore(ann, addQuestion(price, u"Words?"_s, false), 1, may, 5, 5);
    addQuestionnaire(ann, addSurvey(acme, march), {fair, quick});
    addQuestionnaire(ann, addSurvey(acme, may), {fair, quick});
    frmSatisfactionIndex& given = frmSatisfactionIndex::instance();
    given.Show();
    control<QListWidget>(given, "lstParameter")->selectAll();
    control<forms::DTPicker>(given, "dtTo")->setValue(may);
    press(given, "cmdView");
    QStringList mine;
    for (const int paramid : {price, service}) {
        GroupChoice one = choice({u"North"_s}, Period::SurveyDate);
        one.paramids = {paramid};
        for (const GroupPoint& point : points(one))
            mine << ado::toText(point.begin) + u'|' + ado::toText(groupIndex(point.answers));
    }
    EXPECT_EQ(mine, rows(u"select sdate, sindex from linetable order by Parameter, sdate"_s));
}

TEST_F(SegmentsTest, theUnionOfTwoCustomersByHand) {
    put(acme, 0, u"Region"_s, u"North"_s);
    put(brown, 0, u"Region"_s, u"North"_s);
    addScore(ann, fair, 1, march, 5, 8);
    addScore(bob, quick, 2, march.addDays(30), 3, 6);
    addScore(cora, fair, 3, march.addDays(1), 4, 10);
    addScore(cora, quick, 4, may, 0, 7);
    // A = 4: 8 x 1.25 = 10, 6 x 0.75 = 4.5, together 14.5 -> 14, and 10 x 1: 24 of 3
    std::vector<GroupPoint> quarters = points(choice({u"North"_s}, Period::Quarter));
    ASSERT_EQ(quarters.size(), 2u);
    EXPECT_EQ(groupIndex(quarters[0].answers), 8);
    EXPECT_EQ(std::pair(quarters[0].basis.respondents, quarters[0].basis.ratings), std::pair(3, 3));
    EXPECT_EQ(std::pair(quarters[1].basis.respondents, quarters[1].basis.ratings), std::pair(0, 0));
    GroupChoice each = choice({u"North"_s}, Period::Whole);
    each.isPerParameter = true;
    const std::vector<GroupPoint> means = points(each);
    ASSERT_EQ(means.size(), 2u);
    EXPECT_EQ(groupMeans(means[0].answers)->score, 9);
    EXPECT_EQ(groupMeans(means[1].answers)->weightage, 1.5);
    for (int i = 0; i < 20; ++i)
        addScore(addRespondent(acme, QString::number(i)), fair, 1, march, 5, 5);
    EXPECT_FALSE(readGroupPoints(each, [](int, int) { return false; })) << "cancelled";
}

TEST_F(SegmentsTest, groupsAreGivenByKeysAndSaved) {
    form().Show();
    EXPECT_EQ(text(0), u"Acme|all respondents|"_s);
    give({0, 3}, u" North  east"_s);
    give({2}, u"O'Neill"_s);
    EXPECT_EQ(text(1), u"Acme|Ann|(North east)"_s);
    EXPECT_EQ(text(2), u"Acme|Bob|O’Neill"_s);
    EXPECT_EQ(stored(), QStringList());
    give({4}, u"North"_s);
    EXPECT_EQ(text(4), u"Brown|Cora|North"_s) << "and not the longer name in use";
    give({4}, {});
    EXPECT_EQ(text(4), u"Brown|Cora|(North east)"_s);
    typeInto("cboGroup", u"Big"_s);
    typeInto("cboKind", u"Size"_s);
    key(Qt::Key_E, Qt::AltModifier);
    press(form(), "cmdSave");
    const QStringList all{u"Region Acme: North east"_s, u"Region Bob of Acme: O’Neill"_s,
                          u"Region Brown: North east"_s, u"Size Cora of Brown: Big"_s};
    EXPECT_EQ(stored(), all);
    typeInto("cboKind", u"region"_s);
    key(Qt::Key_Return);
    give({3}, u"NORTH EAST"_s);
    EXPECT_EQ(control<QLabel>(form(), "lblSummary")->text(), u"2 customers and 3 respondents"_s)
        << "the same name is no change";
    typeInto("cboGroup", u"East"_s);
    press(form(), "cmdRename");
    auto* find = control<QLineEdit>(form(), "txtFind");
    find->setFocus();
    type(u"BRO"_s);
    EXPECT_EQ(list()->model()->rowCount(), 2);
    EXPECT_EQ(text(1), u"Brown|Cora|(East)"_s);
    key(Qt::Key_Down);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    messages.expectTitled(u"The changes of groups have not been saved. Close the window without them?"_s,
                          forms::style::yesNo + forms::style::information + forms::style::secondButton,
                          forms::Answer::No);
    key(Qt::Key_Escape);
    press(form(), "cmdSave");
    EXPECT_EQ(stored(), (QStringList{u"Region Acme: East"_s, all[1], all[3]}));
    expectIdle();
}

TEST_F(SegmentsTest, onlyMyChangesAreWritten) {
    Keep answer = Keep::Both;
    std::vector<ChangedRow> asked;
    const Replaced<changedHook> hook([&](const ChangedRow& row) {
        asked.push_back(row);
        return answer;
    });
    form().Show();
    give({0, 3}, u"Mine"_s);
    put(brown, 0, u"Region"_s, u"Theirs"_s); // the same row, and another one
    put(acme, bob, u"Region"_s, u"Theirs"_s);
    press(form(), "cmdSave");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0], (ChangedRow{u"Kind: Region"_s, {{u"Brown"_s, {}, u"Theirs"_s, u"Mine"_s}}}));
    EXPECT_EQ(text(0), u"Acme|all respondents|Mine"_s) << "still there";
    EXPECT_EQ(stored().size(), 2);
    answer = Keep::Stored;
    press(form(), "cmdSave");
    EXPECT_EQ(stored(), (QStringList{u"Region Acme: Mine"_s, u"Region Bob of Acme: Theirs"_s,
                                     u"Region Brown: Theirs"_s}));
    give({1, 4}, u"New"_s);
    run(u"delete * from customer where custname='Acme'"_s);
    messages.expectCritical(
        u"No longer in the database: Ann of Acme. Nothing has been saved; save again for the others."_s);
    press(form(), "cmdSave");
    EXPECT_EQ(stored(), QStringList{u"Region Brown: Theirs"_s});
    press(form(), "cmdSave");
    EXPECT_EQ(stored().last(), u"Region Cora of Brown: New"_s);
}

TEST_F(SegmentsTest, groupsAreComparedInLinesAndPoints) {
    frmCompareGroups& compare = frmCompareGroups::instance();
    compare.Show();
    messages.expectTitled(u"There are no groups yet. Put customers and respondents into groups with Tools, "
                          "Segments."_s,
                          forms::style::information);
    press(compare, "cmdView");
    frmCompareGroups::unload();
    put(acme, 0, u"Region"_s, u"North"_s);
    put(brown, 0, u"Region"_s, u"South"_s);
    addSurvey(acme, march);
    addScore(ann, fair, 1, march, 5, 8);
    addScore(cora, quick, 2, may, 4, 6);
    frmCompareGroups& form = frmCompareGroups::instance();
    form.Show();
    auto* drawn = control<chart::MSChart>(form, "mschart");
    const auto* figures = control<forms::ListView>(form, "lsvFigures");
    const auto listed = [&] {
        QStringList result;
        for (int row = 0; row < figures->ListCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < figures->model()->columnCount(); ++column)
                cells << figures->Text(row, column);
            result << cells.join(u'|');
        }
        return result;
    };
    keyOn(form, "lstGroups", Qt::Key_Return);
    EXPECT_EQ(listed(), (QStringList{u"North|Q1 2024|8.00|1|1"_s, u"South|Q2 2024|6.00|1|1"_s}));
    ASSERT_TRUE(drawn->isVisible());
    EXPECT_EQ(drawn->GetData(2, 2), 6);
    EXPECT_FALSE(drawn->GetData(1, 2));
    QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(2, 2));
    EXPECT_EQ(figures->SelectedRows(), std::vector<int>{1});
    control<forms::ComboBox>(form, "cboView")->setListIndex(1);
    EXPECT_FALSE(drawn->isVisible());
    addQuestionnaire(ann, 1, {fair});
    addQuestionnaire(bob, 1, {fair, clear});
    key(Qt::Key_B, Qt::AltModifier);
    key(Qt::Key_V, Qt::AltModifier);
    EXPECT_EQ(listed(), (QStringList{u"North|Price|5.00|8.00|1 of 2 respondents, 1 of 3 questions rated"_s,
                                     u"South|Service|4.00|6.00|1 of 1 respondent, 1 of 1 question rated"_s}));
    EXPECT_EQ(std::pair(drawn->GetData(2, 3), drawn->GetData(2, 4)),
              (std::pair(std::optional(6.0), std::optional(4.0))));
    messages.expectTitled(u"There are no rated answers of these groups between these dates."_s,
                          forms::style::information);
    control<forms::DTPicker>(form, "dtFrom")->setValue(may.addDays(1));
    press(form, "cmdView");
    EXPECT_FALSE(drawn->isVisible());
}

} // namespace
