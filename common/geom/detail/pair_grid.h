#pragma once

// The cheap way to the pairs that can meet: a grid over the boxes of the segments, turned into
// their common direction where they have one. It is complete as the sweep is, because every meeting
// pair has meeting boxes; only its cost is not guaranteed, so it watches its own work and gives up.

#include "common/geom/detail/segment_math.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace Geom::detail {

/// The grid over the `used` lines, whose coordinates are below 1e300. It refers to `boxes` and
/// `used`, which must outlive it.
class PairGrid {
 public:
    PairGrid(const std::vector<Line2D>& lines, const std::vector<WideBox>& boxes,
             std::span<const std::uint32_t> used, const Precision3D& precision);

    /// Calls `visit(i, j)` once for every pair i < j of input positions whose boxes meet, and some
    /// whose boxes nearly do, in no particular order; `visit` tells whether the pair counted. False
    /// when the work exceeds a constant times lines plus pairs that counted: the visits then were
    /// not all.
    template <class Visit>
    [[nodiscard]] bool ForPairs(const Visit& visit) const {
        std::size_t budget = kTestsPerLine * used_.size();
        for (std::uint32_t cell = 0; cell + 1 < begin_.size(); ++cell) {
            const std::uint32_t begin = begin_[cell];
            const std::uint32_t end = begin_[cell + 1];
            for (std::uint32_t k = begin; k < end; ++k) {
                const std::size_t tests = end - k - 1;
                if (tests > budget) {
                    return false;
                }
                budget -= tests;
                budget += kTestsPerMeeting * VisitFrom(k, end, visit);
            }
        }
        return complete_;
    }

 private:
    static constexpr std::size_t kTestsPerLine = 64;
    static constexpr std::size_t kTestsPerMeeting = 8;
    static constexpr std::size_t kEntriesPerLine = 8;

    /// A box in the grid's frame, in cells from the corner of the range. Whatever meets exactly
    /// also meets when rounded to float, because rounding is monotone.
    struct CellBox {
        float u_min;
        float u_max;
        float v_min;
        float v_max;
    };
    /// A segment in a cell. Small, because filling writes entries to places all over the memory.
    struct Entry {
        CellBox box;
        std::uint32_t position;  // in the input
        std::uint32_t begins;    // kFirstColumn, kFirstRow: whether the cell is in the box's first
    };
    static constexpr std::uint32_t kFirstColumn = 1;
    static constexpr std::uint32_t kFirstRow = 2;
    struct CellRange {
        std::uint32_t u0;
        std::uint32_t u1;
        std::uint32_t v0;
        std::uint32_t v1;
    };

    void ChooseFrame(const std::vector<Line2D>& lines);
    void TurnBoxes(const std::vector<Line2D>& lines, const Precision3D& precision);
    void ChooseCells();
    void Fill();
    [[nodiscard]] const WideBox& FrameBox(std::size_t k) const noexcept {
        return turned_boxes_.empty() ? boxes_[used_[k]] : turned_boxes_[k];
    }
    [[nodiscard]] CellBox CellBoxOf(const WideBox& box) const noexcept;
    [[nodiscard]] CellRange CellsOf(const CellBox& box) const noexcept;

    /// Written as BoxesMeet is.
    static bool Meet(const CellBox& a, const CellBox& b) noexcept {
        return static_cast<bool>(
            static_cast<unsigned>(a.u_min <= b.u_max) & static_cast<unsigned>(b.u_min <= a.u_max) &
            static_cast<unsigned>(a.v_min <= b.v_max) & static_cast<unsigned>(b.v_min <= a.v_max));
    }

    /// The pairs of entry k with the later ones of its cell. A pair that shares several cells
    /// belongs to the first of them, in which a box of the two begins on either axis.
    template <class Visit>
    std::size_t VisitFrom(std::uint32_t k, std::uint32_t end, const Visit& visit) const {
        const Entry& a = entries_[k];
        std::size_t counted = 0;
        for (std::uint32_t l = k + 1; l < end; ++l) {
            const Entry& b = entries_[l];
            if (Meet(a.box, b.box) && (a.begins | b.begins) == (kFirstColumn | kFirstRow)) {
                counted += visit(a.position, b.position) ? 1U : 0U;
            }
        }
        return counted;
    }

    std::span<const WideBox> boxes_;
    std::span<const std::uint32_t> used_;
    double cosine_ = 1.0;
    double sine_ = 0.0;
    std::vector<WideBox> turned_boxes_;  // of the used lines; empty where the frame is not turned
    WideBox range_{};
    std::uint32_t columns_ = 1;
    std::uint32_t rows_ = 1;
    double cells_per_u_ = 0.0;
    double cells_per_v_ = 0.0;
    std::vector<std::uint32_t> begin_;  // of each cell's entries
    std::unique_ptr<Entry[]> entries_;
    bool complete_ = false;
};

}  // namespace Geom::detail
