#pragma once

// Where two segments meet: the pair test that every other question about meetings is built on. For
// whole sets of segments use line_events.h, which applies exactly this test to the pairs that can
// meet. Surprising: an end that touches another segment's interior is reported at the computed
// crossing, not at the end, unless the end stops short of it.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

namespace Geom {

/// Where segments a0-a1 and b0-b1 meet: 0 nowhere (p0 and p1 invalid), 1 in p0 (p1 invalid), 2
/// along the stretch from p0 to p1.
///
/// Boxes widened by the half-epsilons must meet. Then the ends that touch the other segment are
/// collected (a0, a1, b0, b1 in this order), and for codes 0 and 1 the parametric crossing is
/// computed; where it exists it replaces the touch.
///
/// 1. Whatever is reported lies on both segments within tolerance, and within the rounding of the
///    coordinates. The sweep's completeness rests on this.
/// 2. Collinear segments that share one end and point apart give code 1 at that end; overlapping
///    ones code 2 with ends of the overlap.
/// 3. By design: a segment of zero length inside another gives code 2 with p0 = p1, because it
///    touches with its interior slot and its list. Callers tell such a segment from a crossing by
///    the code.
/// 4. By design: an interior touch beside a second touch is code 2 only for collinear segments; for
///    others the crossing decides between 1 and 0. Reporting the touches instead would turn shallow
///    crossings into overlaps.
///
/// Allocates nothing. NaN coordinates meet nothing.
[[nodiscard]] LMW_API int LineIntersection2D(Point2D& p0, Point2D& p1, const Point2D& a0,
                                             const Point2D& a1, const Point2D& b0,
                                             const Point2D& b1,
                                             const Precision3D& precision) noexcept;

/// The first point of LineIntersection2D, or the invalid point where there is none; for overlapping
/// segments the first overlap end, but the invalid point with kNoOverlapPoint.
[[nodiscard]] LMW_API Point2D LineIntersectionPoint2D(const Point2D& a0, const Point2D& a1,
                                                      const Point2D& b0, const Point2D& b1,
                                                      const Precision3D& precision,
                                                      IntersectionType type) noexcept;

/// True when the segments meet in one point that equals none of the four ends.
[[nodiscard]] LMW_API bool LineIsCrossing2D(const Point2D& a0, const Point2D& a1, const Point2D& b0,
                                            const Point2D& b1,
                                            const Precision3D& precision) noexcept;

/// The point in which the segments collide: a meeting point that is not an end of both.
/// The invalid point for code 0, and for code 1 in a point that is an end of both; for an overlap
/// the first of its two ends that is not an end of both, else the first.
[[nodiscard]] LMW_API Point2D LineCollision2D(const Point2D& a0, const Point2D& a1,
                                              const Point2D& b0, const Point2D& b1,
                                              const Precision3D& precision) noexcept;

/// The crossing of the infinite lines through a0, a1 and b0, b1; the invalid point for parallel
/// lines, for a line whose points are equal, and where the crossing is not finite.
[[nodiscard]] LMW_API Point2D InfLineIntersection2D(const Point2D& a0, const Point2D& a1,
                                                    const Point2D& b0, const Point2D& b1,
                                                    const Precision3D& precision) noexcept;

}  // namespace Geom
