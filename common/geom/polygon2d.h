#pragma once

// One polygon: orientation, area, centre of mass, containment, side of a line. Edges of many
// polygons are in polygon_line_entry.h. A polygon is a row of points; the first one may be repeated
// at the end or not, both mean the same closed ring.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <vector>

namespace Geom {

/// Whether the ring runs counter-clockwise (positive signed area).
[[nodiscard]] LMW_API bool PolygonIsCCW2D(const std::vector<Point2D>& polygon) noexcept;

/// The area without sign, in the square of the length unit.
[[nodiscard]] LMW_API double PolygonArea2D(const std::vector<Point2D>& polygon) noexcept;

/// The centre of mass of the area; the invalid point for a ring without area.
[[nodiscard]] LMW_API Point2D PolygonCentreOfMass2D(const std::vector<Point2D>& polygon) noexcept;

/// Whether p lies inside (even-odd rule) or within tolerance on the boundary.
[[nodiscard]] LMW_API bool PolygonContainsPoint2D(const std::vector<Point2D>& polygon,
                                                  const Point2D& p,
                                                  const Precision3D& precision) noexcept;

/// On which side of the infinite line from a to b the polygon lies: -1 when no point lies to the
/// right (all left), +1 when no point lies to the left (all right), 0 when the line runs through.
/// Points within tolerance of the line are on neither side; a polygon with no other points gives 0.
[[nodiscard]] LMW_API int PolygonSideOfVector2D(const std::vector<Point2D>& polygon,
                                                const Point2D& a, const Point2D& b,
                                                const Precision3D& precision) noexcept;

}  // namespace Geom
