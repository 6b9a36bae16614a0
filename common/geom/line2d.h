#pragma once

// One segment and points: normal order, closest point, containment, y at a given x. Two segments
// are in line_intersection.h. Surprising: tolerance is a box per axis around the point, not a
// distance, so a slanted segment "contains" points a little farther away than an upright one does.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <utility>

namespace Geom {

/// The line with its ends in tolerant order: (a, b) when a is before b, else (b, a).
/// By design: two equal points come back swapped, (b, a). Line identity across the library compares
/// lines built this way; "mending" it would reorder every stored zero-length line.
inline Line2D LineGet2D(const Point2D& a, const Point2D& b, const Precision3D& precision) noexcept {
    return detail::Before(a, b, precision.halfEpsilon[0], precision.halfEpsilon[1]) ? Line2D{a, b}
                                                                                    : Line2D{b, a};
}

/// The point of segment a-b closest to p.
///
/// Tested in this order: p equal to a gives a; p equal to b gives b; a equal to b gives a; else the
/// perpendicular foot where it falls on the segment. Where it falls outside, mode 1 gives the
/// invalid point and every other mode the nearer end.
///
/// 1. The order decides where several hold: an end that p equals wins over the degenerate segment,
///    a over b.
/// 2. The result is a, b, or a + t (b - a) with t in [0, 1]; it never leaves the segment.
[[nodiscard]] LMW_API Point2D LineClosestPoint2D(const Point2D& a, const Point2D& b,
                                                 const Point2D& p, NonPerpendicularMode::Type mode,
                                                 const Precision3D& precision) noexcept;

/// The perpendicular foot of p on the infinite line through a and b; a when a equals b.
[[nodiscard]] LMW_API Point2D InfLineClosestPoint2D(const Point2D& a, const Point2D& b,
                                                    const Point2D& p,
                                                    const Precision3D& precision) noexcept;

/// Whether p lies on segment a-b: within the bounding box widened by the half-epsilons, and equal
/// to its closest point of the segment (mode 1).
/// 1. A degenerate segment contains only what equals its ends.
[[nodiscard]] LMW_API bool LineContainsPoint2D(const Point2D& a, const Point2D& b, const Point2D& p,
                                               const Precision3D& precision) noexcept;

/// The lowest and the highest y of segment a-b at `x`: twice the same on a slanted segment, the
/// whole range on a vertical one (ends of equal x). Both undefined when x lies beyond the ends by
/// more than the half-epsilon; within it, the end's y.
[[nodiscard]] LMW_API std::pair<double, double> LineGetY2D(const Point2D& a, const Point2D& b,
                                                           double x,
                                                           const Precision3D& precision) noexcept;

}  // namespace Geom
