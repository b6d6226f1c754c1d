// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRectF>

#include <vector>

namespace chart {

/// The sizes in pixels of a point's two possible labels.
struct LabelSizes {
    QSizeF full;
    QSizeF brief; ///< shown where there is no room for the full one
};

struct LabelPlace {
    QRectF rect;
    bool isFull = false;
};

/// Places a label beside each point so that labels cover neither each other nor a marker nor an obstacle nor
/// leave the area, all in pixels. A brief label is always placed, where it covers least; a full one only
/// where it covers nothing. away: from the point to the edge of its label.
std::vector<LabelPlace> placeLabels(const std::vector<QPointF>& points, const std::vector<LabelSizes>& sizes,
                                    const QRectF& area, double away,
                                    const std::vector<QRectF>& obstacles = {});

} // namespace chart
