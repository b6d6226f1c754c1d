// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/satisfactionindex.h"

#include <QColor>

#include <optional>
#include <span>

/// The position of a parameter in the matrix, on the scales of weightage and score (0 to 10).
struct MatrixMeans {
    double weightage = 0;
    double score = 0;
};

/// The mean weightage and mean score of a group of answers, rounded to two decimals, ties to even. Both are
/// divided by the number of all answers; a missing value counts as 0. Returns nullopt if both sums are 0, as
/// for no answers. Throws Failure if a sum of the scores leaves -32768..32767.
std::optional<MatrixMeans> matrixMeans(std::span<const RatedAnswer> answers);

/// The same for the answers of many customers, with a sum of 64 bits: equal to matrixMeans wherever that
/// returns.
std::optional<MatrixMeans> groupMeans(std::span<const RatedAnswer> answers);

/// The means of the matrix before they are rounded; 0 for no answers.
double meanWeightage(std::span<const RatedAnswer> answers);
double meanScore(std::span<const RatedAnswer> answers);

/// Moves equal points of a matrix apart so that they do not hide one another. Points are passed in order of
/// their scores. A point equal to its predecessor is rounded to whole numbers, ties to even, and moved by the
/// next of eight small shifts. Equal points with another one between them are not moved.
class MatrixPlaces {
public:
    /// The position of the next point. Throws Failure at the ninth shift.
    MatrixMeans next(const MatrixMeans& point);

private:
    std::optional<MatrixMeans> previous; ///< before it was moved
    std::size_t shifted = 0;
};

/// The colour of a point's quadrant; the borders are at 5. An invalid colour if it is in none.
QColor quadrantColor(double score, double weightage);
