#pragma once

// Boxes: making, measuring and comparing them.
// Surprising: "intersected" is closed and tolerant (boxes that only touch, or miss by no more than
// the half-epsilon, are intersected), while "overlap" needs an area beyond tolerance.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <array>
#include <vector>

namespace Geom {

/// The smallest extents around what is given; invalid points are left out, and nothing valid gives
/// the empty extents.
[[nodiscard]] LMW_API Extents2D ExtentsOf(const std::vector<Point2D>& points) noexcept;
[[nodiscard]] LMW_API Extents2D ExtentsOf(const std::vector<Line2D>& lines) noexcept;
[[nodiscard]] LMW_API Extents2D ExtentsOf(const Line2D& line) noexcept;
[[nodiscard]] LMW_API Extents2D ExtentsOf(const Circle2D& circle) noexcept;

/// Whether the boxes meet when each gap may be the half-epsilon; empty extents meet nothing.
[[nodiscard]] LMW_API bool IsExtentsIntersected2D(const Extents2D& a, const Extents2D& b,
                                                  const Precision3D& precision) noexcept;

/// Whether the boxes share an area: more than the half-epsilon on both axes.
[[nodiscard]] LMW_API bool ExtentsOverlap2D(const Extents2D& a, const Extents2D& b,
                                            const Precision3D& precision) noexcept;

/// The common part, compared exactly; of disjoint extents the empty extents.
[[nodiscard]] LMW_API Extents2D ExtentsIntersection2D(const Extents2D& a,
                                                      const Extents2D& b) noexcept;

/// Counter-clockwise from (x min, y min).
[[nodiscard]] LMW_API std::array<Point2D, 4> CornerPointsOf(const Extents2D& extents) noexcept;

/// Sizes in the length unit of the coordinates; 0 for empty extents.
[[nodiscard]] LMW_API double WidthOf(const Extents2D& extents) noexcept;
[[nodiscard]] LMW_API double HeightOf(const Extents2D& extents) noexcept;

/// Width / height; undefined where the height is 0.
[[nodiscard]] LMW_API double AspectOf(const Extents2D& extents) noexcept;

}  // namespace Geom
