// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/pointbasis.h"

namespace chart {
class MSChart;
}
namespace forms {
class ListView;
}

/// Shows what stands behind the points of the Satisfaction Index: whiskers and hollow markers in the chart, a
/// list below it, a text for each point.
class IndexBasis {
public:
    struct Point {
        QString parameter;
        QDate date;
        int series = 0; ///< of the chart
        int row = 0;
        double index = 0;
    };

    /// The points of each series in order of their dates.
    void show(chart::MSChart& drawn, forms::ListView& list, PointBases bases,
              const std::vector<Point>& points);
    /// The lines about a point, after its figure; empty for one that has not been shown.
    QString textOf(int series, int row) const;
    void clear() { texts.clear(); }

private:
    std::map<std::pair<int, int>, QString> texts; ///< by series and row
};
