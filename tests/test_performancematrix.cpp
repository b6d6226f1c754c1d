// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/performancematrix.h"
#include "analysis/frmPerformanceMatrix.h"
#include "platform/chart/mschart.h"
#include "tests/support/listview.h"
#include "tests/support/reporttest.h"

#include <QGuiApplication>
#include <QImage>

namespace {
using Answers = std::vector<RatedAnswer>;

/// n answers whose weightages and scores have these sums.
Answers sums(std::size_t n, std::int16_t weightages, std::int16_t scores) {
    Answers answers(n, RatedAnswer{0, 0});
    answers.front() = {weightages, scores};
    return answers;
}

TEST(MatrixMeans, ofGroups) {
    const std::tuple<Answers, double, double> cases[] = {
        {{{8, 7}, {6, 0}, {4, 9}}, 6, 5.33},
        {{{std::nullopt, 3}, {5, std::nullopt}}, 2.5, 1.5}, // tested separately; Null counts in n
        {{{0, 7}, {0, 8}}, 0, 7.5},
        {sums(8, 17, 19), 2.12, 2.38},  // 2.125 and 2.375: ties to the even digit
        {sums(40, 107, 3), 2.67, 0.07}, // as doubles 2.675 and 0.075 are below the tie
        {sums(200, 1, 3), 0.01, 0.01},  // as doubles 0.005 is above the tie, 0.015 below
    };
    for (const auto& [answers, weightage, score] : cases) {
        const std::optional<MatrixMeans> means = matrixMeans(answers);
        ASSERT_TRUE(means);
        EXPECT_EQ(means->weightage, weightage);
        EXPECT_EQ(means->score, score);
    }
    EXPECT_FALSE(matrixMeans(Answers{{0, 0}, {std::nullopt, std::nullopt}}));
    EXPECT_THROW(matrixMeans(Answers{{1, 32767}, {1, 1}}), Failure);
    EXPECT_EQ(matrixMeans(Answers{{32767, 1}, {32767, 1}})->weightage, 32767);
}

TEST(MatrixPlaces, coincidingPointsMoveApart) {
    MatrixPlaces places;
    const auto next = [&](double score, double weightage) {
        const MatrixMeans place = places.next({.weightage = weightage, .score = score});
        return std::pair(place.score, place.weightage);
    };
    using Place = std::pair<double, double>;
    EXPECT_EQ(next(5.67, 2.5), Place(5.67, 2.5));
    EXPECT_EQ(next(5.67, 2.5), Place(6.1, 1.9)) << "rounded, half to even";
    EXPECT_EQ(next(5.67, 2.6), Place(5.67, 2.6)) << "another weightage";
    EXPECT_EQ(next(5.67, 2.5), Place(5.67, 2.5)) << "another between";
    for (const Place& place :
         {Place{5.9, 1.9}, {5.9, 2.1}, {6.1, 2.1}, {6.1, 2}, {6, 1.9}, {5.9, 2}, {6, 2.1}})
        EXPECT_EQ(next(5.67, 2.5), place) << "the count continues";
    EXPECT_THROW(next(5.67, 2.5), Failure);
}

struct PerformanceMatrixTest : ReportTest {
    void SetUp() override {
        ReportTest::SetUp();
        addRespondent(addCustomer(u"Acme"_s), u"Ann"_s);
        addSurvey(1, spring);
        addSurvey(1, autumn);
        addCustomer(u"Brown"_s);
        form().Show();
        drawn = control<chart::MSChart>(form(), "mschart");
    }
    static frmPerformanceMatrix& form() { return frmPerformanceMatrix::instance(); }
    /// Adds a parameter with one answer.
    static void rate(const QString& parameter, int weightage, int score, const QDate& date = spring) {
        const int question = addQuestion(addParameter(parameter), parameter + u'?');
        addScore(1, question, date == spring ? 1 : 2, date, weightage, score);
    }
    /// Whether chart and print button are shown; always both or none.
    bool isExpanded() {
        auto* print = control<QPushButton>(form(), "cmdPrint");
        EXPECT_EQ(print->isVisible(), drawn->isVisible());
        return drawn->isVisible();
    }
    static void clickDate(int index) { clickEntry(form(), "lstSurveyDates", index); }
    void expectTip(int point, const QString& name, const QString& weightage, const QString& score) {
        messages.expectInformation(u"Parameter  : "_s + name + u"\r\nWeightage : " + weightage +
                                   u"\r\nScore         : " + score);
        QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(1, point));
    }
    QStringList gridRows() {
        auto* grid = control<forms::MSHFlexGrid>(form(), "MSHFlexGrid1");
        QStringList result;
        for (int row = 1; row < grid->Rows(); ++row) {
            QStringList cells;
            for (int column = 0; column < grid->Cols(); ++column)
                cells << grid->TextMatrix(row, column);
            grid->moveTo(row, 3);
            result << cells.join(u'|') + u'|' + grid->CellBackColor().name();
        }
        return result;
    }

    chart::MSChart* drawn = nullptr;
};

