// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/indexbasis.h"
#include "analysis/targets.h"

namespace chart {
class MSChart;
}

/// The targets of the parameters in the chart of the Satisfaction Index: a line each, and marks on the points
/// below it.
class IndexTargets {
public:
    /// targets: those that hold, by parameter in small letters. parameters: of the series, in their order.
    void show(chart::MSChart& drawn, std::map<QString, double> targets, const QStringList& parameters,
              const std::vector<IndexBasis::Point>& points);
    void clear(chart::MSChart& drawn);
    /// The line about a point's target, after its figure; empty without one.
    QString textOf(int series) const;

    /// Fills the work table of the report with targets from that of the index: one row for each point of
    /// linetable. Throws Failure.
    void fillReport() const;

private:
    Target targetOf(const QString& parameter) const;

    std::map<QString, double> known;
    QStringList names; ///< of the series
};
