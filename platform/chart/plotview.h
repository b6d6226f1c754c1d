// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/dataarray.h"
#include "platform/chart/qcp.h"
#include "platform/chart/series.h"

#include <QStringList>

#include <functional>

namespace chart {

/// Draws what MSChart holds: x is the row, y the value. The legend stands beside the plot and never over a
/// point; names too long for it end in an ellipsis.
class PlotView : public QCustomPlot {
    Q_OBJECT

public:
    explicit PlotView(QWidget* parent);

    void setValueAxis(double minimum, double maximum, int majorDivision, int minorDivision);
    void draw(const DataArray& cells, const QStringList& rowLabels, const QStringList& columnLabels,
              const std::vector<Series>& series);
    /// Rings one point with its coordinates; without one, none.
    void mark(const std::optional<QPointF>& point);
    /// Where coordinates stand in the widget.
    QPointF positionOf(double x, double y) const;

    /// Called before each painting.
    std::function<void()> beforePaint;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawSeries(const DataArray& cells, int number, const QString& name, const Series& series);
    void drawRowLabels(int rows, const QStringList& labels);
    int entryHeight() const;
    int legendColumns(int entries) const;

    QCPGraph* ring;
};

} // namespace chart
