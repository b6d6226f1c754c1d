// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/pointbasis.h"

namespace chart {
class MSChart;
}
namespace forms {
class ListView;
}

/// Shows what stands behind the points of the Performance Matrix: whiskers both ways and hollow markers in
/// the chart, a list below it, a text for each point.
class MatrixBasis {
public:
    /// figures: the chart with the parameters and unmoved figures of the points of `drawn`. Throws Failure.
    void show(chart::MSChart& drawn, chart::MSChart& figures, forms::ListView& list, const QString& customer,
              const QDate& date);
    /// The lines about a point, after its figures; empty for one that has not been shown.
    QString textOf(int row) const { return texts.value(row - 1); }
    void clear(chart::MSChart& drawn);

private:
    QStringList texts;
};
