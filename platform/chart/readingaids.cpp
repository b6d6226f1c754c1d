// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/readingaids.h"

#include "platform/chart/drawing.h"
#include "platform/chart/labelplaces.h"
#include "platform/chart/qcp.h"

#include <cmath>

namespace chart {
namespace {

constexpr QRgb crossColor = 0xFF404040;
constexpr QRgb diagonalColor = 0xFF909090;
constexpr QRgb arrowColor = 0xFFB06000;
constexpr double markerRadius = 6; // pixels, like shortestArrow
constexpr double shortestArrow = 4;
constexpr double headWidth = 6;
constexpr double headLength = 8;
constexpr QColor labelGround(255, 255, 255, 190); // lines stay visible behind a label

QPointF pixelsOf(const QCustomPlot& plot, const QPointF& place) {
    return {plot.xAxis->coordToPixel(place.x()), plot.yAxis->coordToPixel(place.y())};
}

void drawStraight(QCustomPlot& plot, const QPointF& from, const QPointF& to, const QPen& pen) {
    auto* line = new QCPItemStraightLine(&plot);
    line->point1->setCoords(from);
    line->point2->setCoords(to);
    line->setPen(pen);
}

void drawArrow(QCustomPlot& plot, const QPointF& from, const QPointF& to) {
    auto* line = new QCPItemLine(&plot);
    line->start->setType(QCPItemPosition::ptAbsolute);
    line->end->setType(QCPItemPosition::ptAbsolute);
    line->start->setPixelPosition(from);
    line->end->setPixelPosition(to);
    line->setPen(QPen(QColor(arrowColor), 1.5));
    line->setHead({QCPLineEnding::esSpikeArrow, headWidth, headLength});
}

/// Ends at the edge of the point's marker. A point that has hardly moved has none.
void drawArrowOf(QCustomPlot& plot, const DrawnSeries& series, const PointArrow& arrow) {
    const QPointF point = pixelsOf(plot, {series.x.value(arrow.row - 1), series.y.value(arrow.row - 1)});
    const QPointF other = pixelsOf(plot, arrow.other);
    const double length = std::hypot(point.x() - other.x(), point.y() - other.y());
    if (length < markerRadius + shortestArrow)
        return;
    const QPointF edge = point + (other - point) * (markerRadius / length);
    if (arrow.isFromPoint)
        drawArrow(plot, edge, other);
    else
        drawArrow(plot, other, edge);
}

/// Small squares along the arrows.
std::vector<QRectF> placesOfArrows(const QCustomPlot& plot, const DrawnSeries& series) {
    std::vector<QRectF> places;
    for (const PointArrow& arrow : series.look.PointArrows) {
        const QPointF point = pixelsOf(plot, {series.x.value(arrow.row - 1), series.y.value(arrow.row - 1)});
        const QPointF way = pixelsOf(plot, arrow.other) - point;
        const int steps = qMax(1, static_cast<int>(std::hypot(way.x(), way.y()) / headWidth));
        for (int step = 0; step <= steps; ++step)
            places.emplace_back(point + way * step / steps - QPointF(headWidth, headWidth) / 2,
                                QSizeF(headWidth, headWidth));
    }
    return places;
}

void drawLabels(QCustomPlot& plot, const DrawnSeries& series) {
    const QFontMetricsF metrics(plot.font());
    const auto sizeOf = [&](const QString& text) {
        return QSizeF(metrics.horizontalAdvance(text) + 2, metrics.height());
    };
    const auto numberOf = [](const PointLabel& label) { return QString::number(label.number); };
    const auto textOf = [&](const PointLabel& label) -> QString {
        return numberOf(label) + u' ' + label.name;
    };
    std::vector<QPointF> points;
    std::vector<LabelSizes> sizes;
    for (const PointLabel& label : series.look.PointLabels) {
        points.push_back(pixelsOf(plot, {series.x.value(label.row - 1), series.y.value(label.row - 1)}));
        sizes.push_back({sizeOf(textOf(label)), sizeOf(numberOf(label))});
    }
    const std::vector<LabelPlace> places =
        placeLabels(points, sizes, plot.axisRect()->rect(), markerRadius + 1, placesOfArrows(plot, series));
    for (std::size_t i = 0; i < places.size(); ++i) {
        const PointLabel& label = series.look.PointLabels[i];
        auto* text = new QCPItemText(&plot);
        text->position->setType(QCPItemPosition::ptAbsolute);
        text->position->setPixelPosition(places[i].rect.center());
        text->setFont(plot.font());
        text->setColor(Qt::black);
        text->setBrush(labelGround);
        text->setText(places[i].isFull ? textOf(label) : numberOf(label));
    }
}

} // namespace

void drawReadingAids(QCustomPlot& plot, const Drawing& drawing) {
    if (const std::optional<QPointF>& cross = drawing.crossHair) {
        drawStraight(plot, *cross, *cross + QPointF(1, 0), QPen(QColor(crossColor), 1.5));
        drawStraight(plot, *cross, *cross + QPointF(0, 1), QPen(QColor(crossColor), 1.5));
    }
    if (drawing.hasDiagonal)
        drawStraight(plot, {0, 0}, {1, 1}, QPen(QColor(diagonalColor), 1, Qt::DashLine));
    for (const DrawnSeries& series : drawing.series) {
        for (const PointArrow& arrow : series.look.PointArrows)
            drawArrowOf(plot, series, arrow);
        drawLabels(plot, series);
    }
}

} // namespace chart
