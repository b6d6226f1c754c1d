// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>
#include <QString>

namespace chart {
class MSChart;
}

/// Gives a chart its context menu: copy the picture, save it as PNG, SVG or PDF. Saved pictures are laid out
/// for `size` in logical pixels.
void addPictureMenu(chart::MSChart& drawn, const QSize& size);

/// Writes the picture that a report shows into the home directory, sharp at the width of a page; it stands on
/// the clipboard as well. Throws Failure when that fails.
void savePictureForReport(chart::MSChart& drawn, const QString& file, const QSize& size);
