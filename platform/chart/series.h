// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPointF>
#include <QString>

#include <optional>
#include <set>
#include <vector>

namespace chart {

/// Shapes of markers. FilledMarker: filled, in a shape that distinguishes the series from the others.
enum MarkerStyle { FilledMarker = 14 };

/// A span on a scale around a point of a row.
struct Whisker {
    int row = 0;
    double low = 0;
    double high = 0;
};

/// What a point of an XY chart is called: its number stands beside it, its name too where there is room, and
/// both are in the legend.
struct PointLabel {
    int row = 0;
    int number = 0;
    QString name;
};

/// An arrow between another place and a point of an XY chart.
struct PointArrow {
    int row = 0;
    QPointF other;
    bool isFromPoint = false; ///< it points at the other place
};

/// A value that a series is compared with.
struct Reference {
    double value = 0;
    QString label; ///< at the end of its line
    QString tip;   ///< added to the tool tip of the points
};

/// How one series is drawn. Widths and sizes are in twips, 15 to a logical pixel.
struct Series {
    bool ShowLine = true; ///< joins neighbouring points; a Null between them leaves a gap

    struct MarkerRule {
        bool Auto = true; ///< the chart decides: it shows markers
        bool Show = true; ///< whether markers show, when not Auto
    } SeriesMarker;

    struct Line {
        int Width = 20;
    } Pen;

    struct Fill {
        bool Automatic = true; ///< the series' own colour of the palette
        QColor Value;          ///< the colour, when not Automatic
    };
    /// The marker of all points of the series.
    struct PointMarker {
        bool Visible = true;
        int Size = 120; ///< diameter
        int Style = FilledMarker;
        Fill FillColor;
    } Marker;

    std::vector<Whisker> Whiskers;       ///< up and down from points
    std::vector<Whisker> AcrossWhiskers; ///< to both sides; in an XY chart only
    std::set<int> HollowRows;            ///< points with an empty marker
    std::vector<PointLabel> PointLabels; ///< in the order of the legend
    std::vector<PointArrow> PointArrows;
    std::optional<Reference> ComparedWith; ///< a line from side to side; in a line chart only
    std::set<int> MarkedRows;              ///< points in red, each in a ring

    bool showsMarkers() const { return Marker.Visible && (SeriesMarker.Auto || SeriesMarker.Show); }
};

} // namespace chart
