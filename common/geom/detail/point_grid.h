#pragma once

// The hash grid beneath the geometry database: points in the order of first coming, and the search
// for the first one equal to a given point. Concrete and without virtual calls, because the event
// functions ask it once per meeting.

#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Geom::detail {

/// Points numbered from 0 in order of insertion. Cells are eight half-epsilons wide on each axis,
/// at least: whatever equals p lies in a cell of p +- h (1 + 1e-6), which are rarely more than one.
/// (Cells as narrow as two half-epsilons would lose points that lie two cells away.) Infinite and
/// NaN coordinates are accepted; NaN equals nothing.
class PointGrid {
 public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;

    explicit PointGrid(const Precision3D& precision);

    void Reserve(std::size_t points);

    /// Number of the first stored point equal to p, or kNone.
    [[nodiscard]] std::uint32_t Find(const Point2D& p) const;
    /// The same; p is stored when there is none.
    std::uint32_t Insert(const Point2D& p);

    [[nodiscard]] const std::vector<Point2D>& Points() const noexcept { return points_; }

 private:
    struct Axis {
        explicit Axis(double half_epsilon);
        [[nodiscard]] double Cell(double v) const noexcept;

        double half_epsilon;
        double reach;  // half_epsilon (1 + 1e-6): no rounding of a tolerant comparison gets farther
        double inverse;  // 1 / cell width; 0 when everything is one cell
    };
    struct Slot {
        std::uint32_t first = kNone;  // lowest number in the cell; the cell is that of this point
        std::uint32_t last = kNone;
    };

    [[nodiscard]] std::size_t SlotOf(double cell_x, double cell_y) const noexcept;
    [[nodiscard]] std::uint32_t LowestInCell(double cell_x, double cell_y, const Point2D& p,
                                             std::uint32_t best) const noexcept;
    void Link(std::uint32_t number);
    void Grow();

    Axis x_;
    Axis y_;
    std::vector<Point2D> points_;
    std::vector<Point2D> cells_;       // the cell of each point
    std::vector<std::uint32_t> next_;  // next point of the same cell, ascending
    std::vector<Slot> slots_;          // open addressing, a power of two, at most half full
    std::size_t used_slots_ = 0;
};

}  // namespace Geom::detail
