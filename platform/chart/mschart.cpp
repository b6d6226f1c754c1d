// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/mschart.h"

#include "platform/chart/plotfile.h"
#include "platform/chart/plotview.h"
#include "platform/spoken/spokentable.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QTextDocument>
#include <QVBoxLayout>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace chart {
namespace {

constexpr double reach = 9;    // pixels around a point that still pick it
constexpr double growth = 1.2; // of a picture whose legend has no room
constexpr double largestGrowth = 3;

void requireNumber(int number, int count) {
    if (number < 1 || number > count)
        throw Failure::ofSubscript();
}

void setCount(QStringList& labels, int count) {
    while (labels.size() < count)
        labels << QString();
    labels.resize(count);
}

} // namespace

MSChart::MSChart(QWidget* parent) : QWidget(parent), view(new PlotView(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(view);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setValueScale({});
    view->beforePaint = [this] { drawIfChanged(); };
    spoken::readAsTable(*this, [this] { return pointTable ? pointTable() : tables::Table(); });
}

MSChart::~MSChart() = default;

void MSChart::setCategoryTitle(const QString& title) {
    acrossTitle = title;
    Refresh();
}

void MSChart::setValueTitle(const QString& title) {
    upTitle = title;
    Refresh();
}

void MSChart::setValueScale(const Scale& scale) {
    upScale = scale;
    Refresh();
}

void MSChart::setCategoryScale(const Scale& scale) {
    acrossScale = scale;
    Refresh();
}

void MSChart::setTitle(const QString& text) {
    heading = text;
    Refresh();
}

void MSChart::setCrossHair(const std::optional<QPointF>& place) {
    crossHair = place;
    Refresh();
}

void MSChart::setDiagonal(bool isShown) {
    hasDiagonal = isShown;
    Refresh();
}

void MSChart::setChartType(int chartType) {
    type = chartType;
    setChartData(data);
}

void MSChart::setRowCount(int count) {
    setChartData(data.resized(count, ColumnCount()));
}

void MSChart::setColumnCount(int count) {
    setChartData(data.resized(RowCount(), count));
}

void MSChart::setRow(int number) {
    requireNumber(number, RowCount());
    row = number;
}

QString MSChart::RowLabel() const {
    return rowLabels.value(row - 1);
}

void MSChart::setRowLabel(const QString& label) {
    requireNumber(row, RowCount());
    rowLabels[row - 1] = label;
    Refresh();
}

void MSChart::setColumn(int number) {
    requireNumber(number, ColumnCount());
    column = number;
}

QString MSChart::ColumnLabel() const {
    return columnLabels.value(column - 1);
}

void MSChart::setColumnLabel(const QString& label) {
    requireNumber(column, ColumnCount());
    columnLabels[column - 1] = label;
    Refresh();
}

void MSChart::setChartData(const DataArray& array) {
    data = array;
    setCount(rowLabels, data.rows());
    setCount(columnLabels, data.columns());
    seriesList.resize(static_cast<std::size_t>(type == xy ? data.columns() / 2 : data.columns()));
    moveTo({});
    Refresh();
}

std::optional<double> MSChart::GetData(int rowNumber, int columnNumber) const {
    return data.at(rowNumber, columnNumber);
}

Series& MSChart::SeriesItem(int number) {
    requireNumber(number, SeriesCount());
    Refresh();
    return seriesList[static_cast<std::size_t>(number - 1)];
}

void MSChart::Refresh() {
    changed = true;
    view->update();
    spoken::tableChanged(*this);
}

void MSChart::drawIfChanged() {
    if (!changed)
        return;
    changed = false;
    view->setDrawing(drawing());
}

Drawing MSChart::drawing() const {
    Drawing result{acrossTitle, upTitle, upScale, std::nullopt, rowLabels, {}, heading, std::nullopt, false};
    if (type == xy) {
        result.across = acrossScale;
        result.crossHair = crossHair;
        result.hasDiagonal = hasDiagonal;
    }
    for (int number = 1; number <= SeriesCount(); ++number) {
        DrawnSeries series;
        series.name = columnLabels.value(number - 1);
        series.look = seriesList[static_cast<std::size_t>(number - 1)];
        for (int point = 1; point <= RowCount(); ++point) {
            const double gap = std::numeric_limits<double>::quiet_NaN();
            const QPointF place = coordinates({number, point}).value_or(QPointF(point, gap));
            series.x << place.x();
            series.y << place.y();
        }
        result.series.push_back(std::move(series));
    }
    return result;
}

/// A point's coordinates on the scales; nothing when there is no such point or it has no value.
std::optional<QPointF> MSChart::coordinates(const Point& point) const {
    if (point.series < 1 || point.series > SeriesCount() || point.row < 1 || point.row > RowCount())
        return std::nullopt;
    const std::optional<double> across =
        type == xy ? data.at(point.row, 2 * point.series - 1) : std::optional<double>(point.row);
    const std::optional<double> up = data.at(point.row, type == xy ? 2 * point.series : point.series);
    return across && up ? std::optional<QPointF>({*across, *up}) : std::nullopt;
}

void MSChart::EditCopy() {
    QGuiApplication::clipboard()->setImage(Picture());
}

QImage MSChart::Picture() {
    drawIfChanged();
    return view->toPixmap(0, 0, devicePixelRatioF()).toImage();
}

bool MSChart::SavePicture(const QString& path, const QSize& size, double sharpness) {
    PlotView page;
    page.setFont(font());
    page.setOnPaper();
    QSize drawn = size;
    do {
        page.resize(drawn);
        page.setViewport(QRect({}, drawn));
        page.setDrawing(drawing());
        drawn = drawn * growth;
    } while (!page.hasRoomForLegend() && drawn.width() < size.width() * largestGrowth);
    return savePlot(page, path, sharpness * size.width() / page.width());
}

QPoint MSChart::PointPosition(int series, int point) {
    drawIfChanged();
    const std::optional<QPointF> place = coordinates({series, point});
    return place ? view->mapTo(this, view->positionOf(*place).toPoint()) : QPoint(-1, -1);
}

/// The point nearest to a position, when it is within reach; of several on one spot the one drawn on top.
MSChart::Point MSChart::pointAt(const QPoint& position) {
    Point nearest;
    double distance = reach;
    for (int series = 1; series <= SeriesCount(); ++series) {
        for (int point = 1; point <= RowCount(); ++point) {
            if (!exists({series, point}))
                continue;
            const QPoint offset = PointPosition(series, point) - position;
            const double away = std::hypot(offset.x(), offset.y());
            if (away <= distance) {
                distance = away;
                nearest = {series, point};
            }
        }
    }
    return nearest;
}

/// The points on one spot, one line each.
QString MSChart::tipOf(const Point& point) const {
    if (tipText)
        return tipText(point.series, point.row);
    QStringList lines;
    const std::optional<double> value = GetData(point.row, point.series);
    for (int series = 1; series <= SeriesCount(); ++series) {
        if (GetData(point.row, series) != value)
            continue;
        lines << columnLabels[series - 1] + u", " + rowLabels[point.row - 1] + u": " +
                     QString::number(*value, 'g', 7);
        const Series& look = seriesList[static_cast<std::size_t>(series - 1)];
        if (look.ComparedWith)
            lines.last() += u", "_s + look.ComparedWith->tip;
    }
    return lines.join(u'\n');
}

/// The next point of the same series in a direction (1 or -1), or the same point at its end.
MSChart::Point MSChart::nextInSeries(Point from, int direction) const {
    for (int next = from.row + direction; next >= 1 && next <= RowCount(); next += direction) {
        if (exists({from.series, next}))
            return {from.series, next};
    }
    return from;
}

/// The point of the next series in a direction nearest to the row, or the same point.
MSChart::Point MSChart::nextSeries(Point from, int direction) const {
    for (int series = from.series + direction; series >= 1 && series <= SeriesCount(); series += direction) {
        for (int away = 0; away < RowCount(); ++away) {
            if (exists({series, from.row - away}))
                return {series, from.row - away};
            if (exists({series, from.row + away}))
                return {series, from.row + away};
        }
    }
    return from;
}

/// The row of a point in pointTable, from 0; -1 for none.
int MSChart::tableRow(const Point& wanted) const {
    int before = 0;
    for (int series = 1; wanted && series <= wanted.series; ++series) {
        const int end = series < wanted.series ? RowCount() : wanted.row - 1;
        for (int point = 1; point <= end; ++point)
            before += exists({series, point}) ? 1 : 0;
    }
    return wanted ? before : -1;
}

void MSChart::moveTo(const Point& point) {
    current = exists(point) ? point : Point{}; // stays when a search finds none
    if (current && hasFocus()) {
        view->mark(coordinates(current));
        setAccessibleDescription(tipOf(current));
        spoken::comeToRow(*this, tableRow(current));
    } else {
        view->mark(std::nullopt);
        setAccessibleDescription({});
        spoken::comeToRow(*this, -1);
    }
}

void MSChart::keyPressEvent(QKeyEvent* event) {
    const bool arrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
    const bool enter =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (enter && current) {
        Q_EMIT PointActivated(current.series, current.row);
    } else if (arrow && !current) {
        moveTo(nextSeries({0, 1}, 1));
    } else if (arrow) {
        const bool forward = event->key() == Qt::Key_Right || event->key() == Qt::Key_Down;
        const bool along = event->key() == Qt::Key_Left || event->key() == Qt::Key_Right;
        moveTo(along ? nextInSeries(current, forward ? 1 : -1) : nextSeries(current, forward ? 1 : -1));
    } else {
        QWidget::keyPressEvent(event);
    }
}

void MSChart::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    moveTo(current);
}

void MSChart::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    moveTo(current);
}

void MSChart::mouseMoveEvent(QMouseEvent* event) {
    if (pointAt(event->position().toPoint()))
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
}

void MSChart::mouseReleaseEvent(QMouseEvent* event) {
    const Point picked = pointAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && picked)
        Q_EMIT PointActivated(picked.series, picked.row);
}

void MSChart::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Refresh();
}

bool MSChart::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const Point point = pointAt(static_cast<QHelpEvent*>(event)->pos());
        setToolTip(point ? Qt::convertFromPlainText(tipOf(point)) : QString());
    }
    if (event->type() == QEvent::ContextMenu) {
        const auto* menu = static_cast<QContextMenuEvent*>(event);
        const bool isByMouse = menu->reason() == QContextMenuEvent::Mouse;
        const Point meant = isByMouse ? pointAt(menu->pos()) : current;
        if (meant)
            moveTo(meant);
        Q_EMIT MenuAboutToOpen(meant.series, meant.row);
    }
    return QWidget::event(event);
}

} // namespace chart
