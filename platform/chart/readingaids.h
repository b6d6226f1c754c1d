// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QCustomPlot;

namespace chart {

struct Drawing;

/// Draws what helps to read an XY chart: cross-hair, diagonal, arrows, and the labels of its points. The plot
/// has been laid out, since arrows and labels depend on its size; items of former drawings are gone.
void drawReadingAids(QCustomPlot& plot, const Drawing& drawing);

} // namespace chart
