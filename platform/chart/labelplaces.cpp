// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/chart/labelplaces.h"

#include <array>
#include <cmath>
#include <limits>

namespace chart {
namespace {

/// Where a label is seen from its point, the preferred first: right, left, above, below, then the corners.
constexpr std::array<QPointF, 8> directions{
    {{1, 0}, {-1, 0}, {0, -1}, {0, 1}, {1, -1}, {1, 1}, {-1, -1}, {-1, 1}}};

QRectF placed(const QPointF& point, const QSizeF& size, const QPointF& direction, double away) {
    const bool isCorner = direction.x() != 0 && direction.y() != 0;
    const double distance = isCorner ? away * M_SQRT1_2 : away;
    const QPointF centre(point.x() + direction.x() * (distance + size.width() / 2),
                         point.y() + direction.y() * (distance + size.height() / 2));
    return {centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(), size.height()};
}

double areaOf(const QRectF& rect) {
    return rect.width() * rect.height();
}

class Placing {
public:
    Placing(const std::vector<QPointF>& ofPoints, const QRectF& within, double distance,
            const std::vector<QRectF>& obstacles)
        : points(ofPoints), area(within), away(distance), taken(obstacles), places(ofPoints.size()) {
        for (const QPointF& point : points)
            taken.emplace_back(point.x() - away / 2, point.y() - away / 2, away, away);
    }

    void placeBrief(std::size_t number, const QSizeF& size) {
        double least = std::numeric_limits<double>::max();
        for (const QPointF& direction : directions) {
            const QRectF rect = placed(points[number], size, direction, away);
            const double covered = coveredBy(rect, number);
            if (covered < least) {
                least = covered;
                places[number] = {rect, false};
            }
        }
    }

    void placeFull(std::size_t number, const QSizeF& size) {
        for (const QPointF& direction : directions) {
            const QRectF rect = placed(points[number], size, direction, away);
            if (coveredBy(rect, number) == 0) {
                places[number] = {rect, true};
                return;
            }
        }
    }

    const std::vector<LabelPlace>& result() const { return places; }

private:
    /// What a label would cover of others, of what is taken, and of the outside, in square pixels.
    double coveredBy(const QRectF& rect, std::size_t number) const {
        double covered = areaOf(rect) - areaOf(rect & area);
        for (const QRectF& other : taken)
            covered += areaOf(rect & other);
        for (std::size_t other = 0; other < places.size(); ++other) {
            if (other != number)
                covered += areaOf(rect & places[other].rect);
        }
        return covered;
    }

    const std::vector<QPointF>& points;
    QRectF area;
    double away;
    std::vector<QRectF> taken; // obstacles and markers
    std::vector<LabelPlace> places;
};

} // namespace

std::vector<LabelPlace> placeLabels(const std::vector<QPointF>& points, const std::vector<LabelSizes>& sizes,
                                    const QRectF& area, double away, const std::vector<QRectF>& obstacles) {
    Placing placing(points, area, away, obstacles);
    for (std::size_t number = 0; number < points.size(); ++number)
        placing.placeBrief(number, sizes[number].brief);
    for (std::size_t number = 0; number < points.size(); ++number)
        placing.placeFull(number, sizes[number].full);
    return placing.result();
}

} // namespace chart
