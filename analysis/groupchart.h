// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/grouppoints.h"
#include "platform/tables/table.h"

#include <map>

namespace chart {
class MSChart;
}
namespace forms {
class ListView;
}

/// Shows the points of groups in a chart, with one series for each group, and in a list below it. When it was
/// counted who was asked, the list tells the basis of each point in words.
class GroupChart {
public:
    enum class View { Index, Matrix };

    /// parameters: the names of the parameters of a matrix, by paramid. False without a point to draw.
    bool show(chart::MSChart& drawn, forms::ListView& list, View view, const GroupChoice& choice,
              const std::vector<GroupPoint>& points, const std::map<int, QString>& parameters);
    /// The row of the list of a point of the chart, numbered from 0; -1 for none.
    int listRow(int series, int row) const;
    /// The figures as numbers.
    const tables::Table& table() const { return figures; }
    /// Rebuilds reporttable with the list, in order of wt: the group in responname, the period or parameter
    /// in Parameter, the index or weightage in tablename, the score of a matrix in question and the basis in
    /// Type. Throws Failure.
    void fillReport() const;

private:
    struct Place {
        int series = 0; ///< of the chart, like row
        int row = 0;
        std::vector<double> values; ///< the index, or weightage and score
    };

    void fill(forms::ListView& list, bool isWithAsked) const;
    void draw(chart::MSChart& drawn, bool isIndex, const GroupChoice& choice, const QStringList& rowLabels);
    QString tipOf(int series, int row) const;

    std::vector<Place> places; ///< of each row of the list
    tables::Table figures;
    QStringList bases; ///< in words, of each row
};
