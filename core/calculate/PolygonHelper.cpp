#include "core/calculate/PolygonHelper.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace ZemCalculate {

namespace {

// The distance from p to the segment a-b, all in doubles so that float extremes neither overflow nor cancel.
double distanceToSegment(double px, double py, double ax, double ay, double bx, double by)
{
    const double dx = bx - ax;
    const double dy = by - ay;
    const double lengthSquared = dx * dx + dy * dy;
    double t = 0.0;
    if (lengthSquared > 0.0)
        t = std::clamp(((px - ax) * dx + (py - ay) * dy) / lengthSquared, 0.0, 1.0);
    return std::hypot(px - (ax + t * dx), py - (ay + t * dy));
}

} // namespace

bool isPointInPoligon(const std::vector<Zem::PointF>& polygon, const Zem::PointF& point)
{
    if (polygon.size() < 3 || !std::isfinite(point.x) || !std::isfinite(point.y))
        return false;

    double minX = polygon.front().x;
    double maxX = minX;
    double minY = polygon.front().y;
    double maxY = minY;
    double largestCoordinate =
        std::max(std::fabs(static_cast<double>(point.x)), std::fabs(static_cast<double>(point.y)));
    for (const Zem::PointF& corner : polygon) {
        if (!std::isfinite(corner.x) || !std::isfinite(corner.y))
            return false;
        minX = std::min(minX, static_cast<double>(corner.x));
        maxX = std::max(maxX, static_cast<double>(corner.x));
        minY = std::min(minY, static_cast<double>(corner.y));
        maxY = std::max(maxY, static_cast<double>(corner.y));
        largestCoordinate = std::max(
            {largestCoordinate, std::fabs(static_cast<double>(corner.x)), std::fabs(static_cast<double>(corner.y))});
    }
    // A point on the boundary that went through floats is off the exact line by up to about one float step at its
    // coordinates; the relative part keeps the test meaningful for polygons of any size.
    const double epsilon = 1e-6 * std::max(maxX - minX, maxY - minY) + FLT_EPSILON * largestCoordinate;

    const double px = point.x;
    const double py = point.y;
    bool inside = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const double ax = polygon[j].x;
        const double ay = polygon[j].y;
        const double bx = polygon[i].x;
        const double by = polygon[i].y;
        if (distanceToSegment(px, py, ax, ay, bx, by) <= epsilon)
            return true;
        // Even-odd rule: count the edges that a ray to the right of the point crosses. The half-open test on y
        // counts a corner that the ray passes through once, not twice.
        if ((ay > py) != (by > py)) {
            const double crossingX = ax + (py - ay) * (bx - ax) / (by - ay);
            if (px < crossingX)
                inside = !inside;
        }
    }
    return inside;
}

} // namespace ZemCalculate
