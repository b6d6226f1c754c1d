// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/mschart.h"
#include "tests/support/files.h"
#include "tests/support/heard.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTemporaryDir>
#include <QTest>

#include <set>

using chart::DataArray, chart::MSChart;

namespace {
using Picked = std::vector<std::pair<int, int>>; // series and point

struct ChartTest : ::testing::Test {
    void SetUp() override {
        shown.resize(800, 360);
        shown.setValueScale({.Minimum = 0, .Maximum = 11, .MajorDivision = 11, .MinorDivision = 1});
        QObject::connect(&shown, &MSChart::PointActivated, &shown,
                         [this](int series, int point) { picked.emplace_back(series, point); });
        shown.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&shown));
    }
    /// Fills the data grid by columns; 0 is Null.
    void fill(const std::vector<std::vector<double>>& columns) {
        DataArray cells(static_cast<int>(columns.front().size()), static_cast<int>(columns.size()));
        int column = 0;
        for (const std::vector<double>& values : columns) {
            int row = 0;
            ++column;
            for (const double value : values)
                cells.at(++row, column) = value != 0 ? std::optional(value) : std::nullopt;
        }
        shown.setChartData(cells);
    }

    void click(QPoint at) { QTest::mouseClick(&shown, Qt::LeftButton, {}, at); }
    bool isInked(const QImage& image, QPointF at) const {
        const qreal ratio = image.width() / static_cast<qreal>(shown.width());
        return image.pixelColor((at * ratio).toPoint()).saturation() > 60;
    }

    MSChart shown;
    Picked picked;
};

TEST_F(ChartTest, lineJoinsNeighboursAndLeavesAGapAtNull) {
    fill({{4, 8, 0, 8, 4}});
    const QImage image = shown.Picture();
    const auto between = [&](int from, int to) {
        return QPointF(shown.PointPosition(1, from) + shown.PointPosition(1, to)) / 2;
    };
    EXPECT_TRUE(isInked(image, shown.PointPosition(1, 1)));
    EXPECT_TRUE(isInked(image, between(1, 2)));
    EXPECT_FALSE(isInked(image, between(2, 4))) << "a line over the missing point";
    EXPECT_EQ(shown.PointPosition(1, 3), QPoint(-1, -1));
    fill({{1, 300}});
    EXPECT_GT(shown.PointPosition(1, 1).y() - shown.PointPosition(1, 2).y(), shown.height())
        << "the scale is fixed";
}

TEST_F(ChartTest, keysSelectPoints) {
    fill({{0, 5, 0, 7}, {0, 0, 0, 0}, {6, 0, 6, 0}});
    shown.setFocus();
    const auto press = [&](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(&shown, key);
        QTest::keyClick(&shown, Qt::Key_Return);
    };
    press({});                             // no point selected yet
    press({Qt::Key_Right});                // the first point
    press({Qt::Key_Right, Qt::Key_Right}); // across the gap, then stops at the end
    press({Qt::Key_Down});                 // past the empty series to the nearest row
    press({Qt::Key_Left, Qt::Key_Left});
    Picked meant;
    QObject::connect(&shown, &MSChart::MenuAboutToOpen, &shown,
                     [&](int series, int row) { meant.emplace_back(series, row); });
    for (const auto reason : {QContextMenuEvent::Mouse, QContextMenuEvent::Keyboard}) {
        QContextMenuEvent menu(reason, {1, 1}, {}, {}); // beside all points
        QApplication::sendEvent(&shown, &menu);
    }
    press({});
    EXPECT_EQ(meant, (Picked{{0, 0}, {3, 1}}));
    EXPECT_EQ(picked, (Picked{{1, 2}, {1, 4}, {3, 3}, {3, 1}, {3, 1}}));
    shown.tipText = [](int series, int) -> QString { throw Failure(QString::number(series)); };
    fill({{0, 0}});
    press({Qt::Key_Right, Qt::Key_Down, Qt::Key_Left});
    EXPECT_EQ(picked.size(), 5u) << "no point, no move";
}

TEST_F(ChartTest, aReaderReadsTheTableAndIsToldThePoint) {
    const Heard heard;
    shown.setAccessibleName(u"Index"_s);
    shown.pointTable = [] {
        return tables::Table{{u"Parameter"_s, u"Index"_s},
                             {{u"Price"_s, 5.0}, {u"Price"_s, double(7.3F)}, {u"Service"_s, 6.0}}};
    };
    shown.tipText = [](int, int point) -> QString { return u"point "_s + QString::number(point); };
    fill({{0, 5, 0, 7}, {6, 0, 0, 0}});
    QAccessibleInterface& table = *QAccessible::queryAccessibleInterface(&shown);
    EXPECT_EQ(table.text(QAccessible::Name), u"Index"_s);
    ASSERT_EQ(table.role(), QAccessible::Table);
    QStringList read;
    for (int i = 0; i < table.childCount(); ++i) {
        EXPECT_EQ(table.indexOfChild(table.child(i)), i);
        read << table.child(i)->text(QAccessible::Name);
    }
    EXPECT_EQ(read.join(u'|'), u"Parameter|Index|Price|5|Price|7.3|Service|6"_s);
    EXPECT_EQ(table.tableInterface()->rowDescription(2), u"Service"_s);
    shown.setFocus();
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Down})
        QTest::keyClick(&shown, key);
    EXPECT_EQ(heard.take(), (QStringList{u"Price|Index|5|point 2"_s, u"Price|Index|7.3|point 4"_s,
                                         u"Service|Index|6|point 1"_s}));
    QAccessibleInterface* last = table.tableInterface()->cellAt(2, 1);
    EXPECT_TRUE(last->state().focused);
    shown.pointTable = [] { return tables::Table{{u"Parameter"_s}, {}}; };
    fill({{1}});
    EXPECT_FALSE(last->isValid());
    EXPECT_EQ(table.childCount(), 1) << "the new table";
}

