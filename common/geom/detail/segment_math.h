#pragma once

// The few expressions that the segment functions share. They are here once because an expression
// must have one value everywhere: containment, touch and crossing are compared bit for bit between
// callers.

#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <algorithm>
#include <cmath>

namespace Geom::detail {

inline Point2D Minus(const Point2D& a, const Point2D& b) noexcept {
    return {a.x - b.x, a.y - b.y};
}

inline double Cross(const Point2D& a, const Point2D& b) noexcept {
    return a.x * b.y - a.y * b.x;
}

inline double Dot(const Point2D& a, const Point2D& b) noexcept {
    return a.x * b.x + a.y * b.y;
}

inline double SquaredLength(const Point2D& a, const Point2D& b) noexcept {
    const Point2D d = Minus(b, a);
    return Dot(d, d);
}

/// a + t (b - a)
inline Point2D Along(const Point2D& a, const Point2D& direction, double t) noexcept {
    return {a.x + t * direction.x, a.y + t * direction.y};
}

/// LineClosestPoint2D in mode 1; false where the foot falls outside.
inline bool ClosestOnSegment(const Point2D& a, const Point2D& b, const Point2D& p,
                             const Precision3D& precision, Point2D& closest) noexcept {
    if (IsEqual2D(p, a, precision)) {
        closest = a;
        return true;
    }
    if (IsEqual2D(p, b, precision)) {
        closest = b;
        return true;
    }
    if (IsEqual2D(a, b, precision)) {
        closest = a;
        return true;
    }
    const Point2D direction = Minus(b, a);
    const double t = Dot(Minus(p, a), direction) / Dot(direction, direction);
    if (!(t >= 0.0 && t <= 1.0)) {
        return false;
    }
    closest = Along(a, direction, t);
    return true;
}

/// A segment's bounding box widened by the half-epsilons, as the first test of every pair uses it.
struct WideBox {
    double x_min;
    double x_max;
    double y_min;
    double y_max;
};

inline WideBox WideBoxOf(const Point2D& a, const Point2D& b, double hx, double hy) noexcept {
    return {std::min(a.x, b.x) - hx, std::max(a.x, b.x) + hx, std::min(a.y, b.y) - hy,
            std::max(a.y, b.y) + hy};
}

/// Written with & and in the positive sense: no branches, and NaN meets nothing.
inline bool BoxesMeet(const WideBox& a, const WideBox& b) noexcept {
    return static_cast<bool>(
        static_cast<unsigned>(a.x_min <= b.x_max) & static_cast<unsigned>(b.x_min <= a.x_max) &
        static_cast<unsigned>(a.y_min <= b.y_max) & static_cast<unsigned>(b.y_min <= a.y_max));
}

inline bool IsEndOf(const Point2D& p, const Line2D& line, const Precision3D& precision) noexcept {
    return IsEqual2D(p, line.first, precision) || IsEqual2D(p, line.second, precision);
}

}  // namespace Geom::detail
