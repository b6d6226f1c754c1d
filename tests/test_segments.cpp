// SPDX-License-Identifier: GPL-3.0-or-later
// Groups of customers and respondents. The oracle of a group of one customer is the given Satisfaction Index.
#include "analysis/figures/grouppoints.h"
#include "analysis/figures/performancematrix.h"
#include "analysis/figures/satisfactionindex.h"
#include "analysis/frmCompareGroups.h"
#include "analysis/frmSatisfactionIndex.h"
#include "core/store/segments.h"
#include "platform/chart/mschart.h"
#include "reference/frmSegments.h"
#include "tests/support/changedrows.h"
#include "tests/support/listview.h"
#include "tests/support/surveytest.h"

#include <random>

namespace {
const QDate march{2024, 3, 1};
const QDate may{2024, 5, 1};

/// Brown has Cora, beside Acme's Ann and Bob.
struct SegmentsTest : SurveyTest {
    void SetUp() override {
        SurveyTest::SetUp();
        brown = addCustomer(u"Brown"_s);
        cora = addRespondent(brown, u"Cora"_s);
    }
    /// A respondent of 0 is the customer.
    static void put(int custid, int respondentid, const QString& name, const QString& kind = u"Region"_s) {
        cnnMain->BeginTrans();
        writeSegments(kind, {{custid, respondentid, name}});
        cnnMain->CommitTrans();
    }
    static QStringList groups() {
        QStringList result;
        for (const QString& kind : readSegmentKinds())
            for (const SegmentRow& row : readSegmentRows(kind))
                if (!row.group.isEmpty())
                    result << kind + u' ' + row.name() + u": "_s + row.group;
        return result;
    }
    static GroupChoice choice(const QStringList& groups, Period period) {
        return {u"region"_s, groups, {1, 2}, march, may, period, false, false};
    }
    static std::vector<GroupPoint> points(const GroupChoice& choice) {
        return readGroupPoints(choice, [](int, int) { return true; }).value();
    }
    using Counts = std::vector<std::pair<int, int>>; // respondents and ratings
    static Counts counts(const GroupChoice& choice) {
        Counts result;
        for (const GroupPoint& point : points(choice))
            result.emplace_back(point.basis.respondents, point.basis.ratings);
        return result;
    }
    static frmSegments& form() { return frmSegments::instance(); }
    static QTreeView* list() { return control<QTreeView>(form(), "lsvRows"); }
    static QString text(int row) { return listed(*list()).value(row); }
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

