#pragma once

// Which pairs count for each of the four questions, and with which points.

#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <cstdint>

namespace Geom::detail {

enum class PairKind : std::uint8_t { kIntersection, kCoincident, kCrossing, kCollision };

/// The points to report; an invalid one is not.
struct PairPoints {
    Point2D p0;
    Point2D p1;
};

/// Whether the pair counts; `points` is set only then.
[[nodiscard]] bool PairCounts(PairKind kind, const Line2D& a, const Line2D& b,
                              const Precision3D& precision, PairPoints& points) noexcept;

}  // namespace Geom::detail
