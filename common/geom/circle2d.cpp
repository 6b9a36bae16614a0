#include "common/geom/circle2d.h"

#include "common/geom/detail/segment_math.h"
#include "common/geom/extents2d.h"
#include "common/geom/line2d.h"

#include <cmath>

namespace Geom {

void CircleInfLineIntersection2D(fixed_vector<Point2D, 2>& out, const Circle2D& circle,
                                 const Line2D& line, const Precision3D& precision) noexcept {
    out.clear();
    const Point2D centre = circle.centre;
    const double r = circle.radius;
    const Point2D direction = detail::Minus(line.second, line.first);
    const double length = std::hypot(direction.x, direction.y);
    const Point2D foot = InfLineClosestPoint2D(line.first, line.second, centre, precision);
    const Point2D to_foot = detail::Minus(foot, centre);
    const double d = std::hypot(to_foot.x, to_foot.y);
    // Through the centre the foot has no direction; the line's normal is as good as any.
    Point2D outward{1.0, 0.0};
    if (d > 0.0) {
        outward = {to_foot.x / d, to_foot.y / d};
    } else if (length > 0.0) {
        outward = {-direction.y / length, direction.x / length};
    }
    if (IsEqual2D(foot, detail::Along(centre, outward, r), precision)) {
        out.push_back(foot);
        return;
    }
    if (IsEqual2D(line.first, line.second, precision) || !(d <= r)) {
        return;
    }
    const double half_chord = std::sqrt((r - d) * (r + d));
    const Point2D unit{direction.x / length, direction.y / length};
    out.push_back(detail::Along(foot, unit, -half_chord));
    out.push_back(detail::Along(foot, unit, half_chord));
}

void CircleLineIntersection2D(fixed_vector<Point2D, 2>& out, const Circle2D& circle,
                              const Line2D& line, const Precision3D& precision) noexcept {
    out.clear();
    if (!IsExtentsIntersected2D(ExtentsOf(line), ExtentsOf(circle), precision)) {
        return;
    }
    fixed_vector<Point2D, 2> candidates;
    CircleInfLineIntersection2D(candidates, circle, line, precision);
    for (const Point2D& p : candidates) {
        Point2D closest;
        if (detail::ClosestOnSegment(line.first, line.second, p, precision, closest) &&
            IsEqual2D(closest, p, precision)) {
            out.push_back(p);
        }
    }
}

Point2D CircleEdgePoint2D(const Circle2D& circle, double angle) noexcept {
    return {circle.centre.x + circle.radius * std::cos(angle),
            circle.centre.y + circle.radius * std::sin(angle)};
}

}  // namespace Geom
