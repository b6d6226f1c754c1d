// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/series.h"

#include <QPen>

class QCPScatterStyle;

namespace chart {

/// The colour of a series, numbered from 1. The colours can be told apart with every common colour blindness
/// and stand out on white.
QColor seriesColor(const Series& series, int number);

/// The pen of its line: colour, width, and a dash that changes once all colours have been used.
QPen seriesPen(const Series& series, int number);

/// Its marker. Colour and shape together repeat after 56 series only.
QCPScatterStyle seriesMarker(const Series& series, int number);

} // namespace chart
