// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/dataarray.h"
#include "platform/chart/drawing.h"
#include "platform/tables/table.h"

#include <QWidget>

#include <functional>

namespace chart {

class PlotView;

/// A two-dimensional chart. In a line chart the columns of the data are the series, the rows the categories
/// along the horizontal axis; in an XY chart two columns are a series, the values across and up, and the rows
/// are its points. Rows, columns, series and points are numbered from 1; a number that does not exist throws
/// Failure. Scales are fixed and do not follow the data. The background is white in any theme, so
/// that a picture of the chart prints well.
///
/// A click on a point, or Enter on the point that the arrow keys have reached, emits PointActivated; hovering
/// over a point shows its figure.
class MSChart : public QWidget {
    Q_OBJECT

public:
    static constexpr int line = 3;
    static constexpr int xy = 16;

    explicit MSChart(QWidget* parent = nullptr);
    ~MSChart() override;

    void setCategoryTitle(const QString& title);
    void setValueTitle(const QString& title);
    void setValueScale(const Scale& scale);
    /// Of the horizontal axis of an XY chart.
    void setCategoryScale(const Scale& scale);

    /// A line above the plot; an empty one takes no room.
    void setTitle(const QString& title);
    QString Title() const { return heading; }
    /// Two lines that divide an XY chart in place of its emphasized ones.
    void setCrossHair(const std::optional<QPointF>& place);
    /// A line through the places of an XY chart where both values are equal.
    void setDiagonal(bool isShown);

    int ChartType() const { return type; }
    /// line or xy.
    void setChartType(int chartType);

    int RowCount() const { return data.rows(); }
    void setRowCount(int count);
    int ColumnCount() const { return data.columns(); }
    void setColumnCount(int count);

    /// The row that RowLabel belongs to.
    int Row() const { return row; }
    void setRow(int number);
    QString RowLabel() const;
    void setRowLabel(const QString& label);

    /// The column that ColumnLabel, the name of a series, belongs to.
    int Column() const { return column; }
    void setColumn(int number);
    QString ColumnLabel() const;
    void setColumnLabel(const QString& label);

    const DataArray& ChartData() const { return data; }
    /// Replaces all cells; RowCount and ColumnCount become those of the array. Labels stay.
    void setChartData(const DataArray& array);
    /// The value of a cell; nothing for Null.
    std::optional<double> GetData(int rowNumber, int columnNumber) const;

    int SeriesCount() const { return static_cast<int>(seriesList.size()); }
    /// How a series is drawn; a change shows with the next painting.
    Series& SeriesItem(int number);

    /// Text of a point's tool tip; when unset, its name and figures.
    std::function<QString(int series, int point)> tipText;

    /// What a screen reader reads in place of the picture: a row for each point, series by series. When
    /// unset, nothing.
    std::function<tables::Table()> pointTable;

    /// Redraws the chart.
    void Refresh();
    /// Puts a picture of the chart on the clipboard.
    void EditCopy();
    QImage Picture();
    /// Writes the chart, laid out for a size in logical pixels, over an older file: as a drawing when the
    /// suffix is svg or pdf, else as a picture of that format with `sharpness` dots a pixel. Names are whole;
    /// a legend that finds no room makes everything smaller. False when that fails.
    bool SavePicture(const QString& path, const QSize& size, double sharpness = 1);

    /// The widget position of a point.
    QPoint PointPosition(int series, int point);

    QSize minimumSizeHint() const override { return {320, 200}; }
    QSize sizeHint() const override { return {720, 340}; }

Q_SIGNALS:
    /// The user picked a point, numbered by its row, of a series.
    void PointActivated(int series, int point);
    /// A context menu opens on a point; 0 and 0 beside all points.
    void MenuAboutToOpen(int series, int point);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Point {
        int series = 0;
        int row = 0; ///< 0: none
        explicit operator bool() const { return row > 0; }
    };

    void drawIfChanged();
    Drawing drawing() const;
    std::optional<QPointF> coordinates(const Point& point) const;
    Point pointAt(const QPoint& position);
    QString tipOf(const Point& point) const;
    bool exists(const Point& point) const { return coordinates(point).has_value(); }
    Point nextInSeries(Point from, int direction) const;
    Point nextSeries(Point from, int direction) const;
    int tableRow(const Point& point) const;
    void moveTo(const Point& point);

    PlotView* view;
    int type = line;
    QString heading;
    std::optional<QPointF> crossHair;
    bool hasDiagonal = false;
    QString acrossTitle;
    QString upTitle;
    Scale acrossScale;
    Scale upScale;
    DataArray data;
    QStringList rowLabels;
    QStringList columnLabels;
    std::vector<Series> seriesList;
    int row = 1;
    int column = 1;
    bool changed = true;
    Point current; ///< reached with the arrow keys
};

} // namespace chart
