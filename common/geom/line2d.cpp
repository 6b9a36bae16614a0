#include "common/geom/line2d.h"

#include "common/geom/detail/segment_math.h"

#include <algorithm>

namespace Geom {

Point2D LineClosestPoint2D(const Point2D& a, const Point2D& b, const Point2D& p,
                           NonPerpendicularMode::Type mode, const Precision3D& precision) noexcept {
    Point2D closest;
    if (detail::ClosestOnSegment(a, b, p, precision, closest)) {
        return closest;
    }
    if (mode == NonPerpendicularMode::kNone) {
        return kInvalidPoint;
    }
    const Point2D direction = detail::Minus(b, a);
    const double t =
        detail::Dot(detail::Minus(p, a), direction) / detail::Dot(direction, direction);
    const Point2D clamped = detail::Along(a, direction, std::clamp(t, 0.0, 1.0));
    return IsEqual2D(clamped, a, precision) ? a : b;
}

Point2D InfLineClosestPoint2D(const Point2D& a, const Point2D& b, const Point2D& p,
                              const Precision3D& precision) noexcept {
    if (IsEqual2D(a, b, precision)) {
        return a;
    }
    const Point2D direction = detail::Minus(b, a);
    const double t =
        detail::Dot(detail::Minus(p, a), direction) / detail::Dot(direction, direction);
    return detail::Along(a, direction, t);
}

bool LineContainsPoint2D(const Point2D& a, const Point2D& b, const Point2D& p,
                         const Precision3D& precision) noexcept {
    const detail::WideBox box =
        detail::WideBoxOf(a, b, precision.halfEpsilon[0], precision.halfEpsilon[1]);
    if (!(p.x >= box.x_min && p.x <= box.x_max && p.y >= box.y_min && p.y <= box.y_max)) {
        return false;
    }
    Point2D closest;
    return detail::ClosestOnSegment(a, b, p, precision, closest) && closest.IsValid() &&
           IsEqual2D(closest, p, precision);
}

std::pair<double, double> LineGetY2D(const Point2D& a, const Point2D& b, double x,
                                     const Precision3D& precision) noexcept {
    const double hx = precision.halfEpsilon[0];
    const auto [x_low, x_high] = std::minmax(a.x, b.x);
    if (!(x >= x_low - hx && x <= x_high + hx)) {
        return {lmw::kUndefined, lmw::kUndefined};
    }
    if (detail::Near(a.x, b.x, hx)) {
        return {std::min(a.y, b.y), std::max(a.y, b.y)};
    }
    // Interpolated from the nearer end, so that an end's own x gives exactly its y.
    const double clamped = std::clamp(x, x_low, x_high);
    const double t = (clamped - a.x) / (b.x - a.x);
    const double y = t <= 0.5 ? a.y + t * (b.y - a.y) : b.y - (1.0 - t) * (b.y - a.y);
    return {y, y};
}

}  // namespace Geom
