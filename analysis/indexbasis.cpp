// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/indexbasis.h"

#include "platform/ado/value.h"
#include "platform/chart/mschart.h"
#include "platform/forms/listview.h"

using namespace Qt::StringLiterals;

void IndexBasis::show(chart::MSChart& drawn, forms::ListView& list, PointBases bases,
                      const std::vector<Point>& points) {
    texts.clear();
    list.setColumns({{u"Parameter"_s, 0.14},
                     {u"Survey Date"_s, 0.09},
                     {u"Index"_s, 0.06},
                     {u"95 % interval"_s, 0.15},
                     {u"Basis"_s, 0.29},
                     {u"Change, respondents of both dates"_s, 0.27}});
    const Figure figure = [](const std::vector<RatedAnswer>& answers) { return satisfactionIndex(answers); };
    std::vector<QStringList> rows;
    const Point* before = nullptr;
    for (const Point& point : points) {
        const PointBasis& basis = basisOf(bases, point.parameter, point.date);
        const Estimate estimate = estimateOf(basis, point.index, figure);
        chart::Series& series = drawn.SeriesItem(point.series);
        if (estimate.hasInterval())
            series.Whiskers.push_back({point.row, estimate.low(), estimate.high()});
        if (estimate.basis.isTooFew())
            series.HollowRows.insert(point.row);
        const bool follows = before && before->series == point.series;
        rows.push_back({point.parameter, ado::toText(point.date), QString::number(point.index, 'f', 2),
                        estimate.intervalText(), basisText(estimate.basis),
                        follows ? changeText(basisOf(bases, before->parameter, before->date), basis, figure)
                                : QString()});
        texts[{point.series, point.row}] =
            u"\r\n"_s + basisText(estimate.basis) + u"\r\n95 %: " + estimate.intervalText();
        before = &point;
    }
    list.setItems(std::move(rows));
}

QString IndexBasis::textOf(int series, int row) const {
    const auto found = texts.find({series, row});
    return found == texts.end() ? QString() : found->second;
}