    int brown = 0, cora = 0;
};

TEST_F(SegmentsTest, aRespondentIsInItsOwnGroupOrItsCustomers) {
    put(acme, 0, u"North"_s);
    put(acme, bob, u"SOUTH"_s, u"region"_s);
    put(brown, 0, u"south"_s);
    put(acme, 0, u"Buyer"_s, u"Role"_s);
    run(u"insert into segment (custid, kind, name) values (99, 'Gone', 'x')"_s);
    EXPECT_EQ(readSegmentKinds(), (QStringList{u"Region"_s, u"Role"_s}));
    EXPECT_EQ(groupsOfRespondents(readSegmentRows(u"REGION"_s)),
              (std::map<int, QString>{{ann, u"North"_s}, {bob, u"SOUTH"_s}, {cora, u"south"_s}}));
    for (const int respondent : {ann, bob, cora})
        addScore(respondent, question[0], 1, march, 5, 4 + respondent);
    EXPECT_EQ(counts(choice({u"South"_s, u"North"_s}, Period::Year)), (Counts{{2, 2}, {1, 1}}))
        << "Bob and Cora, though Bob's customer is in the north";
    put(acme, bob, {});
    EXPECT_EQ(counts(choice({u"north"_s}, Period::Year)), (Counts{{2, 2}}));
}

TEST_F(SegmentsTest, aGroupOfOneCustomerHasTheGivenIndex) {
    put(acme, 0, u"North"_s);
    put(brown, 0, u"South"_s);
    std::mt19937 chance(11);
    for (const QDate& date : {may, march}) // ties depend on the order
        for (const int asked : {question[2], question[1], question[0]})
            for (const int respondent : {bob, cora, ann})
                addScore(respondent, asked, 1, date, int(chance() % 5), int(chance() % 11));
    addScore(ann, question[4], 1, may, 5, 5);
    for (const QDate& date : {march, may})
        addStored(ann, date, {0, 2});
    frmSatisfactionIndex& given = show<frmSatisfactionIndex>();
    control<QListWidget>(given, "lstParameter")->selectAll();
    control<forms::DTPicker>(given, "dtTo")->setValue(may);
    press(given, "cmdView");
    QStringList mine;
    for (const int paramid : {1, 2}) {
        GroupChoice one = choice({u"North"_s}, Period::SurveyDate);
        one.paramids = {paramid};
        for (const GroupPoint& point : points(one))
            mine << ado::toText(point.begin) + u'|' + ado::toText(groupIndex(point.answers));
    }
    EXPECT_EQ(mine, rows(u"select sdate, sindex from linetable order by Parameter, sdate"_s));
}

TEST_F(SegmentsTest, theUnionOfTwoCustomersByHand) {
    for (const int custid : {acme, brown})
        put(custid, 0, u"North"_s);
    addScore(ann, question[0], 1, march, 5, 8);
    addScore(bob, question[2], 2, march.addDays(30), 3, 6);
    addScore(cora, question[0], 3, march.addDays(1), 4, 10);
    addScore(cora, question[2], 4, may, 0, 7);
    // A = 4: 8 x 1.25 = 10, 6 x 0.75 = 4.5, together 14.5 -> 14, and 10 x 1: 24 of 3
    const GroupChoice quarters = choice({u"North"_s}, Period::Quarter);
    EXPECT_EQ(counts(quarters), (Counts{{3, 3}, {0, 0}}));
    EXPECT_EQ(groupIndex(points(quarters)[0].answers), 8);
    GroupChoice each = choice({u"North"_s}, Period::Whole);
    each.isPerParameter = true;
    const std::vector<GroupPoint> means = points(each);
    ASSERT_EQ(means.size(), 2u);
    EXPECT_EQ(groupMeans(means[0].answers)->score, 9);
    EXPECT_EQ(groupMeans(means[1].answers)->weightage, 1.5);
    for (int i = 0; i < 20; ++i)
        addScore(addRespondent(acme, QString::number(i)), question[0], 1, march, 5, 5);
    EXPECT_FALSE(readGroupPoints(each, [](int, int) { return false; })) << "cancelled";
}

TEST_F(SegmentsTest, groupsAreGivenByKeysAndSaved) {
    form().Show();
    EXPECT_EQ(text(0), u"Acme|all respondents|"_s);
    give({0, 3}, u" North  east"_s);
    give({2}, u"O'Neill"_s);
    EXPECT_EQ(text(1), u"Acme|Ann|(North east)"_s);
    EXPECT_EQ(text(2), u"Acme|Bob|O’Neill"_s);
    EXPECT_EQ(groups(), QStringList());
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
    EXPECT_EQ(groups(), all);
    typeInto("cboKind", u"region"_s);
    key(Qt::Key_Return);
    give({3}, u"NORTH EAST"_s);
    EXPECT_EQ(control<QLabel>(form(), "lblSummary")->text(), u"2 customers and 3 respondents"_s)
        << "the same name is no change";
    typeInto("cboGroup", u"East"_s);
    press(form(), "cmdRename");
    control<QLineEdit>(form(), "txtFind")->setFocus();
    type(u"BRO"_s);
    EXPECT_EQ(listed(*list()), (QStringList{u"Brown|all respondents|East"_s, u"Brown|Cora|(East)"_s}));
    key(Qt::Key_Down);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_Delete);
    messages.expectAsked(u"The changes of groups have not been saved. Close the window without them?"_s,
                         Answer::No);
    key(Qt::Key_Escape);
    press(form(), "cmdSave");
    EXPECT_EQ(groups(), (QStringList{u"Region Acme: East"_s, all[1], all[3]}));
    expectIdle();
}

