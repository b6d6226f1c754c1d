// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/matrixaids.h"

#include "analysis/matrixgroups.h"
#include "core/store/store.h"
#include "core/store/worktable.h"
#include "platform/ado/recordset.h"
#include "platform/chart/mschart.h"
#include "platform/forms/listview.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QString twoDecimals(double value) {
    return QString::number(value, 'f', 2);
}

QString withSign(double value) {
    return value > 0 ? u"+"_s + twoDecimals(value) : twoDecimals(qFuzzyIsNull(value) ? 0 : value);
}

/// A mean as it was stored: the chart keeps weightages in single precision.
double asStored(const std::optional<double>& mean) {
    constexpr double hundred = 100;
    return std::round(mean.value_or(0) * hundred) / hundred;
}

/// The numbers of the parameters in small letters, in the order of the details.
std::map<QString, int> numbers() {
    std::map<QString, int> result;
    ado::Recordset details(u"select Parameter from ScatterTable Order by PARAMETER"_s, *cnnMain);
    for (int number = 1; !details.Eof(); details.MoveNext(), ++number)
        result.try_emplace(details["Parameter"].Text().toLower(), number);
    return result;
}

QString wordOf(CrossHair crossHair) {
    switch (crossHair) {
    case CrossHair::Means:
        return u"means"_s;
    case CrossHair::Medians:
        return u"medians"_s;
    default:
        return u"own values"_s;
    }
}

} // namespace

void MatrixAids::show(chart::MSChart& drawn, chart::MSChart& figures, const AidChoice& aids,
                      const QString& customer, const QDate& surveyDate) {
    choice = aids;
    date = surveyDate;
    takePoints(figures, qMin(figures.RowCount(), drawn.RowCount())); // after an error they may differ
    if (choice.compared.isValid())
        compare(customer);
    draw(drawn);
}

void MatrixAids::clear(chart::MSChart& drawn) {
    choice = {};
    points.clear();
    drawn.setTitle({});
    drawn.setCrossHair(std::nullopt);
    drawn.setDiagonal(false);
    for (int number = 1; number <= drawn.SeriesCount(); ++number) {
        drawn.SeriesItem(number).PointLabels.clear();
        drawn.SeriesItem(number).PointArrows.clear();
    }
}

void MatrixAids::takePoints(chart::MSChart& figures, int rows) {
    const std::map<QString, int> known =
        choice.hasNames || choice.hasGaps ? numbers() : std::map<QString, int>();
    std::vector<MatrixMeans> places;
    points.clear();
    for (int row = 1; row <= rows; ++row) {
        figures.setRow(row);
        const QString parameter = figures.RowLabel();
        const auto number = known.find(parameter.toLower());
        const MatrixMeans means{.weightage = asStored(figures.GetData(row, 2)),
                                .score = asStored(figures.GetData(row, 1))};
        points.push_back({row, number != known.end() ? number->second : row, parameter, means, std::nullopt});
        places.push_back(means);
    }
    crossHair = crossHairPlace(choice.crossHair, places, choice.own);
    std::stable_sort(points.begin(), points.end(),
                     [](const Point& a, const Point& b) { return gapOf(a.means) > gapOf(b.means); });
}

void MatrixAids::compare(const QString& customer) {
    for (const MatrixGroup& group : readMatrixGroups(customer, choice.compared)) {
        for (Point& point : points) {
            if (point.parameter.compare(group.parameter, Qt::CaseInsensitive) == 0)
                point.compared = matrixMeans(group.answers);
        }
    }
}

void MatrixAids::draw(chart::MSChart& drawn) const {
    drawn.setTitle(titleText());
    if (choice.crossHair != CrossHair::Middle)
        drawn.setCrossHair(QPointF(crossHair.score, crossHair.weightage));
    drawn.setDiagonal(choice.hasDiagonal);
    if (points.empty() || drawn.SeriesCount() == 0)
        return;
    chart::Series& series = drawn.SeriesItem(1);
    for (const Point& point : points) {
        if (choice.hasNames)
            series.PointLabels.push_back({point.row, point.number, point.parameter});
        if (!point.compared)
            continue;
        const QPointF moved(drawn.GetData(point.row, 1).value_or(0) - point.means.score, // from equal ones
                            drawn.GetData(point.row, 2).value_or(0) - point.means.weightage);
        series.PointArrows.push_back({point.row,
                                      QPointF(point.compared->score, point.compared->weightage) + moved,
                                      !isComparedEarlier()});
    }
    std::sort(series.PointLabels.begin(), series.PointLabels.end(),
              [](const auto& a, const auto& b) { return a.number < b.number; });
}

