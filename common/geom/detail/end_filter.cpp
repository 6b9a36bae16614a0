#include "common/geom/detail/end_filter.h"

#include <algorithm>
#include <cmath>

namespace Geom::detail {

namespace {

/// Few cells are marked, and all fit a fast cache as long as there are ten thousand points.
constexpr double kCellsPerPoint = 16.0;

}  // namespace

EndFilter::EndFilter(const Extents2D& extents, std::size_t points, const Precision3D& precision)
    : side_(1 + static_cast<std::size_t>(std::sqrt(kCellsPerPoint * static_cast<double>(points)))),
      x_(MakeAxis(extents.x_min, extents.x_max, precision.halfEpsilon[0], side_)),
      y_(MakeAxis(extents.y_min, extents.y_max, precision.halfEpsilon[1], side_)),
      marked_(side_ * side_ / 64 + 1) {}

EndFilter::Axis EndFilter::MakeAxis(double low, double high, double half_epsilon,
                                    std::size_t side) noexcept {
    const double reach = half_epsilon * (1.0 + 1e-6);  // covers the rounding of the comparison
    const double width = std::max((high - low) / static_cast<double>(side), 4.0 * reach);
    const double inverse = 1.0 / width;
    return {low, reach, std::isfinite(inverse) ? inverse : 0.0,  // no width: one cell
            static_cast<double>(side - 1)};
}

bool EndFilter::MarkAround(const Point2D& p) {
    const std::uint32_t x_last = x_.Cell(p.x + x_.reach);
    const std::uint32_t y_last = y_.Cell(p.y + y_.reach);
    std::uint64_t grown = 0;
    for (std::uint32_t ix = x_.Cell(p.x - x_.reach); ix <= x_last; ++ix) {
        for (std::uint32_t iy = y_.Cell(p.y - y_.reach); iy <= y_last; ++iy) {
            const std::size_t cell = CellAt(ix, iy);
            const std::uint64_t bit = std::uint64_t{1} << (cell % 64);
            grown |= bit & ~marked_[cell / 64];
            marked_[cell / 64] |= bit;
        }
    }
    return grown != 0;
}

std::optional<std::vector<Point2D>> EndFilter::CloseOver(const std::vector<Line2D>& lines) {
    constexpr int kMostRounds = 4;  // chains across borders of such wide cells are rare
    for (int round = 0; round < kMostRounds; ++round) {
        bool grown = false;
        std::vector<Point2D> inside;
        for (const Line2D& line : lines) {
            if (!line.first.IsValid() || !line.second.IsValid()) {
                continue;
            }
            for (const Point2D& end : {line.first, line.second}) {
                if (Contains(end)) {
                    grown |= MarkAround(end);
                    inside.push_back(end);
                }
            }
        }
        if (!grown) {
            return inside;
        }
    }
    return std::nullopt;
}

}  // namespace Geom::detail