TEST_F(SegmentsTest, onlyMyChangesAreWritten) {
    addRespondent(brown, u"Cora"_s);
    ChangedRows changed;
    form().Show();
    give({0, 3}, u"Mine"_s);
    put(brown, 0, u"Theirs"_s); // the same row, and another one
    put(acme, bob, u"Theirs"_s);
    press(form(), "cmdSave");
    ASSERT_EQ(changed.asked.size(), 1u);
    EXPECT_EQ(changed.asked[0], (ChangedRow{u"Kind: Region"_s, {{u"Brown"_s, {}, u"Theirs"_s, u"Mine"_s}}}));
    EXPECT_EQ(text(0), u"Acme|all respondents|Mine"_s) << "still there";
    EXPECT_EQ(groups().size(), 2);
    changed.answer = Keep::Stored;
    press(form(), "cmdSave");
    EXPECT_EQ(groups(), (QStringList{u"Region Acme: Mine"_s, u"Region Bob of Acme: Theirs"_s,
                                     u"Region Brown: Theirs"_s}));
    list()->selectAll();
    typeInto("cboKind", u"Size"_s);
    withoutTable(u"respondent"_s, [] { key(Qt::Key_E, Qt::AltModifier); }); // is not done to the former kind
    EXPECT_EQ(control<QComboBox>(form(), "cboKind")->currentText(), u"Region"_s);
    EXPECT_EQ(control<QLabel>(form(), "lblSummary")->text(), u"2 customers and 4 respondents"_s);
    give({4, 5}, u"Twins"_s);
    put(brown, cora, u"Theirs"_s);
    press(form(), "cmdSave");
    EXPECT_EQ(listed(*list()).mid(4), (QStringList{u"Brown|Cora|Theirs"_s, u"Brown|Cora|Twins"_s}))
        << "two of one name";
    give({1, 4}, u"New"_s);
    run(u"delete * from customer where custname='Acme'"_s);
    messages.expectCritical(
        u"No longer in the database: Ann of Acme. Nothing has been saved; save again for the others."_s);
    press(form(), "cmdSave");
    EXPECT_EQ(groups()[1], u"Region Cora of Brown: Theirs"_s);
    press(form(), "cmdSave");
    EXPECT_EQ(groups()[1], u"Region Cora of Brown: New"_s);
}

TEST_F(SegmentsTest, groupsAreComparedInLinesAndPoints) {
    frmCompareGroups::instance().Show();
    messages.expectInformation(
        u"There are no groups yet. Put customers and respondents into groups with Tools, "
        "Segments."_s);
    press(frmCompareGroups::instance(), "cmdView");
    frmCompareGroups::unload();
    put(acme, 0, u"North"_s);
    put(brown, 0, u"South"_s);
    addScore(ann, question[0], 1, march, 5, 8);
    addScore(cora, question[2], 2, may, 4, 6);
    frmCompareGroups& form = show<frmCompareGroups>();
    auto* drawn = control<chart::MSChart>(form, "mschart");
    const auto* figures = control<forms::ListView>(form, "lsvFigures");
    control<forms::DTPicker>(form, "dtTo")->setValue(may);
    keyOn(form, "lstGroups", Qt::Key_Return);
    EXPECT_EQ(listed(*figures), (QStringList{u"North|Q1 2024|8.00|1|1"_s, u"South|Q2 2024|6.00|1|1"_s}));
    ASSERT_TRUE(drawn->isVisible());
    EXPECT_EQ(drawn->GetData(2, 2), 6);
    EXPECT_FALSE(drawn->GetData(1, 2));
    QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(2, 2));
    EXPECT_EQ(figures->SelectedRows(), std::vector<int>{1});
    SegmentsTest::form().Show();
    put(acme, bob, u"South"_s);
    form.Show();
    EXPECT_FALSE(drawn->isVisible()) << "other members of the same groups";
    put(acme, bob, {});
    control<forms::ComboBox>(form, "cboView")->setListIndex(1);
    addStored(ann, march, {0});
    addStored(bob, march, {0, 1});
    key(Qt::Key_B, Qt::AltModifier);
    key(Qt::Key_V, Qt::AltModifier);
    EXPECT_EQ(listed(*figures),
              (QStringList{u"North|Delivery|5.00|8.00|1 of 2 respondents, 1 of 3 questions rated"_s,
                           u"South|Quality|4.00|6.00|1 of 1 respondent, 1 of 1 question rated"_s}));
    EXPECT_EQ(std::pair(drawn->GetData(2, 3), drawn->GetData(2, 4)),
              (std::pair(std::optional(6.0), std::optional(4.0))));
    messages.expectInformation(u"There are no rated answers of these groups between these dates."_s);
    control<forms::DTPicker>(form, "dtFrom")->setValue(may.addDays(1));
    press(form, "cmdView");
    EXPECT_FALSE(drawn->isVisible());
}
} // namespace
