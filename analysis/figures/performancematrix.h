// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/satisfactionindex.h"

#include <QColor>

#include <optional>
#include <span>

/// Where a parameter stands in the matrix, on the scales of weightage and score.
struct MatrixMeans {
    double weightage = 0;
    double score = 0;
};

/// The two means of a group of answers, rounded to two decimals with ties to the even digit. The divisor of
/// both is the number of all answers, so that one without a weightage, or without a score, pulls that mean
/// down and not the other. Nothing when no answer has either. Throws Failure when the sum of the
/// scores leaves -32768..32767.
std::optional<MatrixMeans> matrixMeans(std::span<const RatedAnswer> answers);

/// Places the points of a matrix, given in the order of their scores, so that equal ones do not hide one
/// another: a point equal to its predecessor goes to its whole numbers, ties to even, moved by the next of
/// eight small shifts. Equal points with another between them are not moved.
class MatrixPlaces {
public:
    /// The place of the next point. Throws Failure at the ninth shift of a chart.
    MatrixMeans next(const MatrixMeans& point);

private:
    std::optional<MatrixMeans> previous; // as given
    std::size_t shifted = 0;
};

/// The colour of the quadrant in which a point lies; the borders stand at 5. An invalid colour when it lies
/// in none.
QColor quadrantColor(double score, double weightage);
