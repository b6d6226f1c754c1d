// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/plotview.h"

#include "platform/chart/palette.h"
#include "platform/chart/readingaids.h"
#include "platform/chart/references.h"

#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

namespace chart {
namespace {

constexpr QRgb gridColor = 0xFFD9D9D9;
constexpr QRgb borderColor = 0xFF808080; // of the lines that divide an XY chart
constexpr int legendIconWidth = 34;
constexpr int legendSpacing = 2;
constexpr int titleMargin = 6;
constexpr int widestName = 190;
constexpr int narrowestName = 90;     // where names are in several columns
constexpr double largestLegend = 0.4; // of the width
constexpr double ringSize = 17;
constexpr double whiskerWidth = 7;
constexpr double slanted = 45;
constexpr double upright = 90;
constexpr double margin = 0.03; // of the scale, so that a point on its edge shows its whole marker

/// Labels at the major divisions, marks at the minor ones.
class ScaleTicker : public QCPAxisTickerFixed {
public:
    explicit ScaleTicker(const Scale& scale) : marks(scale.MinorDivision - 1) {
        setTickStep((scale.Maximum - scale.Minimum) / scale.MajorDivision);
        setTickOrigin(scale.Minimum);
        setScaleStrategy(ssNone);
    }

protected:
    int getSubTickCount(double /*tickStep*/) override { return marks; }

private:
    int marks;
};

void setScale(QCPAxis& axis, const Scale& scale, double outside = 0) {
    const double beyond = outside * (scale.Maximum - scale.Minimum);
    axis.setTicker(QSharedPointer<ScaleTicker>::create(scale));
    axis.setSubTicks(scale.MinorDivision > 1);
    axis.setRange(scale.Minimum - beyond, scale.Maximum + beyond);
}

bool hasLegendOfSeries(const Drawing& drawing) {
    return !drawing.across || drawing.series.size() > 1;
}

/// In the legend: the series, or the labels of an XY chart with one series.
QStringList namesOf(const Drawing& drawing) {
    QStringList names;
    if (hasLegendOfSeries(drawing)) {
        for (const DrawnSeries& series : drawing.series)
            names << series.name;
    } else if (!drawing.series.empty()) {
        for (const PointLabel& label : drawing.series.front().look.PointLabels)
            names << QString::number(label.number) + u"  " + label.name;
    }
    return names;
}

/// In lines of at most a width, parted between words where that is possible.
QString parted(const QString& text, const QFont& font, int width) {
    QTextOption wrapping;
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(text, font);
    layout.setTextOption(wrapping);
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines << text.mid(line.textStart(), line.textLength()).trimmed();
    }
    return lines.join(u'\n');
}

} // namespace

PlotView::PlotView(QWidget* parent) : QCustomPlot(parent), ring(addGraph()) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    // A replot that painted at once would call beforePaint within itself, whose own replot is ignored then.
    setPlottingHint(QCP::phImmediateRefresh, false);
    setBackground(QBrush(Qt::white));
    for (QCPAxis* axis : {xAxis, yAxis}) {
        axis->setTickLabelColor(Qt::black);
        axis->setLabelColor(Qt::black);
        axis->grid()->setZeroLinePen(Qt::NoPen);
        axis->setSubTicks(false);
    }
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

void PlotView::setDrawing(const Drawing& drawing) {
    for (int i = plottableCount() - 1; i > 0; --i)
        removePlottable(i); // all but the ring
    clearItems();
    setTitle(drawing.title);
    xAxis->setLabel(drawing.acrossTitle);
    yAxis->setLabel(drawing.upTitle);
    for (QCPAxis* axis : {xAxis, yAxis}) {
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
        const bool isDividing = drawing.across && !drawing.crossHair;
        axis->grid()->setPen(isDividing ? QPen(QColor(borderColor), 1) : QPen(QColor(gridColor), 0));
    }
    xAxis->grid()->setVisible(drawing.across.has_value());
    setScale(*yAxis, drawing.up, drawing.across ? margin : 0);
    const auto entries = static_cast<int>(drawing.series.size());
    const QStringList names = namesOf(drawing);
    setLegend(names, hasLegendOfSeries(drawing) ? legendIconWidth : 0);
    drawReferences(*this, drawing);
    for (int number = 1; number <= entries; ++number)
        drawSeries(drawing.series[static_cast<std::size_t>(number - 1)], number, drawing);
    setBufferDevicePixelRatio(devicePixelRatioF());
    if (drawing.across) {
        setScale(*xAxis, *drawing.across, margin);
        if (!hasLegendOfSeries(drawing))
            listLabels(names);
        replot(rpQueuedRefresh); // determines the size of the plot, on which arrows and labels depend
        drawReadingAids(*this, drawing);
    } else {
        replot(rpQueuedRefresh); // determines the size of the plot, on which the labels depend
        drawCategories(static_cast<int>(drawing.categories.size()), drawing.categories);
    }
    replot(rpQueuedRefresh);
}

