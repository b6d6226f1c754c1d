// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/chart/drawing.h"

class QCPScatterStyle;
class QCustomPlot;

namespace chart {

/// Draws what the series of a line chart are compared with, once items of former drawings are gone: thin
/// dashed lines from side to side, with their labels in the margin on the right, which is made wide enough.
/// Lines on one value show their colours in turn; labels that would cover each other stand side by side.
void drawReferences(QCustomPlot& plot, const Drawing& drawing);

/// Draws the points of the marked rows in red, each in a ring.
void drawMarked(QCustomPlot& plot, const DrawnSeries& series, const QCPScatterStyle& marker);

} // namespace chart
