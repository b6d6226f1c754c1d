// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/palette.h"

#include "platform/chart/qcp.h"

#include <array>

namespace chart {
namespace {

constexpr double twipsPerPixel = 15;

/// The qualitative palette of Okabe and Ito without its yellow, which is too weak for thin lines on white.
constexpr std::array<QRgb, 7> colors{0xFF0072B2, 0xFFD55E00, 0xFF009E73, 0xFFCC79A7,
                                     0xFF56B4E9, 0xFFE69F00, 0xFF000000};

constexpr std::array shapes{QCPScatterStyle::ssCircle,
                            QCPScatterStyle::ssSquare,
                            QCPScatterStyle::ssTriangle,
                            QCPScatterStyle::ssDiamond,
                            QCPScatterStyle::ssTriangleInverted,
                            QCPScatterStyle::ssStar,
                            QCPScatterStyle::ssCross,
                            QCPScatterStyle::ssPlus};

constexpr std::array dashes{Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine, Qt::DashDotDotLine};

} // namespace

QColor seriesColor(const Series& series, int number) {
    if (!series.Marker.FillColor.Automatic)
        return series.Marker.FillColor.Value;
    return colors[static_cast<std::size_t>(number - 1) % colors.size()];
}

QPen seriesPen(const Series& series, int number) {
    const std::size_t round = static_cast<std::size_t>(number - 1) / colors.size();
    return {seriesColor(series, number), series.Pen.Width / twipsPerPixel, dashes[round % dashes.size()]};
}

QCPScatterStyle seriesMarker(const Series& series, int number) {
    const QColor color = seriesColor(series, number);
    const auto shape = shapes[static_cast<std::size_t>(number - 1) % shapes.size()];
    return {shape, QPen(color, 1.5), QBrush(color), series.Marker.Size / twipsPerPixel};
}

} // namespace chart