/// Two columns per series, in any order of x; markers at the edge of the scale are drawn whole.
TEST_F(ChartTest, xyChart) {
    const chart::Scale scale{.Minimum = 0, .Maximum = 10, .MajorDivision = 2, .MinorDivision = 5};
    shown.setCategoryScale(scale);
    shown.setValueScale(scale);
    fill({{10.1, 5, 10}, {10.1, 2, 10}});
    shown.setChartType(MSChart::xy);
    ASSERT_EQ(shown.SeriesCount(), 1);
    shown.SeriesItem(1).ShowLine = false;
    const auto at = [&](int point) { return shown.PointPosition(1, point); };
    EXPECT_EQ(at(1).x() > at(3).x() && at(3).x() > at(2).x(), true);
    EXPECT_LT(at(3).y(), at(2).y());
    const QImage image = shown.Picture();
    EXPECT_TRUE(isInked(image, at(3)));
    for (int point = 1; point <= 3; ++point)
        click(at(point));
    click(at(2) + QPoint(4, -4)); // a near miss
    click(at(2) + QPoint(0, -30));
    QTest::mouseClick(&shown, Qt::RightButton, {}, at(2));
    EXPECT_TRUE(isInked(image, at(1) + QPoint(2, -3))) << "cut off";
    EXPECT_FALSE(isInked(image, (at(2) + at(3)) / 2)) << "a line";
    EXPECT_EQ(picked, (Picked{{1, 1}, {1, 2}, {1, 3}, {1, 2}}));
}

TEST_F(ChartTest, referencesAndMarks) {
    fill({{5, 6, 7}, {3, 0, 8}});
    const QImage plain = shown.Picture();
    const QPoint marked = shown.PointPosition(1, 1);
    shown.SeriesItem(1).ComparedWith = {6.5, u"6.50"_s, u"Goal: 6.50"_s};
    shown.SeriesItem(2).ComparedWith = {6.5, u"6.50"_s, {}};
    shown.SeriesItem(1).MarkedRows = {1};
    const QImage compared = shown.Picture();
    EXPECT_LT(shown.PointPosition(1, 3).x(), plain.width());
    const int y = (shown.PointPosition(1, 2).y() + shown.PointPosition(1, 3).y()) / 2;
    std::set<QRgb> inks;
    for (int x = shown.PointPosition(1, 1).x() - 40; x < shown.PointPosition(1, 2).x(); ++x) {
        for (const int off : {-1, 0, 1}) {
            if (isInked(compared, {double(x), double(y + off)}))
                inks.insert(compared.pixel(x, y + off));
        }
    }
    EXPECT_GE(inks.size(), 2U) << "two lines on one value";
    const QColor ring = compared.pixelColor(shown.PointPosition(1, 1) + QPoint(6, 0));
    EXPECT_TRUE(ring.red() > 150 && ring.green() < 120) << ring.name();
    for (int series : {1, 2})
        shown.SeriesItem(series) = {};
    EXPECT_EQ(shown.Picture(), plain);
    EXPECT_EQ(shown.PointPosition(1, 1), marked);
}

/// Twelve series with long names leave room for the plot, and all look different.
TEST_F(ChartTest, manySeries) {
    fill(std::vector<std::vector<double>>(12, {5, 6}));
    for (int column = 1; column <= 12; ++column) {
        shown.setColumn(column);
        shown.setColumnLabel(u"A parameter with a name longer than any legend can hold %1"_s.arg(column));
    }
    EXPECT_GT(shown.PointPosition(1, 2).x() - shown.PointPosition(1, 1).x(), shown.width() / 4);
    const QTemporaryDir folder;
    ASSERT_TRUE(shown.SavePicture(folder.filePath(u"paper.svg"_s), {690, 377}));
    ASSERT_TRUE(shown.SavePicture(folder.filePath(u"paper.png"_s), {690, 377}, 2));
    EXPECT_EQ(contentOf(folder.filePath(u"paper.svg"_s)).count("parameter"), 12)
        << "names on paper are whole";
    const QImage paper(folder.filePath(u"paper.png"_s));
    EXPECT_EQ(paper.width(), 1380);
    EXPECT_NEAR(paper.height(), 754, 3);
    for (int y = 0; y < paper.height(); ++y)
        ASSERT_EQ(paper.pixelColor(paper.width() - 1, y), QColor(Qt::white)) << "cut at the edge";
    std::set<std::vector<uchar>> looks;
    for (int series = 1; series <= 12; ++series) {
        std::vector<std::vector<double>> one(12, {0, 0});
        one[static_cast<std::size_t>(series - 1)] = {5, 6};
        fill(one);
        const QPoint at = shown.PointPosition(series, 1);
        const QImage cut = shown.Picture().copy(QRect(at - QPoint(6, 6), at + QPoint(6, 6)));
        looks.insert({cut.constBits(), cut.constBits() + cut.sizeInBytes()});
    }
    EXPECT_EQ(looks.size(), 12u);
}
} // namespace