QString MatrixAids::crossHairText() const {
    if (choice.crossHair == CrossHair::Middle)
        return {};
    return wordOf(choice.crossHair) + u": score " + twoDecimals(crossHair.score) + u", weightage " +
           twoDecimals(crossHair.weightage);
}

/// Empty as long as the chart is as it always was.
QString MatrixAids::titleText() const {
    QStringList parts;
    if (const QString place = crossHairText(); !place.isEmpty())
        parts << u"Cross-hair at "_s + place;
    if (choice.compared.isValid()) {
        const auto& [first, last] = std::minmax(choice.compared, date);
        parts << u"Arrows from "_s + first.toString(ado::dateTextFormat) + u" to " +
                     last.toString(ado::dateTextFormat);
    }
    return parts.join(u'\n');
}

void MatrixAids::list(forms::ListView& view) const {
    const bool isCompared = choice.compared.isValid();
    std::vector<forms::ListView::Column> columns{
        {u"No."_s, 0.04},       {u"Parameter"_s, isCompared ? 0.16 : 0.3},
        {u"Weightage"_s, 0.08}, {u"Score"_s, 0.06},
        {u"Gap"_s, 0.06},       {u"Quadrant"_s, isCompared ? 0.17 : 0.3}};
    if (isCompared) {
        columns.push_back({u"Change of weightage"_s, 0.14});
        columns.push_back({u"Change of score"_s, 0.11});
        columns.push_back({u"Quadrant on "_s + choice.compared.toString(ado::dateTextFormat), 0.17});
    }
    view.setColumns(columns);
    std::vector<QStringList> rows;
    for (const Point& point : points)
        rows.push_back(listed(point));
    view.setItems(std::move(rows));
}

void MatrixAids::fillReport() const {
    fillWorkTable([this] {
        cnnMain->Execute(u"delete * from reporttable"_s);
        ado::Recordset rows(u"select * from reporttable"_s, *cnnMain, ado::Recordset::Lock::BatchOptimistic);
        for (int place = 1; const Point& point : points) {
            const QStringList texts = listed(point);
            rows.AddNew();
            rows["wt"] = place++;
            rows["Parameter"] = texts[0] + u"  " + texts[1];
            rows["responname"] = texts[2];
            rows["question"] = texts[3];
            rows["tablename"] = texts[4];
            rows["Type"] = texts[5];
            rows.Update();
        }
    });
}

QStringList MatrixAids::listed(const Point& point) const {
    QStringList row{QString::number(point.number),      point.parameter,
                    twoDecimals(point.means.weightage), twoDecimals(point.means.score),
                    withSign(gapOf(point.means)),       quadrantName(quadrantOf(point.means, crossHair))};
    if (point.compared) {
        const double direction = isComparedEarlier() ? 1 : -1;
        row << withSign(direction * (point.means.weightage - point.compared->weightage))
            << withSign(direction * (point.means.score - point.compared->score))
            << quadrantName(quadrantOf(*point.compared, crossHair));
    }
    return row;
}

int MatrixAids::chartRow(int listRow) const {
    return listRow >= 0 && listRow < static_cast<int>(points.size())
               ? points[static_cast<std::size_t>(listRow)].row
               : 0;
}

QString MatrixAids::actionText(int row) const {
    const auto point = std::find_if(points.begin(), points.end(),
                                    [row](const Point& candidate) { return candidate.row == row; });
    if (point == points.end())
        return {};
    return u"%1: %2 (weightage %3, score %4 on %5). "_s.arg(
        point->parameter, quadrantName(quadrantOf(point->means, crossHair)),
        twoDecimals(point->means.weightage), twoDecimals(point->means.score),
        date.toString(ado::dateTextFormat));
}
