#include "common/geom/polygon2d.h"

#include "common/geom/detail/ring.h"
#include "common/geom/detail/segment_math.h"
#include "common/geom/line2d.h"

#include <cmath>
#include <cstddef>

namespace Geom {

namespace detail {

bool RingEncloses(PointRow ring, const Point2D& p) noexcept {
    bool inside = false;
    for (std::size_t i = 0, previous = ring.count - 1; i < ring.count; previous = i++) {
        const Point2D& a = ring.points[previous];
        const Point2D& b = ring.points[i];
        if ((a.y > p.y) != (b.y > p.y)) {
            // Left of the edge, seen upwards: exact in sign but for points near the boundary.
            const double turn = Cross(Minus(b, a), Minus(p, a));
            inside ^= (b.y > a.y) == (turn > 0.0);
        }
    }
    return inside;
}

bool RowTouches(PointRow row, const Point2D& p, const Precision3D& precision) noexcept {
    if (row.count == 1) {
        return IsEqual2D(row.points[0], p, precision);
    }
    for (std::size_t i = 1; i < row.count; ++i) {
        if (LineContainsPoint2D(row.points[i - 1], row.points[i], p, precision)) {
            return true;
        }
    }
    return false;
}

}  // namespace detail

namespace {

/// Sums over the ring relative to its first point, so that far from the origin nothing cancels.
struct RingSums {
    double twice_area = 0.0;
    Point2D moment{0.0, 0.0};
};

RingSums Sum(const std::vector<Point2D>& polygon) noexcept {
    RingSums sums;
    for (std::size_t i = 2; i < polygon.size(); ++i) {
        const Point2D u = detail::Minus(polygon[i - 1], polygon[0]);
        const Point2D v = detail::Minus(polygon[i], polygon[0]);
        const double cross = detail::Cross(u, v);
        sums.twice_area += cross;
        sums.moment.x += cross * (u.x + v.x);
        sums.moment.y += cross * (u.y + v.y);
    }
    return sums;
}

}  // namespace

bool PolygonIsCCW2D(const std::vector<Point2D>& polygon) noexcept {
    return Sum(polygon).twice_area > 0.0;
}

double PolygonArea2D(const std::vector<Point2D>& polygon) noexcept {
    return 0.5 * std::fabs(Sum(polygon).twice_area);
}

Point2D PolygonCentreOfMass2D(const std::vector<Point2D>& polygon) noexcept {
    const RingSums sums = Sum(polygon);
    const double divisor = 3.0 * sums.twice_area;
    if (!(std::fabs(divisor) > 0.0)) {
        return kInvalidPoint;
    }
    return {polygon[0].x + sums.moment.x / divisor, polygon[0].y + sums.moment.y / divisor};
}

bool PolygonContainsPoint2D(const std::vector<Point2D>& polygon, const Point2D& p,
                            const Precision3D& precision) noexcept {
    if (polygon.empty()) {
        return false;
    }
    const detail::PointRow row{polygon.data(), polygon.size()};
    return detail::RowTouches(row, p, precision) ||
           LineContainsPoint2D(polygon.back(), polygon.front(), p, precision) ||
           detail::RingEncloses(row, p);
}

int PolygonSideOfVector2D(const std::vector<Point2D>& polygon, const Point2D& a, const Point2D& b,
                          const Precision3D& precision) noexcept {
    bool left = false;
    bool right = false;
    for (const Point2D& p : polygon) {
        if (IsEqual2D(InfLineClosestPoint2D(a, b, p, precision), p, precision)) {
            continue;
        }
        const double turn = detail::Cross(detail::Minus(b, a), detail::Minus(p, a));
        left = left || turn > 0.0;
        right = right || turn < 0.0;
    }
    if (left == right) {
        return 0;
    }
    return left ? -1 : 1;
}

}  // namespace Geom
