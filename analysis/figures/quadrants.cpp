// SPDX-License-Identifier: GPL-3.0-or-later
#include "analysis/figures/quadrants.h"

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr MatrixMeans middle{.weightage = 5, .score = 5};

std::vector<double> valuesOf(const std::vector<MatrixMeans>& points, double MatrixMeans::*axis) {
    std::vector<double> values;
    values.reserve(points.size());
    for (const MatrixMeans& point : points)
        values.push_back(point.*axis);
    return values;
}

/// As the points are, so that one on the line is not beside it.
double toTwoDecimals(double value) {
    constexpr double hundred = 100;
    return std::round(value * hundred) / hundred;
}

double meanOf(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

double medianOf(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2;
}

} // namespace

MatrixMeans crossHairPlace(CrossHair crossHair, const std::vector<MatrixMeans>& points,
                           const MatrixMeans& own) {
    if (crossHair == CrossHair::Own)
        return own;
    if (crossHair == CrossHair::Middle || points.empty())
        return middle;
    const auto place = [&](double MatrixMeans::*axis) {
        const std::vector<double> values = valuesOf(points, axis);
        return toTwoDecimals(crossHair == CrossHair::Means ? meanOf(values) : medianOf(values));
    };
    return {.weightage = place(&MatrixMeans::weightage), .score = place(&MatrixMeans::score)};
}

Quadrant quadrantOf(const MatrixMeans& point, const MatrixMeans& crossHair) {
    const bool isServed = point.score >= crossHair.score;
    if (point.weightage >= crossHair.weightage)
        return isServed ? Quadrant::KeepUp : Quadrant::ConcentrateHere;
    return isServed ? Quadrant::PossibleOverkill : Quadrant::LowPriority;
}

QString quadrantName(Quadrant quadrant) {
    switch (quadrant) {
    case Quadrant::ConcentrateHere:
        return u"Concentrate here"_s;
    case Quadrant::KeepUp:
        return u"Keep up the good work"_s;
    case Quadrant::LowPriority:
        return u"Low priority"_s;
    case Quadrant::PossibleOverkill:
        break;
    }
    return u"Possible overkill"_s;
}

double gapOf(const MatrixMeans& point) {
    return point.weightage - point.score;
}
