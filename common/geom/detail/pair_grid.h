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
#include <span>
#include <vector>

namespace Geom::detail {

/// The grid over the `used` lines, whose coordinates are below 1e300.
class PairGrid {
 public:
    PairGrid(const std::vector<Line2D>& lines, const std::vector<WideBox>& boxes,
             std::span<const std::uint32_t> used, const Precision3D& precision);

    /// Calls `visit(i, j)` once for every pair i < j of input positions whose boxes meet, in no
    /// particular order; `visit` tells whether the pair counted. False when the work exceeds a
    /// constant times lines plus pairs that counted: the visits then were not all.
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
                budget += kTestsPerMeeting * VisitFrom(cell, k, end, visit);
            }
        }
        return complete_;
    }

 private:
    static constexpr std::size_t kTestsPerLine = 64;
    static constexpr std::size_t kTestsPerMeeting = 8;
    static constexpr std::size_t kEntriesPerLine = 8;

    /// A segment in a cell: its box and the first cell of it, in the grid's frame.
    struct Entry {
        WideBox box;
        std::uint32_t position;  // in the input
        std::uint32_t first_cell_u;
        std::uint32_t first_cell_v;
    };
    struct CellRange {
        std::uint32_t u0;
        std::uint32_t u1;
        std::uint32_t v0;
        std::uint32_t v1;
    };

    void ChooseFrame(const std::vector<Line2D>& lines);
    void FrameBoxes(const std::vector<Line2D>& lines, const std::vector<WideBox>& boxes,
                    const Precision3D& precision);
    void ChooseCells();
    void Fill();
    [[nodiscard]] CellRange CellsOf(const WideBox& box) const noexcept;

    /// The pairs of entry k with the later ones of its cell. A pair that shares several cells
    /// belongs to the first of them.
    template <class Visit>
    std::size_t VisitFrom(std::uint32_t cell, std::uint32_t k, std::uint32_t end,
                          const Visit& visit) const {
        const Entry& a = entries_[k];
        std::size_t counted = 0;
        for (std::uint32_t l = k + 1; l < end; ++l) {
            const Entry& b = entries_[l];
            if (BoxesMeet(a.box, b.box) && std::max(a.first_cell_v, b.first_cell_v) * columns_ +
                                                   std::max(a.first_cell_u, b.first_cell_u) ==
                                               cell) {
                counted += visit(a.position, b.position) ? 1U : 0U;
            }
        }
        return counted;
    }

    std::span<const std::uint32_t> used_;
    double cosine_ = 1.0;
    double sine_ = 0.0;
    std::vector<WideBox> frame_boxes_;
    WideBox range_{};
    std::uint32_t columns_ = 1;
    std::uint32_t rows_ = 1;
    double cells_per_u_ = 0.0;
    double cells_per_v_ = 0.0;
    std::vector<std::uint32_t> begin_;  // of each cell's entries
    std::vector<Entry> entries_;
    bool complete_ = false;
};

}  // namespace Geom::detail