TEST_F(PerformanceMatrixTest, viewShowsChartAndGrid) {
    rate(u"Zeal"_s, 6, 0);
    addScore(addRespondent(1, u"Bob"_s), 1, 1, spring, 4, 10); // grouped with the first: 5 and 5
    rate(u"Price"_s, 7, 3);
    rate(u"Care"_s, 7, 3);
    rate(u"Speed"_s, 2, 9);
    rate(u"Unrated"_s, 0, 0);
    clickDate(0);
    EXPECT_TRUE(isExpanded());
    EXPECT_EQ(
        rows(u"select custname, Parameter, wt, sc from scattertable"_s),
        (QStringList{u"Acme|Zeal|5|5"_s, u"Acme|Price|7|3"_s, u"Acme|Care|7|3"_s, u"Acme|Speed|2|9"_s}));
    // by parameter, the colours by score: red, red, green, yellow
    EXPECT_EQ(gridRows(), (QStringList{u"Acme|Care|7.00|3.00|#ff0000"_s, u"Acme|Price|7.00|3.00|#ff0000"_s,
                                       u"Acme|Speed|2.00|9.00|#00ff00"_s, u"Acme|Zeal|5.00|5.00|#ffff00"_s}));
    EXPECT_NEAR(*drawn->GetData(2, 1), 3.1, 1e-6);
    EXPECT_NEAR(*drawn->GetData(2, 2), 6.9, 1e-6);
    expectTip(2, u"Care"_s, u"7.00"_s, u"3.00"_s); // drawn displaced, with its true figures
    expectTip(4, u"Speed"_s, u"2.00"_s, u"9.00"_s);

    messages.expectInformation(u"No record(s) present to view Performance Matrix"_s);
    clickDate(1);
    EXPECT_FALSE(isExpanded());
    clickDate(0);
    control<forms::ComboBox>(form(), "cmdCustomerName")->setListIndex(1);
    EXPECT_FALSE(isExpanded());
    press(form(), "cmdView"); // without a date no message
    expectIdle();
}

TEST_F(PerformanceMatrixTest, theBasisStandsInTheListTheTipAndTheChart) {
    rate(u"Price"_s, 7, 3);
    rate(u"Care"_s, 7, 3);
    addQuestionnaire(1, 1, {1, 2});
    for (const int mark : {4, 5, 0}) {
        const int respondent = addRespondent(1, QString::number(mark));
        addQuestionnaire(respondent, 1, {1});
        addScore(respondent, 1, 1, spring, mark, 2 * mark);
    }
    addQuestionnaire(addRespondent(1, u"Silent"_s), 1, {1});
    clickDate(0);
    const QStringList rowsWithout = gridRows();
    const QImage plain = drawn->Picture();
    QTest::keyClick(&form(), Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(gridRows(), rowsWithout);
    EXPECT_NE(drawn->Picture(), plain);
    EXPECT_EQ(listed(*control<forms::ListView>(form(), "lsvBasis")),
              (QStringList{u"Care|7.00|too few to say|3.00|too few to say|1 of 1 respondent, 1 of 1 "
                           "question rated"_s,
                           u"Price|4.00|2.40 to 5.60|5.25|1.47 to 9.03|3 of 5 respondents, 3 of 5 questions "
                           "rated"_s}));
    messages.expectTitledBeginning(u"Parameter  : Care"_s, style::information);
    QTest::mouseClick(drawn, Qt::LeftButton, {}, drawn->PointPosition(1, 1));
    QTest::keyClick(&form(), Qt::Key_B, Qt::AltModifier);
    EXPECT_EQ(drawn->Picture().size(), plain.size());
    EXPECT_EQ(drawn->Picture(), plain);
}

/// There are eight shifts for coinciding points; the ninth stops the drawing silently, the chart stays.
TEST_F(PerformanceMatrixTest, ninthCoincidenceEndsSilently) {
    for (int i = 0; i < 10; ++i)
        rate(u"Same %1"_s.arg(i), 6, 6);
    for (int i = 0; i < 12; ++i)
        rate(u"Later %1"_s.arg(i), 3, i % 10, autumn);
    clickDate(1);
    clickDate(0);
    EXPECT_TRUE(isExpanded());
    EXPECT_EQ(drawn->RowCount(), 12);
    EXPECT_EQ(gridRows().size(), 10);
    for (int i = 0; i < 12; ++i) // points left from the other date have no figures
        QTest::keyClick(drawn, Qt::Key_Right);
}

TEST_F(PerformanceMatrixTest, picturesAreSavedAndFailuresReported) {
    rate(u"Price"_s, 7, 3);
    clickDate(0);
    expectInOrder(print(form(), u"Performance Matrix Report"_s),
                  {u"Customer Acme"_s, u"Survey date 01/03/2024"_s, u"Price 7.00 3.00"_s});
    EXPECT_FALSE(QGuiApplication::clipboard()->image().isNull());
    EXPECT_GT(QImage(home() + u"/perform.bmp"_s).width(), 2000) << "too coarse for a page";
    ASSERT_TRUE(QFile::remove(home() + u"/perform.bmp"_s) && QDir().mkdir(home() + u"/perform.bmp"_s));
    messages.expect(u"75:Path/File access error"_s);
    press(form(), "cmdPrint");
    expectIdle();

    const QList<QAction*> actions = drawn->actions();
    ASSERT_EQ(actions.size(), 7);
    actions[4]->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Parameter\tScore\tWeightage\nPrice\t3\t7"_s);
    for (const int kind : {1, 2, 3}) {
        named = home() + (kind == 1 ? u"/a.PNG"_s : u"/a"_s);
        actions[kind]->trigger();
    }
    EXPECT_GT(QImage(home() + u"/a.PNG"_s).width(), 2000);
    EXPECT_TRUE(pdfPages(home() + u"/a.pdf"_s).value(0).contains(u"Weightage"));
    EXPECT_TRUE(QFile::exists(home() + u"/a.svg"_s));
    messages.expect(home() + u"/a.pdf already exists.\r\nDo you want to replace it?"_s,
                    style::yesNo + style::secondButton, {}, Answer::No);
    actions[3]->trigger();
    named = home() + u"/none/a.png"_s;
    messages.expect(u"The picture could not be saved as "_s + named, style::critical);
    actions[1]->trigger();
}
} // namespace
