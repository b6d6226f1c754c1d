// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/plotview.h"

#include "platform/chart/palette.h"

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace chart {
namespace {

constexpr QRgb gridColor = 0xFFD9D9D9;
constexpr int legendIconWidth = 34;
constexpr int legendSpacing = 2;
constexpr int widestName = 190;
constexpr int narrowestName = 90; // where names stand in several columns
constexpr double ringSize = 17;
constexpr double slanted = 45;
constexpr double upright = 90;

} // namespace

PlotView::PlotView(QWidget* parent) : QCustomPlot(parent), ring(addGraph()) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setBackground(QBrush(Qt::white));
    for (QCPAxis* axis : {xAxis, yAxis}) {
        axis->setTickLabelColor(Qt::black);
        axis->setLabelColor(Qt::black);
        axis->grid()->setPen(QPen(QColor(gridColor), 0));
        axis->grid()->setZeroLinePen(Qt::NoPen);
        axis->setSubTicks(false);
    }
    xAxis->grid()->setVisible(false);
    ring->removeFromLegend();
    ring->setLineStyle(QCPGraph::lsNone);
    ring->setScatterStyle({QCPScatterStyle::ssCircle, QPen(Qt::black, 1.5), Qt::NoBrush, ringSize});
    ring->setAdaptiveSampling(false);

    axisRect()->insetLayout()->take(legend);
    auto* beside = new QCPLayoutGrid;
    plotLayout()->addElement(0, 1, beside);
    plotLayout()->setColumnStretchFactor(1, 0.001);
    beside->addElement(0, 0, legend);
    beside->addElement(1, 0, new QCPLayoutElement(this)); // keeps the legend at the top
    beside->setRowStretchFactor(0, 0.001);
    beside->setMargins({0, 8, 8, 0});
    legend->setTextColor(Qt::black);
    legend->setBorderPen(Qt::NoPen);
    legend->setFillOrder(QCPLayoutGrid::foRowsFirst);
    legend->setRowSpacing(legendSpacing);
}

void PlotView::setValueAxis(double minimum, double maximum, int majorDivision, int minorDivision) {
    const QSharedPointer<QCPAxisTickerFixed> ticker(new QCPAxisTickerFixed);
    ticker->setTickStep((maximum - minimum) / majorDivision);
    ticker->setTickOrigin(minimum);
    ticker->setScaleStrategy(QCPAxisTickerFixed::ssNone);
    yAxis->setTicker(ticker);
    yAxis->setSubTicks(minorDivision > 1);
    yAxis->setRange(minimum, maximum);
}

void PlotView::draw(const DataArray& cells, const QStringList& rowLabels, const QStringList& columnLabels,
                    const std::vector<Series>& series) {
    for (int i = graphCount() - 1; i > 0; --i)
        removeGraph(i); // all but the ring
    for (QCPAxis* axis : {xAxis, yAxis}) {
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
    }
    legend->setFont(font());
    legend->setIconSize(legendIconWidth, entryHeight());
    const int entries = cells.columns();
    const int columnsOfNames = legendColumns(entries);
    legend->setWrap((entries + columnsOfNames - 1) / columnsOfNames);
    const int nameWidth = qBound(narrowestName, width() / 4 / columnsOfNames, widestName);
    for (int number = 1; number <= entries; ++number) {
        const QString name =
            fontMetrics().elidedText(columnLabels.value(number - 1), Qt::ElideRight, nameWidth);
        drawSeries(cells, number, name, series[static_cast<std::size_t>(number - 1)]);
    }
    legend->setVisible(entries > 0);
    setBufferDevicePixelRatio(devicePixelRatioF());
    replot(rpQueuedRefresh); // once for the size of the plot, on which the labels depend
    drawRowLabels(cells.rows(), rowLabels);
    replot(rpQueuedRefresh);
}

void PlotView::drawSeries(const DataArray& cells, int number, const QString& name, const Series& series) {
    QVector<double> x;
    QVector<double> y;
    for (int row = 1; row <= cells.rows(); ++row) {
        x << row;
        y << cells.at(row, number).value_or(std::numeric_limits<double>::quiet_NaN()); // NaN leaves a gap
    }
    QCPGraph* graph = addGraph();
    graph->setName(name);
    graph->setData(x, y, true);
    graph->setAdaptiveSampling(false);
    graph->setLineStyle(series.ShowLine ? QCPGraph::lsLine : QCPGraph::lsNone);
    graph->setPen(seriesPen(series, number));
    if (series.showsMarkers())
        graph->setScatterStyle(seriesMarker(series, number));
}

/// The labels stand level where they fit, else slanted, else upright, and where even that is too tight only
/// some of them stand.
void PlotView::drawRowLabels(int rows, const QStringList& labels) {
    int widest = 0;
    for (const QString& label : labels)
        widest = qMax(widest, fontMetrics().horizontalAdvance(label));
    const double room = axisRect()->width() / qMax(1.0, static_cast<double>(rows));
    const double line = fontMetrics().height();
    const double angle = room > widest + line ? 0 : room > line * 1.6 ? slanted : upright;
    const int every = angle == upright ? qMax(1, static_cast<int>(std::ceil(line / room))) : 1;
    const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
    for (int row = 1; row <= rows; row += every)
        ticker->addTick(row, labels.value(row - 1));
    xAxis->setTicker(ticker);
    xAxis->setTickLabelRotation(-angle);
    xAxis->setRange(0.5, qMax(1, rows) + 0.5);
}

/// An entry is as high as its icon, and clips what is higher.
int PlotView::entryHeight() const {
    return fontMetrics().height() + 2;
}

int PlotView::legendColumns(int entries) const {
    const int step = entryHeight() + legendSpacing;
    const int fitting = qMax(1, (height() - 2 * step) / step);
    return qMax(1, (entries + fitting - 1) / fitting);
}

void PlotView::mark(const std::optional<QPointF>& point) {
    ring->data()->clear();
    if (point)
        ring->addData(point->x(), point->y());
    replot(rpQueuedRefresh);
}

QPointF PlotView::positionOf(double x, double y) const {
    return {xAxis->coordToPixel(x), yAxis->coordToPixel(y)};
}

void PlotView::paintEvent(QPaintEvent* event) {
    if (beforePaint)
        beforePaint();
    QCustomPlot::paintEvent(event);
}

} // namespace chart
