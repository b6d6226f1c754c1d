// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/markerpicture.h"

#include "platform/chart/palette.h"
#include "platform/chart/qcp.h"

#include <cmath>

namespace chart {

QPixmap markerPicture(const Series& series, int number, int side, double sharpness) {
    const int dots = static_cast<int>(std::ceil(side * sharpness));
    QPixmap picture(dots, dots);
    picture.setDevicePixelRatio(sharpness);
    picture.fill(Qt::white);
    QCPPainter painter(&picture);
    painter.setAntialiasing(true);
    const QCPScatterStyle style = seriesMarker(series, number);
    style.applyTo(&painter, seriesPen(series, number));
    style.drawShape(&painter, side / 2.0, side / 2.0);
    return picture;
}

} // namespace chart
