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

/// Points numbered from 0 in order of insertion. Cells are sixteen half-epsilons wide on each
/// axis, at least: whatever equals p lies in a cell of p +- h (1 + 1e-6), which are rarely more
/// than one. (Cells as narrow as two half-epsilons would lose points that lie two cells away.)
/// Infinite and NaN coordinates are accepted; NaN equals nothing.
class PointGrid {
 public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFU;

    /// Has room for the expected points; more may come.
    explicit PointGrid(const Precision3D& precision, std::size_t expected_points = 0);

    /// Number of the first stored point equal to p, or kNone.
    [[nodiscard]] std::uint32_t Find(const Point2D& p) const;
    /// The same; p is stored when there is none.
    std::uint32_t Insert(const Point2D& p);

    [[nodiscard]] const std::vector<Point2D>& Points() const noexcept { return points_; }

 private:
    struct Axis {
        explicit Axis(double half_epsilon);
        [[nodiscard]] std::int64_t Cell(double v) const noexcept;

        double half_epsilon;
        double reach;  // half_epsilon (1 + 1e-6): no rounding of a tolerant comparison gets farther
        double inverse;  // 1 / cell width; 0 when everything is one cell
    };
    /// A chain of points by the hash of their cell. Cells of equal tag share a chain, which costs
    /// time only: every point of a chain is compared.
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t newest = kNone;
    };
    /// The first stored point equal to a given one, or kNone, and where that one's own cell is.
    struct Place {
        std::uint32_t found;
        std::uint64_t hash;
        std::size_t slot;
    };

    [[nodiscard]] static std::uint64_t Hash(std::int64_t cell_x, std::int64_t cell_y) noexcept;
    [[nodiscard]] std::size_t SlotOf(std::uint64_t hash) const noexcept;
    [[nodiscard]] std::uint32_t LowestInChain(std::size_t slot, const Point2D& p,
                                              std::uint32_t best) const noexcept;
    [[nodiscard]] Place Locate(const Point2D& p) const noexcept;
    void Link(std::uint32_t number, std::uint64_t hash, std::size_t slot);
    void Rehash(std::size_t slot_count);

    Axis x_;
    Axis y_;
    std::vector<Point2D> points_;
    std::vector<std::uint32_t> older_;  // the next point of the same chain
    std::vector<Slot> slots_;           // open addressing, a power of two, at most half full
    std::size_t used_slots_ = 0;
};

}  // namespace Geom::detail
