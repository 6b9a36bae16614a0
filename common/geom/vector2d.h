#pragma once

// Turns, angles, rotation and triangle areas.
// Surprising: a left turn is -1 (see TurnOrientation), while angles grow counter-clockwise.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

namespace Geom {

/// The turn at o from a to b: collinear when the point opposite the longest of the three sides lies
/// on that side within tolerance, else the sign of the cross product (a - o) x (b - o), left being
/// -1.
/// 1. The collinear answer is the same for every order of the three points.
/// 2. Collinear by containment only: there is no threshold on the cross product, so scaling points
///    and tolerance together does not change the answer.
[[nodiscard]] LMW_API TurnOrientation VectorTurn2D(const Point2D& o, const Point2D& a,
                                                   const Point2D& b,
                                                   const Precision3D& precision) noexcept;

/// Direction from `from` to `to`, in radians counter-clockwise from the x axis, in [0, 2 pi); 0 for
/// a vector without length.
[[nodiscard]] LMW_API double VectorAngle2D(const Point2D& from, const Point2D& to) noexcept;

/// The angle at o from a to b, in radians counter-clockwise, in [0, 2 pi); 0 when one of the
/// vectors has no length.
[[nodiscard]] LMW_API double VectorAngle2D(const Point2D& o, const Point2D& a,
                                           const Point2D& b) noexcept;

/// The angle between the directions from o to a and to b, in radians without sense, in [0, pi].
[[nodiscard]] LMW_API double VectorAbsAngle2D(const Point2D& o, const Point2D& a,
                                              const Point2D& b) noexcept;

/// `p` turned about `centre` by `angle` radians counter-clockwise; the invalid point stays as it
/// is.
[[nodiscard]] LMW_API Point2D VectorRotate2D(const Point2D& p, const Point2D& centre,
                                             double angle) noexcept;

/// Twice the signed area of the triangle, positive when a, b, c run counter-clockwise.
[[nodiscard]] LMW_API double TriArea2x2D(const Point2D& a, const Point2D& b,
                                         const Point2D& c) noexcept;

/// Half of TriArea2x2D, signed likewise.
[[nodiscard]] LMW_API double TriArea2D(const Point2D& a, const Point2D& b,
                                       const Point2D& c) noexcept;

}  // namespace Geom
