// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/matrixbasis.h"

#include "analysis/figures/performancematrix.h"
#include "platform/chart/mschart.h"
#include "platform/forms/listview.h"

using namespace Qt::StringLiterals;

void MatrixBasis::clear(chart::MSChart& drawn) {
    texts.clear();
    for (int number = 1; number <= drawn.SeriesCount(); ++number) {
        chart::Series& series = drawn.SeriesItem(number);
        series.Whiskers.clear();
        series.AcrossWhiskers.clear();
        series.HollowRows.clear();
    }
}

void MatrixBasis::show(chart::MSChart& drawn, chart::MSChart& figures, forms::ListView& list,
                       const QString& customer, const QDate& date) {
    constexpr int score = 1; // columns of the charts
    constexpr int weightage = 2;
    list.setColumns({{u"Parameter"_s, 0.2},
                     {u"Weightage"_s, 0.08},
                     {u"95 % interval"_s, 0.16},
                     {u"Score"_s, 0.08},
                     {u"95 % interval"_s, 0.16},
                     {u"Basis"_s, 0.32}});
    AnswerChoice choice{customer, {}, date, date};
    // After an error the chart still shows points of before.
    for (int row = 1; row <= qMin(figures.RowCount(), drawn.RowCount()); ++row) {
        figures.setRow(row);
        choice.parameters << figures.RowLabel();
    }
    if (choice.parameters.isEmpty() || drawn.SeriesCount() == 0)
        return;
    PointBases bases = readPointBases(customer, readDateGroups(choice, /*withRespondents=*/true));
    chart::Series& series = drawn.SeriesItem(1);
    std::vector<QStringList> rows;
    for (int row = 1; row <= choice.parameters.size(); ++row) {
        const PointBasis& basis = basisOf(bases, choice.parameters[row - 1], date);
        const auto estimate = [&](int column, const Figure& figure) {
            return estimateOf(basis, figures.GetData(row, column).value_or(0), figure);
        };
        const Estimate up = estimate(weightage, meanWeightage);
        const Estimate across = estimate(score, meanScore);
        const auto add = [&](std::vector<chart::Whisker>& whiskers, const Estimate& of, int column) {
            const double place = drawn.GetData(row, column).value_or(0); // moved from equal ones
            if (of.hasInterval())
                whiskers.push_back({row, place - of.margin, place + of.margin});
        };
        add(series.Whiskers, up, weightage);
        add(series.AcrossWhiskers, across, score);
        if (up.basis.isTooFew())
            series.HollowRows.insert(row);
        rows.push_back({choice.parameters[row - 1], QString::number(up.value, 'f', 2), up.intervalText(),
                        QString::number(across.value, 'f', 2), across.intervalText(), basisText(up.basis)});
        texts << u"\r\n"_s + basisText(up.basis) + u"\r\n95 %: weightage " + up.intervalText() + u", score " +
                     across.intervalText();
    }
    list.setItems(std::move(rows));
}
