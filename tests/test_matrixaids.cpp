// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/quadrants.h"
#include "analysis/frmPerformanceMatrix.h"
#include "core/store/transaction.h"
#include "improvement/frmImprovementPlan.h"
#include "platform/chart/labelplaces.h"
#include "platform/chart/mschart.h"
#include "tests/support/listview.h"
#include "tests/support/reporttest.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDoubleSpinBox>
#include <QImage>

namespace {
TEST(LabelPlaces, labelsCoverNeitherEachOtherNorMarkersNorObstaclesNorTheOutside) {
    const QRectF area(0, 0, 300, 200);
    std::vector<QPointF> points{{2, 100}, {298, 100}, {150, 2}, {150, 198}};
    for (int i = 0; i < 12; ++i) // a crowd without room for all full labels
        points.emplace_back(100 + 15 * (i % 4), 80 + 15 * (i / 4));
    const std::vector<chart::LabelSizes> sizes(points.size(), {{70, 14}, {8, 10}});
    const QRectF arrow(160, 0, 60, 4);
    const std::vector<chart::LabelPlace> places = chart::placeLabels(points, sizes, area, 7, {arrow});
    int full = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        EXPECT_EQ(places[i].rect.size(), places[i].isFull ? sizes[i].full : sizes[i].brief);
        full += places[i].isFull ? 1 : 0;
        if (!places[i].isFull)
            continue;
        EXPECT_TRUE(area.contains(places[i].rect) && !arrow.intersects(places[i].rect)) << i;
        for (std::size_t other = 0; other < places.size(); ++other) {
            EXPECT_TRUE(other == i || !places[i].rect.intersects(places[other].rect)) << i << ", " << other;
            EXPECT_FALSE(places[i].rect.contains(points[other])) << i << " hides " << other;
        }
    }
    EXPECT_GE(full, 4);
    EXPECT_LT(full, 16);
}

TEST(Quadrants, aPointOnTheMeanIsAboveIt) {
    for (const auto& [value, count] : {std::pair(4.1, 6), {3.7, 3}, {4.2, 24}, {8.2, 10}}) {
        const std::vector<MatrixMeans> points(std::size_t(count), {.weightage = value, .score = value});
        for (const CrossHair kind : {CrossHair::Means, CrossHair::Medians})
            EXPECT_EQ(quadrantOf(points[0], crossHairPlace(kind, points, {})), Quadrant::KeepUp) << value;
    }
}

struct MatrixAidsTest : ReportTest {
    void SetUp() override {
        ReportTest::SetUp();
        addCustomer(u"Acme"_s);
        addSurvey(1, spring);
        addSurvey(1, autumn);
    }
    void showForm() {
        form().Show();
        drawn = control<chart::MSChart>(form(), "mschart");
    }
    static frmPerformanceMatrix& form() { return frmPerformanceMatrix::instance(); }
    static void choose(const char* box, int downs) {
        for (int i = 0; i < downs; ++i)
            QTest::keyClick(control<QComboBox>(form(), box), Qt::Key_Down);
    }
    /// The first columns of the list.
    static QStringList gaps(int columns) {
        QStringList result;
        for (const QString& row : listed(*control<forms::ListView>(form(), "lsvGaps")))
            result << row.section(u'|', 0, columns - 1);
        return result;
    }
    static void rate(int question, int survey, int weightage, int score) {
        addScore(1, question, survey, survey == 1 ? spring : autumn, weightage, score);
    }
    /// Two parameters that change places between the dates, and one in autumn only.
    void rateTwoDates() {
        addRespondent(1, u"Ann"_s);
        for (const QString& name : {u"Speed"_s, u"Care"_s, u"Price"_s})
            addQuestion(addParameter(name), name + u'?');
        rate(1, 1, 8, 3);
        rate(2, 1, 4, 9);
        rate(1, 2, 9, 7);
        rate(2, 2, 4, 8);
        rate(3, 2, 2, 1);
        showForm();
    }

    chart::MSChart* drawn = nullptr;
};

