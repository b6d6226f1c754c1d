// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/series.h"

#include <QStringList>
#include <QVector>

#include <optional>
#include <vector>

namespace chart {

/// A fixed scale of an axis.
struct Scale {
    double Minimum = 0;
    double Maximum = 100;
    int MajorDivision = 10; ///< parts between labelled lines
    int MinorDivision = 1;  ///< parts of each of them; 1: not divided
};

/// One series as it is drawn; a coordinate that is NaN leaves a gap.
struct DrawnSeries {
    QString name;
    Series look;
    QVector<double> x;
    QVector<double> y;
};

/// The contents of a chart, without its size.
struct Drawing {
    QString acrossTitle;
    QString upTitle;
    Scale up;
    std::optional<Scale> across; ///< of an XY chart; a line chart has categories at 1, 2, 3 ...
    QStringList categories;
    std::vector<DrawnSeries> series;
    QString title;
    std::optional<QPointF> crossHair; ///< of an XY chart, instead of its emphasized lines
    bool hasDiagonal = false;         ///< of an XY chart: where both values are equal
};

} // namespace chart