void PlotView::setTitle(const QString& text) {
    if (text.isEmpty() && title) {
        plotLayout()->remove(title);
        plotLayout()->simplify();
        title = nullptr;
    }
    if (text.isEmpty())
        return;
    if (!title) {
        title = new QCPTextElement(this);
        plotLayout()->insertRow(0);
        plotLayout()->addElement(0, 0, title);
        title->setMargins({0, titleMargin, 0, 0});
        title->setTextColor(Qt::black);
    }
    title->setFont(font());
    title->setText(text);
}

void PlotView::listLabels(const QStringList& labels) {
    for (const QString& label : labels) {
        QCPGraph* entry = addGraph(); // without points, for its name
        entry->setPen(Qt::NoPen);
        entry->setName(fitted(label));
    }
}

/// As few columns as are not higher than the plot.
void PlotView::setLegend(const QStringList& names, int iconWidth) {
    legend->setFont(font());
    legend->setIconSize(iconWidth, entryHeight());
    const int entries = static_cast<int>(names.size());
    const int room = viewport().height() - 2 * (entryHeight() + legendSpacing);
    int rows = entries;
    for (int columns = 1; columns <= qMax(1, entries); ++columns) {
        rows = (entries + columns - 1) / columns;
        nameWidth = qBound(narrowestName, viewport().width() / 4 / columns, widestName);
        if (legendHeight(names, rows) <= room)
            break;
    }
    legend->setWrap(rows);
    legend->setVisible(entries > 0);
}

/// The entries beside each other are as high as the highest of them.
int PlotView::legendHeight(const QStringList& names, int rows) const {
    std::vector<int> heights(static_cast<std::size_t>(rows), entryHeight());
    for (int entry = 0; entry < names.size(); ++entry) {
        int& height = heights[static_cast<std::size_t>(entry % rows)];
        const auto lines = static_cast<int>(fitted(names[entry]).count(u'\n')) + 1;
        height = qMax(height, lines * fontMetrics().lineSpacing());
    }
    return std::accumulate(heights.begin(), heights.end(), rows * legendSpacing);
}

bool PlotView::hasRoomForLegend() const {
    const QSize needed = legend->visible() ? legend->minimumOuterSizeHint() : QSize();
    return needed.height() <= viewport().height() && needed.width() <= viewport().width() * largestLegend;
}

QString PlotView::fitted(const QString& name) const {
    return onPaper ? parted(name, font(), nameWidth)
                   : fontMetrics().elidedText(name, Qt::ElideRight, nameWidth);
}

void PlotView::drawSeries(const DrawnSeries& series, int number, const Drawing& drawing) {
    QCPGraph* graph = addGraph();
    graph->setName(fitted(series.name));
    graph->setData(series.x, series.y, !drawing.across);
    graph->setAdaptiveSampling(false);
    graph->setLineStyle(series.look.ShowLine ? QCPGraph::lsLine : QCPGraph::lsNone);
    graph->setPen(seriesPen(series.look, number));
    if (series.look.showsMarkers())
        graph->setScatterStyle(seriesMarker(series.look, number));
    if (!hasLegendOfSeries(drawing))
        graph->removeFromLegend();
    drawWhiskers(series, series.look.Whiskers, /*isAcross=*/false, graph->pen());
    if (drawing.across)
        drawWhiskers(series, series.look.AcrossWhiskers, /*isAcross=*/true, graph->pen());
    if (series.look.showsMarkers()) {
        drawMarked(*this, series, graph->scatterStyle());
        drawHollow(series, graph->scatterStyle());
    }
}