/// Means, gaps and quadrants of 30 respondents and 24 items as a statistics package has computed them.
TEST_F(MatrixAidsTest, aSampleComesOutTheSame) {
    QFile file(QStringLiteral(GAUGEWELL_SOURCE "/tests/data/quadrants30.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QStringList items = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts).mid(1);
    Transaction transaction;
    for (int person = 0; person < 30; ++person)
        addRespondent(1, QString::number(person));
    for (const QString& item : items) {
        const QStringList fields = item.split(u',');
        const int question = addQuestion(addParameter(fields[0]), fields[0] + u'?');
        for (int person = 0; person < 30; ++person)
            addScore(person + 1, question, 1, spring, fields[1][person].digitValue(),
                     fields[2][person].digitValue());
    }
    transaction.Commit();
    showForm();
    clickEntry(form(), "lstSurveyDates", 0);
    QTest::keyClick(&form(), Qt::Key_G, Qt::AltModifier);
    const auto expect = [&](int downs, int column, const QString& heading) {
        choose("cmbCrossHair", downs);
        QStringList expected;
        for (const QString& item : items) {
            const QStringList fields = item.split(u',');
            expected << fields[0] + u'|' + fields.mid(3, 3).join(u'|') + u'|' + fields[column];
        }
        QStringList found = gaps(6).replaceInStrings(QRegularExpression(u"^\\d+\\|"_s), {});
        found.sort();
        EXPECT_EQ(found, expected);
        EXPECT_EQ(drawn->Title(), heading);
    };
    expect(1, 6, u"Cross-hair at means: score 4.05, weightage 4.30"_s);
    expect(1, 7, u"Cross-hair at medians: score 3.92, weightage 4.42"_s);
    const QStringList byGap = gaps(5);
    for (int row = 1; row < byGap.size(); ++row)
        EXPECT_GE(byGap[row - 1].section(u'|', 4).toDouble(), byGap[row].section(u'|', 4).toDouble());
}

TEST_F(MatrixAidsTest, aidsAreDrawnAndRememberedAndGoAgain) {
    rateTwoDates();
    clickEntry(form(), "lstSurveyDates", 1);
    const QImage plain = drawn->Picture();
    QImage before = plain;
    const auto changes = [&](const auto& step) {
        step();
        const QImage now = drawn->Picture();
        const bool isOther = now != before;
        before = now;
        return isOther;
    };
    const auto press = [](Qt::Key key) { QTest::keyClick(&form(), key, Qt::AltModifier); };
    control<QCheckBox>(form(), "chkBasis")->setFocus();
    for (const auto* next :
         {"chkNames", "chkGaps", "chkDiagonal", "cmbCrossHair", "cmbCompared", "mschart"}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), QLatin1StringView(next));
    }
    form().setHeight(form().Height() + 900);
    const int dragged = form().Height();
    EXPECT_TRUE(changes([&] { press(Qt::Key_N); }));
    EXPECT_EQ(form().Height(), dragged);
    EXPECT_TRUE(changes([&] { press(Qt::Key_W); }));
    EXPECT_TRUE(changes([&] { choose("cmbCompared", 1); }));
    EXPECT_EQ(drawn->Title(), u"Arrows from 01/03/2024 to 01/09/2024"_s);
    press(Qt::Key_G);
    const QStringList numbered{
        u"3|Speed|9.00|7.00|+2.00|Keep up the good work|+1.00|+4.00|Concentrate here"_s,
        u"2|Price|2.00|1.00|+1.00|Low priority|||"_s,
        u"1|Care|4.00|8.00|-4.00|Possible overkill|0.00|-1.00|Possible overkill"_s};
    EXPECT_EQ(gaps(9), numbered);
    before = drawn->Picture();
    EXPECT_TRUE(changes([&] { choose("cmbCrossHair", 3); }));
    EXPECT_TRUE(changes([&] { control<QDoubleSpinBox>(form(), "spnOwnScore")->setValue(7.5); }));
    EXPECT_EQ(
        drawn->Title(),
        u"Cross-hair at own values: score 7.50, weightage 5.00\nArrows from 01/03/2024 to 01/09/2024"_s);
    EXPECT_EQ(gaps(6).value(0), u"3|Speed|9.00|7.00|+2.00|Concentrate here"_s);
    const QString text = print(form(), u"Performance Matrix Report"_s);
    for (const QString& word : {u"Acme"_s, u"01/09/2024"_s, u"own values: score 7.50, weightage 5.00"_s,
                                u"Weightage Score"_s, u"3 Speed"_s, u"+2.00"_s, u"Concentrate here"_s})
        EXPECT_TRUE(text.contains(word)) << text;
    press(Qt::Key_G);
    EXPECT_FALSE(print(form(), u"Performance Matrix Report"_s).contains(u"Concentrate here"));
    press(Qt::Key_G);

    frmPerformanceMatrix::unload();
    showForm();
    clickEntry(form(), "lstSurveyDates", 0); // the later date is one to compare with
    EXPECT_EQ(drawn->Title(), u"Cross-hair at own values: score 7.50, weightage 5.00"_s);
    choose("cmbCompared", 1);
    EXPECT_EQ(gaps(9).value(0), u"2|Speed|8.00|3.00|+5.00|Concentrate here|+1.00|+4.00|Concentrate here"_s);
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_W, Qt::Key_G})
        press(key);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(control<QComboBox>(form(), "cmbCrossHair"), Qt::Key_Up);
    clickEntry(form(), "lstSurveyDates", 1); // which ends the comparison with it
    EXPECT_EQ(drawn->Picture().scaled(1, 1), plain.scaled(1, 1));
    EXPECT_EQ(drawn->Picture(), plain);
}

