// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/series.h"

#include <QPixmap>

namespace chart {

/// The marker of a series, numbered from 1, on the white of a chart; `side` in logical pixels, with
/// `sharpness` dots each.
QPixmap markerPicture(const Series& series, int number, int side, double sharpness);

} // namespace chart
