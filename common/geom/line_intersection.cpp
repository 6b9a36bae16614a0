#include "common/geom/line_intersection.h"

#include "common/geom/detail/segment_math.h"
#include "common/geom/fixed_vector.h"
#include "common/geom/line2d.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Geom {

namespace {

/// The ends of one segment that touch the other: at most one of them in the other's interior slot,
/// the rest listed.
struct Touches {
    Point2D interior;
    bool has_interior = false;
    fixed_vector<Point2D, 4> listed;

    void Test(const Point2D& p, const Line2D& segment, const Precision3D& precision) noexcept {
        Point2D closest;
        if (!detail::ClosestOnSegment(segment.first, segment.second, p, precision, closest) ||
            !IsEqual2D(closest, p, precision)) {
            return;
        }
        if (!has_interior && !detail::IsEndOf(p, segment, precision)) {
            interior = p;
            has_interior = true;
        } else {
            listed.push_back(p);
        }
    }
};

/// Both ends of the shorter segment lie on the infinite line through the longer one.
bool AreCollinear(const Line2D& a, const Line2D& b, const Precision3D& precision) noexcept {
    const bool second_longer =
        detail::SquaredLength(b.first, b.second) > detail::SquaredLength(a.first, a.second);
    const Line2D& longer = second_longer ? b : a;
    const Line2D& shorter = second_longer ? a : b;
    const auto on_line = [&](const Point2D& p) {
        return IsEqual2D(InfLineClosestPoint2D(longer.first, longer.second, p, precision), p,
                         precision);
    };
    return on_line(shorter.first) && on_line(shorter.second);
}

/// The touches' code, with p0 and p1 set where they count.
int Classify(const Touches& touches, const Line2D& a, const Line2D& b, const Precision3D& precision,
             Point2D& p0, Point2D& p1) noexcept {
    if (touches.has_interior) {
        p0 = touches.interior;
        if (touches.listed.empty()) {
            return 1;
        }
        p1 = touches.listed[0];
        return AreCollinear(a, b, precision) ? 2 : 0;
    }
    if (touches.listed.empty()) {
        return 0;
    }
    p0 = touches.listed[0];
    for (const Point2D& p : touches.listed) {
        if (!IsEqual2D(p, p0, precision)) {
            p1 = p;
            return 2;
        }
    }
    return 1;
}

/// The parameter numerator / d, accepted within [0, 1]. The first test also keeps rounding of the
/// division from leaving the segment.
bool Parameter(double numerator, double d, double& t) noexcept {
    t = numerator / d;
    return std::fabs(numerator) <= std::fabs(d) && t >= 0.0;
}

/// The crossing computed on a, where it agrees with the one computed on b.
bool ParametricCrossing(const Line2D& a, const Line2D& b, const Precision3D& precision,
                        Point2D& crossing) noexcept {
    const Point2D da = detail::Minus(a.second, a.first);
    const Point2D db = detail::Minus(b.second, b.first);
    const double d = detail::Cross(da, db);
    if (d == 0.0) {
        return false;
    }
    const Point2D between = detail::Minus(b.first, a.first);
    double t = 0.0;
    double u = 0.0;
    if (!Parameter(detail::Cross(between, db), d, t) ||
        !Parameter(detail::Cross(between, da), d, u)) {
        return false;
    }
    crossing = detail::Along(a.first, da, t);
    return IsEqual2D(crossing, detail::Along(b.first, db, u), precision);
}

/// How far the ends of a segment lie off the infinite line through another one: twice the areas of
/// the triangles, and the greatest one at which a touch is possible. Only saves time: what it rules
/// out would fail the tests.
///
/// A touch within tolerance needs |(line) x (p - first)| <= hx |dy| + hy |dx|. `rounding` is added
/// to both tolerances: 2^-46 of the greatest magnitude covers the rounding of these products, of
/// the feet and of the crossing's parameters (each a few units in the last place, 2^-53) many times
/// over. Where something overflows or is not a number, nothing is ruled out.
struct Offsets {
    double first;
    double second;
    double reach;

    Offsets(const Line2D& line, const Line2D& s, double hx, double hy, double rounding) noexcept {
        const Point2D d = detail::Minus(line.second, line.first);
        first = detail::Cross(d, detail::Minus(s.first, line.first));
        second = detail::Cross(d, detail::Minus(s.second, line.first));
        reach = (hx + rounding) * std::fabs(d.y) + (hy + rounding) * std::fabs(d.x);
    }

