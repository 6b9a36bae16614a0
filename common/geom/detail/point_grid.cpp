#include "common/geom/detail/point_grid.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace Geom::detail {

namespace {

constexpr std::size_t kSmallestTable = 16;

/// Calls `visit` for every cell from low to high: one or two, or three where rounding of the
/// quotient spreads them. Far beyond 2^53 cells neighbouring doubles lie many cells apart; then the
/// tolerance is below their spacing, and no other cell than the three can hold an equal point.
template <class Visit>
void ForCells(std::int64_t low, std::int64_t own, std::int64_t high, const Visit& visit) {
    visit(low);
    if (high == low) {
        return;
    }
    const std::int64_t between = high - low == 2 ? low + 1 : own;
    if (between != low && between != high) {
        visit(between);
    }
    visit(high);
}

}  // namespace

PointGrid::Axis::Axis(double h) : half_epsilon(h), reach(h * (1.0 + 1e-6)), inverse(0.0) {
    constexpr double kHalfEpsilonsPerCell = 16.0;
    constexpr double kNarrowestCell = 1e-300;  // keeps the inverse finite
    constexpr double kAllEqual = 1e300;        // an unset tolerance: one cell for everything
    if (h < kAllEqual) {
        inverse = 1.0 / std::max(h * kHalfEpsilonsPerCell, kNarrowestCell);
    }
}

/// The floor of the quotient. Monotone, which is what finding equal points needs: beyond the range
/// of integers everything is one cell, and so is what is not a number.
std::int64_t PointGrid::Axis::Cell(double v) const noexcept {
    constexpr double kFarthestCell = 0x1p61;
    const double quotient = v * inverse;
    if (!(std::fabs(quotient) < kFarthestCell)) {
        const auto farthest = static_cast<std::int64_t>(kFarthestCell);
        return quotient > 0.0 ? farthest : (quotient < 0.0 ? -farthest : 0);
    }
    const auto truncated = static_cast<std::int64_t>(quotient);
    return truncated - (static_cast<double>(truncated) > quotient ? 1 : 0);
}

PointGrid::PointGrid(const Precision3D& precision, std::size_t expected_points)
    : x_(precision.halfEpsilon[0]),
      y_(precision.halfEpsilon[1]),
      slots_(std::max(kSmallestTable, std::bit_ceil(2 * expected_points))) {
    points_.reserve(expected_points);
    older_.reserve(expected_points);
}

std::uint64_t PointGrid::Hash(std::int64_t cell_x, std::int64_t cell_y) noexcept {
    // Odd multipliers of the golden ratio and of xxHash (Collet), mixed so that all bits count.
    std::uint64_t hash = static_cast<std::uint64_t>(cell_x) * 0x9E3779B97F4A7C15ULL;
    hash = std::rotl(hash, 32) ^ (static_cast<std::uint64_t>(cell_y) * 0xC2B2AE3D27D4EB4FULL);
    hash ^= hash >> 29U;
    hash *= 0x165667B19E3779F9ULL;
    return hash ^ (hash >> 32U);
}

std::size_t PointGrid::SlotOf(std::uint64_t hash) const noexcept {
    const auto tag = static_cast<std::uint32_t>(hash >> 32U);
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = static_cast<std::size_t>(hash) & mask;
    while (slots_[slot].newest != kNone && slots_[slot].tag != tag) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

std::uint32_t PointGrid::LowestInChain(std::size_t slot, const Point2D& p,
                                       std::uint32_t best) const noexcept {
    for (std::uint32_t i = slots_[slot].newest; i != kNone; i = older_[i]) {
        if (i < best && Near(points_[i].x, p.x, x_.half_epsilon) &&
            Near(points_[i].y, p.y, y_.half_epsilon)) {
            best = i;
        }
    }
    return best;
}

PointGrid::Place PointGrid::Locate(const Point2D& p) const noexcept {
    const std::int64_t x_low = x_.Cell(p.x - x_.reach);
    const std::int64_t x_high = x_.Cell(p.x + x_.reach);
    const std::int64_t y_low = y_.Cell(p.y - y_.reach);
    const std::int64_t y_high = y_.Cell(p.y + y_.reach);
    if (x_low == x_high && y_low == y_high) {  // then it is the point's own cell
        const std::uint64_t hash = Hash(x_low, y_low);
        const std::size_t slot = SlotOf(hash);
        return {LowestInChain(slot, p, kNone), hash, slot};
    }
    std::uint32_t best = kNone;
    const std::int64_t x_own = x_.Cell(p.x);
    const std::int64_t y_own = y_.Cell(p.y);
    ForCells(x_low, x_own, x_high, [&](std::int64_t cell_x) {
        ForCells(y_low, y_own, y_high, [&](std::int64_t cell_y) {
            best = LowestInChain(SlotOf(Hash(cell_x, cell_y)), p, best);
        });
    });
    const std::uint64_t hash = Hash(x_own, y_own);
    return {best, hash, SlotOf(hash)};
}

std::uint32_t PointGrid::Find(const Point2D& p) const {
    return Locate(p).found;
}

std::uint32_t PointGrid::Insert(const Point2D& p) {
    const Place place = Locate(p);
    if (place.found != kNone) {
        return place.found;
    }
    const auto number = static_cast<std::uint32_t>(points_.size());
    points_.push_back(p);
    older_.push_back(kNone);
    if ((used_slots_ + 1) * 2 > slots_.size()) {
        Rehash(slots_.size() * 2);
    } else {
        Link(number, place.hash, place.slot);
    }
    return number;
}

void PointGrid::Link(std::uint32_t number, std::uint64_t hash, std::size_t place) {
    Slot& slot = slots_[place];
    if (slot.newest == kNone) {
        slot.tag = static_cast<std::uint32_t>(hash >> 32U);
        ++used_slots_;
    }
    older_[number] = slot.newest;
    slot.newest = number;
}

void PointGrid::Rehash(std::size_t slot_count) {
    slots_.assign(slot_count, Slot{});
    used_slots_ = 0;
    for (std::uint32_t number = 0; number < points_.size(); ++number) {
        const std::uint64_t hash = Hash(x_.Cell(points_[number].x), y_.Cell(points_[number].y));
        Link(number, hash, SlotOf(hash));
    }
}

}  // namespace Geom::detail
