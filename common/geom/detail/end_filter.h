#pragma once

// Which ends of segments can matter for what some points snap to. Few meetings among many segments
// lie far from most ends; leaving those out of the snapping saves most of its time and cannot
// change what it answers.

#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace Geom::detail {

/// A coarse grid of marked cells around points.
///
/// What a point snaps to depends on the ends equal to it, whether these are stored depends on the
/// ends equal to them, and so on along a chain. CloseOver follows the chains; after it every end of
/// a chain that reaches one of the points lies in a marked cell. Ends in marked cells that belong
/// to no such chain do no harm: they equal none of the points.
class EndFilter {
 public:
    /// Cells for about `points` points within `extents`; what lies outside belongs to the edge.
    EndFilter(const Extents2D& extents, std::size_t points, const Precision3D& precision);

    /// Marks every cell in which an equal point can lie; true when one of them was not marked.
    bool MarkAround(const Point2D& p);

    [[nodiscard]] bool Contains(const Point2D& p) const noexcept {
        const std::size_t cell = CellAt(x_.Cell(p.x), y_.Cell(p.y));
        return (marked_[cell / 64] >> (cell % 64) & 1U) != 0;
    }

    /// Marks around the ends in marked cells until nothing changes, and returns these ends in the
    /// order of the lines; nothing when that takes too long. Lines with an invalid end are left
    /// out.
    [[nodiscard]] std::optional<std::vector<Point2D>> CloseOver(const std::vector<Line2D>& lines);

 private:
    struct Axis {
        double low;
        double reach;    // how far away an equal coordinate can lie
        double inverse;  // 1 / cell width, at least four reaches wide
        double last;     // the number of the last cell

        /// Monotone, which is what completeness needs; the first cell for what is not a number,
        /// to which max prefers its first argument.
        [[nodiscard]] std::uint32_t Cell(double v) const noexcept {
            return static_cast<std::uint32_t>(std::min(last, std::max(0.0, (v - low) * inverse)));
        }
    };

    [[nodiscard]] static Axis MakeAxis(double low, double high, double half_epsilon,
                                       std::size_t side) noexcept;
    [[nodiscard]] std::size_t CellAt(std::uint32_t ix, std::uint32_t iy) const noexcept {
        return ix * side_ + iy;
    }

    std::size_t side_;
    Axis x_;
    Axis y_;
    std::vector<std::uint64_t> marked_;  // a bit for each cell
};

}  // namespace Geom::detail