    /// Both ends on one side: no point of the segment touches the line, and no crossing exists.
    [[nodiscard]] bool AreClear() const noexcept {
        return (first > reach && second > reach) || (first < -reach && second < -reach);
    }
    [[nodiscard]] bool FirstMayTouch() const noexcept { return !(std::fabs(first) > reach); }
    [[nodiscard]] bool SecondMayTouch() const noexcept { return !(std::fabs(second) > reach); }
};

double GreatestMagnitude(const detail::WideBox& a, const detail::WideBox& b) noexcept {
    return std::max(std::max(std::max(-a.x_min, a.x_max), std::max(-a.y_min, a.y_max)),
                    std::max(std::max(-b.x_min, b.x_max), std::max(-b.y_min, b.y_max)));
}

}  // namespace

int LineIntersection2D(Point2D& p0, Point2D& p1, const Point2D& a0, const Point2D& a1,
                       const Point2D& b0, const Point2D& b1,
                       const Precision3D& precision) noexcept {
    const Line2D a{a0, a1};  // copies: p0 and p1 may be the caller's ends themselves
    const Line2D b{b0, b1};
    p0 = kInvalidPoint;
    p1 = kInvalidPoint;
    const double hx = precision.halfEpsilon[0];
    const double hy = precision.halfEpsilon[1];
    const detail::WideBox box_a = detail::WideBoxOf(a.first, a.second, hx, hy);
    const detail::WideBox box_b = detail::WideBoxOf(b.first, b.second, hx, hy);
    if (!detail::BoxesMeet(box_a, box_b)) {
        return 0;
    }
    const double rounding = GreatestMagnitude(box_a, box_b) * 0x1p-46;
    const Offsets of_b(a, b, hx, hy, rounding);
    if (of_b.AreClear()) {
        return 0;
    }
    const Offsets of_a(b, a, hx, hy, rounding);
    if (of_a.AreClear()) {
        return 0;
    }
    Touches touches;
    if (of_a.FirstMayTouch()) {
        touches.Test(a.first, b, precision);
    }
    if (of_a.SecondMayTouch()) {
        touches.Test(a.second, b, precision);
    }
    if (of_b.FirstMayTouch()) {
        touches.Test(b.first, a, precision);
    }
    if (of_b.SecondMayTouch()) {
        touches.Test(b.second, a, precision);
    }
    int code = Classify(touches, a, b, precision, p0, p1);
    if (code < 2) {
        Point2D crossing;
        if (ParametricCrossing(a, b, precision, crossing)) {
            code = 1;
            p0 = crossing;
        }
        p1 = kInvalidPoint;
    }
    if (code == 0) {
        p0 = kInvalidPoint;
    }
    return code;
}

Point2D LineIntersectionPoint2D(const Point2D& a0, const Point2D& a1, const Point2D& b0,
                                const Point2D& b1, const Precision3D& precision,
                                IntersectionType type) noexcept {
    Point2D p0;
    Point2D p1;
    const int code = LineIntersection2D(p0, p1, a0, a1, b0, b1, precision);
    return code == 2 && type == IntersectionType::kNoOverlapPoint ? kInvalidPoint : p0;
}

bool LineIsCrossing2D(const Point2D& a0, const Point2D& a1, const Point2D& b0, const Point2D& b1,
                      const Precision3D& precision) noexcept {
    Point2D p0;
    Point2D p1;
    return LineIntersection2D(p0, p1, a0, a1, b0, b1, precision) == 1 &&
           !detail::IsEndOf(p0, {a0, a1}, precision) && !detail::IsEndOf(p0, {b0, b1}, precision);
}

Point2D LineCollision2D(const Point2D& a0, const Point2D& a1, const Point2D& b0, const Point2D& b1,
                        const Precision3D& precision) noexcept {
    Point2D p0;
    Point2D p1;
    const int code = LineIntersection2D(p0, p1, a0, a1, b0, b1, precision);
    const auto end_of_both = [&](const Point2D& p) {
        return detail::IsEndOf(p, {a0, a1}, precision) && detail::IsEndOf(p, {b0, b1}, precision);
    };
    if (code == 1) {
        return end_of_both(p0) ? kInvalidPoint : p0;
    }
    if (code == 2) {
        return end_of_both(p0) && !end_of_both(p1) ? p1 : p0;
    }
    return kInvalidPoint;
}

Point2D InfLineIntersection2D(const Point2D& a0, const Point2D& a1, const Point2D& b0,
                              const Point2D& b1, const Precision3D& precision) noexcept {
    if (IsEqual2D(a0, a1, precision) || IsEqual2D(b0, b1, precision)) {
        return kInvalidPoint;
    }
    const Point2D da = detail::Minus(a1, a0);
    const Point2D db = detail::Minus(b1, b0);
    const double d = detail::Cross(da, db);
    if (d == 0.0) {
        return kInvalidPoint;
    }
    const Point2D crossing = detail::Along(a0, da, detail::Cross(detail::Minus(b0, a0), db) / d);
    return std::isfinite(crossing.x) && std::isfinite(crossing.y) ? crossing : kInvalidPoint;
}

}  // namespace Geom