TEST_F(MatrixAidsTest, arrowsMoveWithTheirDotsAndAidsGoAfterAnError) {
    rateTwoDates();
    rate(addQuestion(addParameter(u"Twin"_s), u"Twin?"_s), 1, 5, 6);
    rate(4, 2, 4, 8);
    clickEntry(form(), "lstSurveyDates", 1);
    QTest::keyClick(&form(), Qt::Key_N, Qt::AltModifier);
    choose("cmbCompared", 1);
    QStringList ends; // of the arrows: where the dots come from
    for (const chart::PointArrow& arrow : drawn->SeriesItem(1).PointArrows)
        ends << u"%1|%2 of %3"_s.arg(arrow.other.x()).arg(arrow.other.y()).arg(*drawn->GetData(arrow.row, 1));
    EXPECT_EQ(ends, (QStringList{u"3|8 of 7"_s, u"9|4 of 8"_s, u"6.1|4.9 of 8.1"_s}));
    QTest::keyClick(&form(), Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(drawn->SeriesItem(1).HollowRows.size(), 4U);

    for (int more = 0; more < 9; ++more) // too many on one spot to be drawn
        rate(addQuestion(addParameter(QString::number(more)), u"?"_s), 1, 5, 6);
    clickEntry(form(), "lstSurveyDates", 1);
    EXPECT_EQ(drawn->SeriesItem(1).PointLabels.size(), 4U);
    clickEntry(form(), "lstSurveyDates", 0);
    EXPECT_TRUE(drawn->SeriesItem(1).PointLabels.empty() && drawn->SeriesItem(1).HollowRows.empty());
}

TEST_F(MatrixAidsTest, aDotBecomesAnActionOfTheFirstFreeDay) {
    rateTwoDates();
    clickEntry(form(), "lstSurveyDates", 0);
    add(u"actionplan"_s, {{"customerid", 1}, {"Date", today}, {"Action", u"Older"_s}, {"targetdate", today}});
    const auto start = [&] { // by the keyboard
        drawn->setFocus();
        QTest::keyClick(drawn, Qt::Key_Right);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, drawn->mapToGlobal(QPoint()));
        QTimer::singleShot(0, drawn, [] {
            if (QWidget* menu = QApplication::activePopupWidget())
                menu->close();
        });
        QApplication::sendEvent(drawn, &event);
        auto* action = drawn->findChild<QAction*>(u"newAction"_s);
        EXPECT_TRUE(action->isEnabled());
        action->trigger();
    };
    start();
    EXPECT_EQ(activeForm(), u"frmImprovementPlan"_s);
    frmImprovementPlan& plan = frmImprovementPlan::instance();
    auto* description = control<QLineEdit>(plan, "txtDescription");
    EXPECT_EQ(description->text(), u"Speed: Concentrate here (weightage 8.00, score 3.00 on 01/03/2024). "_s);
    EXPECT_EQ(control<forms::DTPicker>(plan, "dtdate")->Value(), today.addDays(1));
    QTest::keyClicks(description, u"Second carrier"_s);

    form().Show();
    const QString question =
        u"The description of an action has not been saved.\r\nDo you want to replace it?"_s;
    messages.expectTitled(question, style::yesNo + style::secondButton, Answer::No);
    start();
    EXPECT_TRUE(description->text().endsWith(u"Second carrier"_s));
    press(plan, "cmdSave");
    EXPECT_EQ(rows(u"select Action from actionplan order by date"_s),
              (QStringList{
                  u"Older"_s,
                  u"Speed: Concentrate here (weightage 8.00, score 3.00 on 01/03/2024). Second carrier"_s}));

    form().Show();
    run(u"delete from customer"_s);
    messages.expectCritical(u"The customer Acme is no longer in the database. Nothing has been changed."_s);
    start();
    EXPECT_EQ(control<forms::ListView>(plan, "lsvDtls")->ListCount(), 0) << "of the former customer";
    expectIdle();
}
} // namespace
