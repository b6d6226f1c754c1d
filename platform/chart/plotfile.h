// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QCustomPlot;

namespace chart {

/// Writes a plot in the size of its viewport, over an older file: as a drawing when the suffix is svg or pdf,
/// else as a picture of that format with `sharpness` dots a pixel. False when that fails.
bool savePlot(QCustomPlot& plot, const QString& path, double sharpness);

} // namespace chart
