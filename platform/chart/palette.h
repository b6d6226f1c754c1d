// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/series.h"

#include <QPen>

class QCPScatterStyle;

namespace chart {

/// The colour of a series, numbered from 1. The colours are distinguishable with every common colour
/// blindness and contrast with white.
QColor seriesColor(const Series& series, int number);

/// The pen of its line: colour, width, and a dash that changes once all colours have been used.
QPen seriesPen(const Series& series, int number);

/// Its marker. Colour and shape repeat only after 56 series.
QCPScatterStyle seriesMarker(const Series& series, int number);

} // namespace chart
