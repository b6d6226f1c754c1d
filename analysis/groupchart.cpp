// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/groupchart.h"

#include "analysis/figures/performancematrix.h"
#include "analysis/pointbasis.h"
#include "core/store/store.h"
#include "core/store/worktable.h"
#include "platform/chart/mschart.h"
#include "platform/forms/listview.h"

#include <algorithm>
#include <cmath>
#include <set>

using namespace Qt::StringLiterals;

namespace {

QString shownText(const QVariant& value) {
    return value.typeId() == QMetaType::Double ? QString::number(value.toDouble(), 'f', 2) : value.toString();
}

using Figures = std::vector<double>;

/// Nothing for a point without a rating.
std::optional<Figures> indexOf(const GroupPoint& point) {
    const float index = groupIndex(point.answers);
    return index == 0 ? std::nullopt : std::optional(Figures{double(index)});
}

std::optional<Figures> meansOf(const GroupPoint& point) {
    const std::optional<MatrixMeans> means = groupMeans(point.answers);
    return means ? std::optional(Figures{means->weightage, means->score}) : std::nullopt;
}

/// The periods with ratings, earliest first.
std::vector<QDate> periodsOf(const std::vector<GroupPoint>& points) {
    std::set<QDate> begins;
    for (const GroupPoint& point : points) {
        if (point.basis.ratings > 0)
            begins.insert(point.begin);
    }
    return {begins.begin(), begins.end()};
}

/// From 1.
template <class Value> int placeOf(const std::vector<Value>& values, const Value& wanted) {
    return int(std::find(values.begin(), values.end(), wanted) - values.begin()) + 1;
}

} // namespace

bool GroupChart::show(chart::MSChart& drawn, forms::ListView& list, View view, const GroupChoice& choice,
                      const std::vector<GroupPoint>& points, const std::map<int, QString>& parameters) {
    const bool isIndex = view == View::Index;
    places.clear();
    figures.rows.clear();
    figures.headings = isIndex ? QStringList{u"Group"_s, u"Period"_s, u"Satisfaction Index"_s}
                               : QStringList{u"Group"_s, u"Parameter"_s, u"Weightage"_s, u"Score"_s};
    figures.headings += choice.isWithAsked
                            ? QStringList{u"Respondents"_s, u"Asked"_s, u"Ratings"_s, u"Questions"_s}
                            : QStringList{u"Respondents"_s, u"Ratings"_s};
    bases.clear();
    const std::vector<QDate> periods = periodsOf(points);
    for (const GroupPoint& point : points) {
        const std::optional<Figures> values = isIndex ? indexOf(point) : meansOf(point);
        if (!values)
            continue;
        places.push_back({point.group + 1,
                          isIndex ? placeOf(periods, point.begin) : placeOf(choice.paramids, point.paramid),
                          *values});
        QVariantList& row = figures.rows.emplace_back();
        row << choice.groups[point.group]
            << (isIndex ? nameOf(choice.period, point.begin) : parameters.at(point.paramid));
        for (const double value : *values)
            row << value;
        const Basis& basis = point.basis;
        row += choice.isWithAsked
                   ? QVariantList{basis.respondents, basis.asked, basis.ratings, basis.questions}
                   : QVariantList{basis.respondents, basis.ratings};
        bases << (choice.isWithAsked ? basisText(basis) : answersText(basis));
    }
    QStringList rowLabels;
    for (const QDate& begin : periods)
        rowLabels << nameOf(choice.period, begin);
    if (!isIndex) {
        rowLabels.clear();
        for (const int paramid : choice.paramids)
            rowLabels << parameters.at(paramid);
    }
    draw(drawn, isIndex, choice, rowLabels);
    fill(list, choice.isWithAsked);
    return !places.empty();
}

