#pragma once

// What the line sweep sweeps: the segments rounded to integer coordinates, and a short horizontal
// feeler at every end. With integers every orientation is exact, and with feelers every contact
// within tolerance becomes a crossing or a neighbourhood of items, which an exact sweep cannot
// miss.

#include "common/geom/detail/int128.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"
#include "common/geom/sweep_event.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Geom::detail {

/// A segment or feeler in sweep units, (x0, y0) lexicographically not after (x1, y1).
struct SweepItem {
    std::int64_t x0;
    std::int64_t y0;
    std::int64_t x1;
    std::int64_t y1;

    [[nodiscard]] bool IsVertical() const noexcept { return x0 == x1; }

    /// +1 when (x, y) lies above the line through the item, 0 on it, -1 below. Not for vertical
    /// items.
    [[nodiscard]] int Side(std::int64_t x, std::int64_t y) const noexcept {
        return (Int128::Product(x1 - x0, y - y0) - Int128::Product(y1 - y0, x - x0)).Sign();
    }
};

/// The items of a set of lines and their end events.
///
/// One sweep unit is, per axis, the greatest of an eighth of the half-epsilon, 2^-34 of the range
/// and 2^-50 of the greatest magnitude. Coordinates stay below 2^35, and what the pair test accepts
/// lies, after rounding, within Tolerance() units on each axis: 8 for the half-epsilon, 2 for the
/// rounding of the pair test itself (four units in the last place on each of the segments, 2^-50 of
/// the magnitude together), 1 for the rounding of the ends, the rest is reserve.
class SweepItems {
 public:
    /// `used` are the positions in `lines` that take part; their coordinates are below 1e300.
    SweepItems(const std::vector<Line2D>& lines, std::span<const std::uint32_t> used,
               const Precision3D& precision);

    /// Segments first, in the order of `used`; then the feelers.
    [[nodiscard]] const std::vector<SweepItem>& Items() const noexcept { return items_; }
    [[nodiscard]] std::size_t SegmentCount() const noexcept { return segment_count_; }
    [[nodiscard]] bool IsFeeler(std::uint32_t item) const noexcept {
        return item >= segment_count_;
    }

    /// The segments that end at the feeler's centre.
    [[nodiscard]] std::span<const std::uint32_t> OwnersOf(std::uint32_t feeler) const noexcept {
        const std::size_t point = feeler - segment_count_;
        return {owners_.data() + owners_begin_[point], owners_.data() + owners_begin_[point + 1]};
    }
    /// Whether the segment ends at the feeler's centre.
    [[nodiscard]] bool Owns(std::uint32_t segment, std::uint32_t feeler) const noexcept {
        const std::uint32_t point = feeler - static_cast<std::uint32_t>(segment_count_);
        return ends_[segment].first == point || ends_[segment].second == point;
    }

    /// The end events of all items, in the order of the queue.
    [[nodiscard]] std::vector<impl::SweepEvent> Events() const;

    /// How far apart, in units on each axis, two segments that meet may lie after rounding.
    [[nodiscard]] std::int64_t Tolerance() const noexcept { return tolerance_; }
    /// How far above and below a feeler's start the sweep has to look.
    [[nodiscard]] std::int64_t Reach() const noexcept { return HalfLength() + 2 * tolerance_ + 2; }

 private:
    struct EndPoints {
        std::uint32_t first = 0;
        std::uint32_t second = 0;
    };
    struct RoundedEnd {
        std::int64_t x;
        std::int64_t y;
        std::uint32_t segment;
        bool second;
    };

    [[nodiscard]] std::int64_t HalfLength() const noexcept { return 2 * tolerance_ + 2; }
    [[nodiscard]] std::vector<RoundedEnd> RoundEnds(const std::vector<Line2D>& lines,
                                                    std::span<const std::uint32_t> used,
                                                    const Precision3D& precision);

    std::vector<SweepItem> items_;
    std::size_t segment_count_;
    std::int64_t tolerance_ = 0;
    std::vector<EndPoints> ends_;              // of each segment, as numbers of distinct points
    std::vector<std::uint32_t> owners_;        // segments by distinct point
    std::vector<std::uint32_t> owners_begin_;  // one more than points
};

}  // namespace Geom::detail
