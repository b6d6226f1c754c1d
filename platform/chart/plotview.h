// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/drawing.h"
#include "platform/chart/qcp.h"

#include <functional>

namespace chart {

/// Draws the contents of an MSChart. The legend of a line chart is beside the plot and never covers a point;
/// names too long for it are elided, or on paper parted into lines. The legend of an XY chart with one series
/// has the labels of its points; its labelled lines are emphasized.
class PlotView : public QCustomPlot {
    Q_OBJECT

public:
    explicit PlotView(QWidget* parent = nullptr);

    /// Before setDrawing.
    void setOnPaper() { onPaper = true; }
    void setDrawing(const Drawing& drawing);
    /// Whether the legend is whole and leaves most of the width to the plot.
    bool hasRoomForLegend() const;
    /// Rings one point with its coordinates; without one, none.
    void mark(const std::optional<QPointF>& point);
    /// The widget position of coordinates.
    QPointF positionOf(const QPointF& coordinates) const;

    /// Called before each painting.
    std::function<void()> beforePaint;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void setTitle(const QString& text);
    void setLegend(const QStringList& names, int iconWidth);
    int legendHeight(const QStringList& names, int rows) const;
    QString fitted(const QString& name) const;
    void listLabels(const QStringList& labels);
    void drawSeries(const DrawnSeries& series, int number, const Drawing& drawing);
    void drawWhiskers(const DrawnSeries& series, const std::vector<Whisker>& whiskers, bool isAcross,
                      const QPen& pen);
    void drawHollow(const DrawnSeries& series, const QCPScatterStyle& marker);
    void drawCategories(int count, const QStringList& labels);
    int entryHeight() const;

    QCPGraph* ring;
    QCPTextElement* title = nullptr; ///< null: the chart has none
    int nameWidth = 0;               ///< pixels of a name in the legend
    bool onPaper = false;
};

} // namespace chart