void PlotView::drawWhiskers(const DrawnSeries& series, const std::vector<Whisker>& whiskers, bool isAcross,
                            const QPen& pen) {
    if (whiskers.empty())
        return;
    struct Span {
        double x, y, below, above;
    };
    std::vector<Span> spans;
    for (const Whisker& whisker : whiskers) {
        const double x = series.x.value(whisker.row - 1);
        const double y = series.y.value(whisker.row - 1);
        const double value = isAcross ? x : y;
        spans.push_back({x, y, value - whisker.low, whisker.high - value});
    }
    // A graph keeps its points in this order, and error bars belong to points by their number.
    std::stable_sort(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.x < b.x; });
    QVector<double> x, y, below, above;
    for (const Span& span : spans) {
        x << span.x;
        y << span.y;
        below << span.below;
        above << span.above;
    }
    QCPGraph* points = addGraph();
    points->removeFromLegend();
    points->setLineStyle(QCPGraph::lsNone);
    points->setData(x, y, true);
    auto* bars = new QCPErrorBars(xAxis, yAxis);
    bars->removeFromLegend();
    bars->setDataPlottable(points);
    bars->setErrorType(isAcross ? QCPErrorBars::etKeyError : QCPErrorBars::etValueError);
    bars->setData(below, above);
    bars->setPen(QPen(pen.color(), 1));
    bars->setWhiskerWidth(whiskerWidth);
    bars->setSymbolGap(0);
}

void PlotView::drawHollow(const DrawnSeries& series, const QCPScatterStyle& marker) {
    if (series.look.HollowRows.empty())
        return;
    QCPScatterStyle hollow = marker;
    hollow.setShape(QCPScatterStyle::ssCircle); // some shapes have nothing to fill
    hollow.setBrush(Qt::white);
    hollow.setPen(QPen(marker.brush().color(), 2));
    QCPGraph* points = addGraph();
    points->removeFromLegend();
    points->setLineStyle(QCPGraph::lsNone);
    points->setAdaptiveSampling(false);
    points->setScatterStyle(hollow);
    for (const int row : series.look.HollowRows)
        points->addData(series.x.value(row - 1), series.y.value(row - 1));
}

/// The labels are horizontal where they fit, else slanted, else vertical, and where even that is too tight
/// only some of them are shown.
void PlotView::drawCategories(int count, const QStringList& labels) {
    int widest = 0;
    for (const QString& label : labels)
        widest = qMax(widest, fontMetrics().horizontalAdvance(label));
    const double room = axisRect()->width() / qMax(1.0, static_cast<double>(count));
    const double line = fontMetrics().height();
    const double angle = room > widest + line ? 0 : room > line * 1.6 ? slanted : upright;
    const int every = angle == upright ? qMax(1, static_cast<int>(std::ceil(line / room))) : 1;
    const QSharedPointer<QCPAxisTickerText> ticker(new QCPAxisTickerText);
    for (int row = 1; row <= count; row += every)
        ticker->addTick(row, labels.value(row - 1));
    xAxis->setTicker(ticker);
    xAxis->setTickLabelRotation(-angle);
    xAxis->setRange(0.5, qMax(1, count) + 0.5);
}

/// An entry is as high as its icon, and clips what is higher.
int PlotView::entryHeight() const {
    return fontMetrics().height() + 2;
}

void PlotView::mark(const std::optional<QPointF>& point) {
    if (!point && ring->data()->isEmpty()) // each new drawing asks for it
        return;
    ring->data()->clear();
    if (point)
        ring->addData(point->x(), point->y());
    replot(rpQueuedRefresh);
}

QPointF PlotView::positionOf(const QPointF& coordinates) const {
    return {xAxis->coordToPixel(coordinates.x()), yAxis->coordToPixel(coordinates.y())};
}

void PlotView::paintEvent(QPaintEvent* event) {
    if (beforePaint)
        beforePaint();
    QCustomPlot::paintEvent(event);
}

} // namespace chart
