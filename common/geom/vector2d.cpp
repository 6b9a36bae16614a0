#include "common/geom/vector2d.h"

#include "common/geom/detail/segment_math.h"
#include "common/geom/line2d.h"

#include <cmath>

namespace Geom {

namespace {

constexpr double kFullTurn = 6.283185307179586;

struct Side {
    Line2D line;
    Point2D opposite;
    double squared_length = 0.0;
};

/// Ends in one order whichever way the side is walked, so that the longest side and the containment
/// do not depend on which point is passed first. Exact order: the tolerant one leaves equal points
/// in the caller's order.
Side MakeSide(const Point2D& p, const Point2D& q, const Point2D& opposite,
              const Precision3D& precision) noexcept {
    const bool ordered = p.x < q.x || (p.x == q.x && p.y <= q.y);
    const Line2D line = ordered ? LineGet2D(p, q, precision) : LineGet2D(q, p, precision);
    return {line, opposite, detail::SquaredLength(line.first, line.second)};
}

/// Longest first; among equally long ones by position, for the same reason.
bool IsLonger(const Side& a, const Side& b) noexcept {
    if (a.squared_length != b.squared_length) {
        return a.squared_length > b.squared_length;
    }
    if (a.opposite.x != b.opposite.x) {
        return a.opposite.x < b.opposite.x;
    }
    return a.opposite.y < b.opposite.y;
}

double InFullTurn(double angle) noexcept {
    const double positive = angle < 0.0 ? angle + kFullTurn : angle;
    return positive < kFullTurn ? positive : 0.0;  // a tiny negative angle rounds to a full turn
}

}  // namespace

TurnOrientation VectorTurn2D(const Point2D& o, const Point2D& a, const Point2D& b,
                             const Precision3D& precision) noexcept {
    Side longest = MakeSide(o, a, b, precision);
    for (const Side& side : {MakeSide(a, b, o, precision), MakeSide(b, o, a, precision)}) {
        if (IsLonger(side, longest)) {
            longest = side;
        }
    }
    if (LineContainsPoint2D(longest.line.first, longest.line.second, longest.opposite, precision)) {
        return TurnOrientation::kCollinear;
    }
    // By design: a left turn is -1. Callers compare turn codes with stored ones.
    return detail::Cross(detail::Minus(a, o), detail::Minus(b, o)) > 0.0
               ? TurnOrientation::kCounterClockwise
               : TurnOrientation::kClockwise;
}

double VectorAngle2D(const Point2D& from, const Point2D& to) noexcept {
    return InFullTurn(std::atan2(to.y - from.y, to.x - from.x));
}

double VectorAngle2D(const Point2D& o, const Point2D& a, const Point2D& b) noexcept {
    const Point2D u = detail::Minus(a, o);
    const Point2D v = detail::Minus(b, o);
    return InFullTurn(std::atan2(detail::Cross(u, v), detail::Dot(u, v)));
}

double VectorAbsAngle2D(const Point2D& o, const Point2D& a, const Point2D& b) noexcept {
    const Point2D u = detail::Minus(a, o);
    const Point2D v = detail::Minus(b, o);
    return std::fabs(std::atan2(detail::Cross(u, v), detail::Dot(u, v)));
}

Point2D VectorRotate2D(const Point2D& p, const Point2D& centre, double angle) noexcept {
    if (!p.IsValid()) {
        return p;
    }
    const Point2D d = detail::Minus(p, centre);
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {centre.x + (c * d.x - s * d.y), centre.y + (s * d.x + c * d.y)};
}

double TriArea2x2D(const Point2D& a, const Point2D& b, const Point2D& c) noexcept {
    return detail::Cross(detail::Minus(b, a), detail::Minus(c, a));
}

double TriArea2D(const Point2D& a, const Point2D& b, const Point2D& c) noexcept {
    return 0.5 * TriArea2x2D(a, b, c);
}

}  // namespace Geom