void GroupChart::fill(forms::ListView& list, bool isWithAsked) const {
    constexpr int numbersOfBasis = 4; // columns that the words stand for
    QStringList headings = figures.headings;
    if (isWithAsked)
        headings = headings.mid(0, headings.size() - numbersOfBasis) << u"Basis"_s;
    const std::map<QString, double> wide{// in narrow columns
                                         {u"Group"_s, 2},
                                         {u"Parameter"_s, 2},
                                         {u"Satisfaction Index"_s, 1.3},
                                         {u"Basis"_s, 4}};
    const auto widthOf = [&](const QString& heading) {
        const auto found = wide.find(heading);
        return found == wide.end() ? 1 : found->second;
    };
    double all = 0;
    for (const QString& heading : headings)
        all += widthOf(heading);
    std::vector<forms::ListView::Column> columns;
    for (const QString& heading : headings)
        columns.push_back({heading, 0.98 * widthOf(heading) / all});
    list.setColumns(columns);
    std::vector<QStringList> texts;
    for (const QVariantList& row : figures.rows) {
        QStringList shown;
        for (const QVariant& value : row)
            shown << shownText(value);
        if (isWithAsked)
            shown = shown.mid(0, shown.size() - numbersOfBasis) << bases[qsizetype(texts.size())];
        texts.push_back(shown);
    }
    list.setItems(std::move(texts));
}

void GroupChart::fillReport() const {
    fillWorkTable([this] {
        cnnMain->Execute(u"delete * from reporttable"_s);
        ado::Recordset rows(u"select * from reporttable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
        for (std::size_t i = 0; i < places.size(); ++i) {
            const QVariantList& figure = figures.rows[i];
            const bool isIndex = places[i].values.size() == 1;
            rows.AddNew();
            rows["wt"] = int(i) + 1;
            rows["responname"] = figure[0];
            rows["Parameter"] = figure[1];
            rows["tablename"] = shownText(figure[2]);
            if (!isIndex)
                rows["question"] = shownText(figure[3]);
            rows["Type"] = bases[qsizetype(i)];
            rows.Update();
        }
    });
}

void GroupChart::draw(chart::MSChart& drawn, bool isIndex, const GroupChoice& choice,
                      const QStringList& rowLabels) {
    const int width = isIndex ? 1 : 2; // columns of a series
    drawn.setChartData(chart::DataArray());
    drawn.setChartType(isIndex ? chart::MSChart::line : chart::MSChart::xy);
    drawn.setCategoryTitle(isIndex ? QString() : u"Score"_s);
    drawn.setValueTitle(isIndex ? u"Satisfaction Index"_s : u"Weightage"_s);
    const chart::Scale ofMeans{.Minimum = 0, .Maximum = 10, .MajorDivision = 2, .MinorDivision = 5};
    drawn.setCategoryScale(ofMeans);
    drawn.setValueScale(
        isIndex ? chart::Scale{.Minimum = 0, .Maximum = 11, .MajorDivision = 11, .MinorDivision = 1}
                : ofMeans);
    chart::DataArray cells(int(rowLabels.size()), int(choice.groups.size()) * width);
    for (const Place& place : places) { // the score is across and the weightage up
        for (int i = 0; i < width; ++i)
            cells.at(place.row, place.series * width - i) = place.values[std::size_t(i)];
    }
    drawn.setChartData(cells);
    for (int row = 1; row <= rowLabels.size(); ++row) {
        drawn.setRow(row);
        drawn.setRowLabel(rowLabels[row - 1]);
    }
    for (int number = 1; number <= choice.groups.size(); ++number) {
        drawn.setColumn(number);
        drawn.setColumnLabel(choice.groups[number - 1]);
        chart::Series& series = drawn.SeriesItem(number);
        series.ShowLine = isIndex;
        series.SeriesMarker = {.Auto = false, .Show = true};
        series.Marker.Size = 140;
    }
    drawn.tipText = [this](int series, int row) { return tipOf(series, row); };
}

int GroupChart::listRow(int series, int row) const {
    const auto found = std::find_if(places.begin(), places.end(), [&](const Place& place) {
        return place.series == series && place.row == row;
    });
    return found == places.end() ? -1 : int(found - places.begin());
}

/// The points on one spot, one line each.
QString GroupChart::tipOf(int series, int row) const {
    const int pointed = listRow(series, row);
    if (pointed < 0)
        return {};
    const Place& at = places[std::size_t(pointed)];
    QStringList lines;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].values != at.values || (at.values.size() == 1 && places[i].row != at.row))
            continue;
        const QVariantList& figure = figures.rows[i];
        QStringList parts{figure[0].toString() + u", " + figure[1].toString()};
        for (qsizetype column = 2; column < figure.size(); ++column)
            parts << figures.headings[column] + u' ' + shownText(figure[column]);
        lines << parts.join(u", "_s);
    }
    return lines.join(u'\n');
}
