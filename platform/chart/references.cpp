// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/references.h"

#include "platform/chart/palette.h"
#include "platform/chart/qcp.h"

#include <algorithm>
#include <map>

namespace chart {
namespace {

constexpr QRgb markColor = 0xFFC00000;
constexpr double markWidth = 1.5;
constexpr double roomInRing = 3.5; // pixels around the marker; the ring stays within that of the keyboard
constexpr int beforeLabel = 4;     // pixels
constexpr double dash = 6;         // pixels
constexpr double gap = 4;
constexpr double plotShare = 0.7; // of the height, at least

/// The series that are compared with one value, by their numbers.
using Compared = std::map<double, std::vector<int>>;

const Series& lookOf(const Drawing& drawing, int number) {
    return drawing.series[static_cast<std::size_t>(number - 1)].look;
}

void drawLine(QCustomPlot& plot, double value, const QPen& pen) {
    auto* line = new QCPItemLine(&plot);
    for (QCPItemPosition* end : {line->start, line->end}) {
        end->setTypeX(QCPItemPosition::ptAxisRectRatio);
        end->setTypeY(QCPItemPosition::ptPlotCoords);
        end->setCoords(end == line->end ? 1 : 0, value);
    }
    line->setPen(pen);
}

void drawLines(QCustomPlot& plot, const Drawing& drawing, double value, const std::vector<int>& numbers) {
    const auto count = static_cast<double>(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        QPen pen(seriesColor(lookOf(drawing, numbers[i]), numbers[i]), 1);
        pen.setCapStyle(Qt::FlatCap);
        pen.setDashPattern({dash, gap + (dash + gap) * (count - 1)});
        pen.setDashOffset((dash + gap) * static_cast<double>(i));
        drawLine(plot, value, pen);
    }
}

void drawLabel(QCustomPlot& plot, double value, const QString& text, const QColor& color, int left) {
    auto* label = new QCPItemText(&plot);
    label->setClipToAxisRect(false);
    label->position->setTypeX(QCPItemPosition::ptAxisRectRatio);
    label->position->setTypeY(QCPItemPosition::ptPlotCoords);
    label->position->setCoords(1, value);
    label->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    label->setPadding({beforeLabel + left, 0, 0, 0});
    label->setFont(plot.font());
    label->setColor(color);
    label->setText(text);
}

} // namespace

void drawReferences(QCustomPlot& plot, const Drawing& drawing) {
    Compared compared;
    for (int number = 1; number <= static_cast<int>(drawing.series.size()) && !drawing.across; ++number) {
        if (const auto& reference = lookOf(drawing, number).ComparedWith)
            compared[reference->value].push_back(number);
    }
    const QFontMetrics metrics(plot.font());
    const double pixels =
        plotShare * plot.viewport().height() / (drawing.up.Maximum - drawing.up.Minimum); // of a unit
    std::vector<double> last; ///< value of the last label in each column
    int widest = 0;
    for (const auto& [value, numbers] : compared)
        widest = qMax(widest, metrics.horizontalAdvance(lookOf(drawing, numbers[0]).ComparedWith->label));
    for (const auto& [value, numbers] : compared) {
        drawLines(plot, drawing, value, numbers);
        const auto isFree = [&, at = value](double other) {
            return (at - other) * pixels >= metrics.height();
        };
        const auto column = std::find_if(last.begin(), last.end(), isFree) - last.begin();
        last.resize(std::max(last.size(), static_cast<std::size_t>(column) + 1));
        last[static_cast<std::size_t>(column)] = value;
        const Series& look = lookOf(drawing, numbers[0]);
        drawLabel(plot, value, look.ComparedWith->label,
                  numbers.size() > 1 ? QColor(Qt::black) : seriesColor(look, numbers[0]),
                  static_cast<int>(column) * (widest + beforeLabel));
    }
    QMargins margins = plot.axisRect()->minimumMargins(); // those of the other sides are the usual ones
    margins.setRight(
        qMax(margins.left(), static_cast<int>(last.size()) * (widest + beforeLabel) + beforeLabel));
    plot.axisRect()->setMinimumMargins(margins);
}

void drawMarked(QCustomPlot& plot, const DrawnSeries& series, const QCPScatterStyle& marker) {
    if (series.look.MarkedRows.empty())
        return;
    QCPScatterStyle red = marker;
    red.setBrush(QColor(markColor));
    red.setPen(QPen(QColor(markColor), marker.pen().widthF()));
    const QCPScatterStyle ring(QCPScatterStyle::ssCircle, QPen(QColor(markColor), markWidth), Qt::NoBrush,
                               marker.size() + roomInRing);
    for (const QCPScatterStyle& style : {red, ring}) {
        QCPGraph* points = plot.addGraph();
        points->removeFromLegend();
        points->setLineStyle(QCPGraph::lsNone);
        points->setAdaptiveSampling(false);
        points->setScatterStyle(style);
        for (const int row : series.look.MarkedRows)
            points->addData(series.x.value(row - 1), series.y.value(row - 1));
    }
}

} // namespace chart
