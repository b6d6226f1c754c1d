// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/tables/table.h"

#include <QSize>
#include <QString>

#include <functional>

class QWidget;

namespace chart {
class MSChart;
}

/// Adds a context menu to a chart: copy the picture, save it as PNG, SVG or PDF, copy or save the table of
/// its points. `size` is the layout size of saved pictures in logical pixels.
void addChartMenu(chart::MSChart& drawn, const QSize& size, const std::function<tables::Table()>& points);

/// Saves the chart to a file in the home directory for use in a report, in print resolution, and copies it to
/// the clipboard. Throws Failure if the file cannot be written.
void savePictureForReport(chart::MSChart& drawn, const QString& file, const QSize& size);

/// The button keeps its room while it is hidden, so that those after it stay where they are.
void keepRoom(QWidget& button);
