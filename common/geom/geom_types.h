#pragma once

// The value types of planar geometry: points, lines, circles, extents, and the small enumerations
// that select what a function does. Comparisons are in precision.h: these types have none of their
// own, because "the same point" only has a meaning under a tolerance. Surprising: a default point
// is not the origin but the invalid point, which is how every function of this folder says "there
// is none".

#include "common/undefined.h"

#include <cstdint>

namespace Geom {

/// A point in the length unit of the caller. Default: the invalid point, both coordinates the
/// undefined value; functions return it where a result does not exist.
struct Point2D {
    double x = lmw::kUndefined;
    double y = lmw::kUndefined;

    /// True unless both coordinates are the undefined value. Exact: no tolerance can make a point
    /// invalid, and NaN and the infinities are valid.
    [[nodiscard]] constexpr bool IsValid() const noexcept {
        return lmw::IsDefined(x) || lmw::IsDefined(y);
    }
};

/// The invalid point by name.
inline constexpr Point2D kInvalidPoint{};

/// A point in space. Default: all three coordinates the undefined value.
struct Point3D {
    double x = lmw::kUndefined;
    double y = lmw::kUndefined;
    double z = lmw::kUndefined;
};

/// A segment, or the infinite line through its two points where a function says so. Default: both
/// points invalid.
struct Line2D {
    Point2D first;
    Point2D second;
};

/// A circle; the radius in the length unit of the centre.
struct Circle2D {
    Point2D centre;
    double radius = 0.0;
};

/// An upright box. Default: the empty extents (+largest, -largest, +largest, -largest), which grow
/// to whatever is included first.
struct Extents2D {
    double x_min = lmw::kUndefined;
    double x_max = -lmw::kUndefined;
    double y_min = lmw::kUndefined;
    double y_max = -lmw::kUndefined;

    /// True when an axis has no value at all (minimum above maximum).
    [[nodiscard]] constexpr bool IsEmpty() const noexcept { return x_min > x_max || y_min > y_max; }
};

/// Extents2D with a z range.
struct Extents3D {
    double x_min = lmw::kUndefined;
    double x_max = -lmw::kUndefined;
    double y_min = lmw::kUndefined;
    double y_max = -lmw::kUndefined;
    double z_min = lmw::kUndefined;
    double z_max = -lmw::kUndefined;
};

/// Result of a turn test. By design: a left turn is -1, against the sign of the cross product;
/// stored turn codes and the callers' comparisons with zero depend on it.
enum class TurnOrientation : std::int32_t {
    kCounterClockwise = -1,  ///< left turn
    kCollinear = 0,          ///< within tolerance
    kClockwise = 1,          ///< right turn
};

/// What LineIntersectionPoint2D gives for overlapping segments.
enum class IntersectionType : std::int32_t {
    kNoOverlapPoint = 0,   ///< the invalid point
    kFirstOverlapEnd = 1,  ///< the first end of the overlap (so does any other non-zero value)
};

/// What LineClosestPoint2D does when the perpendicular foot falls outside the segment.
struct NonPerpendicularMode {
    enum Type : std::int32_t {
        kNearerEnd = 0,  ///< the nearer end (so does any other value but 1)
        kNone = 1,       ///< no point: the invalid one
    };
};

}  // namespace Geom
