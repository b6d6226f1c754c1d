// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "analysis/figures/performancematrix.h"

#include <QString>

#include <vector>

/// Where the lines cross that divide the matrix into quadrants: in the middle of the scales, at the means or
/// medians of all points, or at values of the user's own.
enum class CrossHair { Middle, Means, Medians, Own };

/// The place of the cross-hair for the points of a matrix, before equal ones are moved apart. The median of
/// an even number is the mean of the two in the middle. Both are rounded to two decimals, as the points are.
/// Without points it is the middle; own: for
/// CrossHair::Own.
MatrixMeans crossHairPlace(CrossHair crossHair, const std::vector<MatrixMeans>& points,
                           const MatrixMeans& own);

/// The quadrants of importance-performance analysis (Martilla and James, Journal of Marketing 41, 1977), with
/// the weightage as importance and the score as performance. A point on a line is above it.
enum class Quadrant { ConcentrateHere, KeepUp, LowPriority, PossibleOverkill };
Quadrant quadrantOf(const MatrixMeans& point, const MatrixMeans& crossHair);

/// "Concentrate here", "Keep up the good work", "Low priority", "Possible overkill".
QString quadrantName(Quadrant quadrant);

/// How far the score stays behind the weightage, -10 to 10; below 0 it is ahead.
double gapOf(const MatrixMeans& point);
