#pragma once

// Circles and lines.

#include "common/export.h"
#include "common/geom/fixed_vector.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

namespace Geom {

/// The points in which the infinite line through the two points of `line` meets the circle; `out`
/// is cleared first. With d the distance of the centre from the line and f its foot: one point, f,
/// when f equals within tolerance the circle's point in its direction (a tangent), none when d > r,
/// else f -+ sqrt((r - d)(r + d)) along the line, in its direction. A line of equal ends is a
/// point: it is given when it lies on the circle within tolerance.
LMW_API void CircleInfLineIntersection2D(fixed_vector<Point2D, 2>& out, const Circle2D& circle,
                                         const Line2D& line, const Precision3D& precision) noexcept;

/// Those of the infinite line's points that the segment contains within tolerance; nothing when its
/// widened bounding box misses that of the circle.
LMW_API void CircleLineIntersection2D(fixed_vector<Point2D, 2>& out, const Circle2D& circle,
                                      const Line2D& line, const Precision3D& precision) noexcept;

/// The circle's point at `angle` radians, counter-clockwise from the x axis: centre + r (cos, sin).
[[nodiscard]] LMW_API Point2D CircleEdgePoint2D(const Circle2D& circle, double angle) noexcept;

}  // namespace Geom
