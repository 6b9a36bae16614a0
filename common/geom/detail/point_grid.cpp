#include "common/geom/detail/point_grid.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace Geom::detail {

namespace {

constexpr std::size_t kSmallestTable = 16;

/// Calls `visit` for every cell from low to high: one, two, or three where rounding of the quotient
/// spreads them. Beyond 2^53 consecutive cells are no longer distinct doubles; there the middle one
/// is the point's own.
template <class Visit>
void ForCells(double low, double own, double high, const Visit& visit) {
    double cell = low;
    visit(cell);
    while (cell < high) {
        const double next = cell + 1.0;
        if (next > cell) {
            cell = std::min(next, high);
        } else {
            cell = cell < own ? own : high;
        }
        visit(cell);
    }
}

}  // namespace

PointGrid::Axis::Axis(double h) : half_epsilon(h), reach(h * (1.0 + 1e-6)), inverse(0.0) {
    constexpr double kHalfEpsilonsPerCell = 8.0;
    constexpr double kNarrowestCell = 1e-300;  // keeps the inverse finite
    constexpr double kAllEqual = 1e300;        // an unset tolerance: one cell for everything
    if (h < kAllEqual) {
        inverse = 1.0 / std::max(h * kHalfEpsilonsPerCell, kNarrowestCell);
    }
}

double PointGrid::Axis::Cell(double v) const noexcept {
    const double cell = std::floor(v * inverse);
    return std::isnan(cell) ? 0.0 : cell + 0.0;  // 0 * infinity, and NaN itself; -0 is 0
}

PointGrid::PointGrid(const Precision3D& precision)
    : x_(precision.halfEpsilon[0]), y_(precision.halfEpsilon[1]), slots_(kSmallestTable) {}

void PointGrid::Reserve(std::size_t points) {
    points_.reserve(points);
    cells_.reserve(points);
    next_.reserve(points);
    const std::size_t wanted = std::bit_ceil(std::max(points * 2, kSmallestTable));
    if (points_.empty() && wanted > slots_.size()) {
        slots_.assign(wanted, Slot{});
    }
}

std::size_t PointGrid::SlotOf(double cell_x, double cell_y) const noexcept {
    std::uint64_t hash = std::bit_cast<std::uint64_t>(cell_x) * 0x9E3779B97F4A7C15ULL;
    hash = std::rotl(hash, 32) ^ (std::bit_cast<std::uint64_t>(cell_y) * 0xC2B2AE3D27D4EB4FULL);
    hash ^= hash >> 29U;
    hash *= 0x165667B19E3779F9ULL;
    hash ^= hash >> 32U;
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = static_cast<std::size_t>(hash) & mask;
    while (slots_[slot].first != kNone) {
        const Point2D& cell = cells_[slots_[slot].first];
        if (cell.x == cell_x && cell.y == cell_y) {
            break;
        }
        slot = (slot + 1) & mask;
    }
    return slot;
}

std::uint32_t PointGrid::LowestInCell(double cell_x, double cell_y, const Point2D& p,
                                      std::uint32_t best) const noexcept {
    for (std::uint32_t i = slots_[SlotOf(cell_x, cell_y)].first; i < best; i = next_[i]) {
        if (Near(points_[i].x, p.x, x_.half_epsilon) && Near(points_[i].y, p.y, y_.half_epsilon)) {
            return i;
        }
    }
    return best;
}

std::uint32_t PointGrid::Find(const Point2D& p) const {
    std::uint32_t best = kNone;
    const double x_low = x_.Cell(p.x - x_.reach);
    const double x_own = x_.Cell(p.x);
    const double x_high = x_.Cell(p.x + x_.reach);
    const double y_low = y_.Cell(p.y - y_.reach);
    const double y_own = y_.Cell(p.y);
    const double y_high = y_.Cell(p.y + y_.reach);
    ForCells(x_low, x_own, x_high, [&](double cell_x) {
        ForCells(y_low, y_own, y_high,
                 [&](double cell_y) { best = LowestInCell(cell_x, cell_y, p, best); });
    });
    return best;
}

std::uint32_t PointGrid::Insert(const Point2D& p) {
    const std::uint32_t found = Find(p);
    if (found != kNone) {
        return found;
    }
    const auto number = static_cast<std::uint32_t>(points_.size());
    points_.push_back(p);
    cells_.push_back({x_.Cell(p.x), y_.Cell(p.y)});
    next_.push_back(kNone);
    if ((used_slots_ + 1) * 2 > slots_.size()) {
        Grow();
    } else {
        Link(number);
    }
    return number;
}

void PointGrid::Link(std::uint32_t number) {
    Slot& slot = slots_[SlotOf(cells_[number].x, cells_[number].y)];
    if (slot.first == kNone) {
        slot.first = number;
        ++used_slots_;
    } else {
        next_[slot.last] = number;
    }
    slot.last = number;
}

void PointGrid::Grow() {
    slots_.assign(slots_.size() * 2, Slot{});
    used_slots_ = 0;
    std::fill(next_.begin(), next_.end(), kNone);
    for (std::uint32_t number = 0; number < points_.size(); ++number) {
        Link(number);  // ascending, so every cell's chain stays so
    }
}

}  // namespace Geom::detail
