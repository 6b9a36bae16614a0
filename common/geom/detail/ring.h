#pragma once

// Tests on a row of points, shared by polygons held in vectors and items held in an index's pool.

#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <cstddef>

namespace Geom::detail {

/// A row of points that someone else holds.
struct PointRow {
    const Point2D* points;
    std::size_t count;
};

/// Whether p lies strictly inside the closed ring, by the even-odd rule; on the boundary either
/// answer is possible.
[[nodiscard]] bool RingEncloses(PointRow ring, const Point2D& p) noexcept;

/// Whether p lies within tolerance on one of the segments between consecutive points, or on the
/// point itself where there is only one.
[[nodiscard]] bool RowTouches(PointRow row, const Point2D& p,
                              const Precision3D& precision) noexcept;

}  // namespace Geom::detail
