#include "common/geom/detail/pair_grid.h"

#include <cmath>

namespace Geom::detail {

PairGrid::PairGrid(const std::vector<Line2D>& lines, const std::vector<WideBox>& boxes,
                   std::span<const std::uint32_t> used, const Precision3D& precision)
    : boxes_(boxes), used_(used) {
    if (used.empty()) {
        complete_ = true;
        return;
    }
    ChooseFrame(lines);
    if (sine_ != 0.0) {
        TurnBoxes(lines, precision);
    }
    ChooseCells();
    Fill();
}

/// The mean direction of the segments, weighted by length, as the mean of doubled angles (Mardia
/// and Jupp, Directional Statistics, 2000, section 1.3): where most of the length runs one way,
/// boxes along it are thin.
void PairGrid::ChooseFrame(const std::vector<Line2D>& lines) {
    constexpr double kMarkedDirection = 0.7;
    constexpr double kAlreadyAligned = 0.9999;
    double length_sum = 0.0;
    double cosine_sum = 0.0;
    double sine_sum = 0.0;
    for (const std::uint32_t position : used_) {
        const Point2D d = Minus(lines[position].second, lines[position].first);
        const double length = std::sqrt(Dot(d, d));
        if (length > 0.0) {
            length_sum += length;
            cosine_sum += (d.x * d.x - d.y * d.y) / length;
            sine_sum += 2.0 * d.x * d.y / length;
        }
    }
    const double resultant = std::sqrt(cosine_sum * cosine_sum + sine_sum * sine_sum);
    const bool marked = resultant > kMarkedDirection * length_sum && std::isfinite(resultant);
    if (marked && std::fabs(cosine_sum) < kAlreadyAligned * resultant) {
        const double angle = 0.5 * std::atan2(sine_sum, cosine_sum);
        cosine_ = std::cos(angle);
        sine_ = std::sin(angle);
    }
}

void PairGrid::TurnBoxes(const std::vector<Line2D>& lines, const Precision3D& precision) {
    turned_boxes_.reserve(used_.size());
    for (const std::uint32_t position : used_) {
        // What meets does so within the half-epsilons, turned, and the rounding of the pair test
        // and of the turn, together less than 2^-48 of the greatest magnitude.
        const Line2D& line = lines[position];
        const double magnitude = std::max({std::fabs(line.first.x), std::fabs(line.first.y),
                                           std::fabs(line.second.x), std::fabs(line.second.y)});
        const double margin = std::fabs(cosine_) * precision.halfEpsilon[0] +
                              std::fabs(sine_) * precision.halfEpsilon[0] +
                              std::fabs(cosine_) * precision.halfEpsilon[1] +
                              std::fabs(sine_) * precision.halfEpsilon[1] + magnitude * 0x1p-46;
        const auto turned = [&](const Point2D& p) {
            return Point2D{cosine_ * p.x + sine_ * p.y, cosine_ * p.y - sine_ * p.x};
        };
        turned_boxes_.push_back(WideBoxOf(turned(line.first), turned(line.second), margin, margin));
    }
}

/// About one cell per segment, no narrower than the segments' mean box on either axis.
void PairGrid::ChooseCells() {
    const auto count = static_cast<double>(used_.size());
    double u_sum = 0.0;
    double v_sum = 0.0;
    range_ = FrameBox(0);
    for (std::size_t k = 0; k < used_.size(); ++k) {
        const WideBox& box = FrameBox(k);
        range_.x_min = std::min(range_.x_min, box.x_min);
        range_.x_max = std::max(range_.x_max, box.x_max);
        range_.y_min = std::min(range_.y_min, box.y_min);
        range_.y_max = std::max(range_.y_max, box.y_max);
        u_sum += (box.x_max - box.x_min) / count;
        v_sum += (box.y_max - box.y_min) / count;
    }
    const double u_range = range_.x_max - range_.x_min;
    const double v_range = range_.y_max - range_.y_min;
    const auto limit = [&](double range, double mean) {  // most cells along an axis
        return mean > 0.0 ? std::clamp(range / mean, 1.0, count) : (range > 0.0 ? count : 1.0);
    };
    const double u_limit = limit(u_range, u_sum);
    const double v_limit = limit(v_range, v_sum);
    const double square =
        u_range > 0.0 && v_range > 0.0 ? std::sqrt(count * u_range / v_range) : 1.0;
    double columns = std::clamp(square, 1.0, u_limit);
    const double rows = std::clamp(count / columns, 1.0, v_limit);
    columns = std::clamp(count / rows, 1.0, u_limit);
    columns_ = static_cast<std::uint32_t>(columns);
    rows_ = static_cast<std::uint32_t>(rows);
    const auto per_unit = [](std::uint32_t cells, double range) {
        const double quotient = cells / range;
        return std::isfinite(quotient) ? quotient : 0.0;  // no width to speak of: one cell
    };
    cells_per_u_ = per_unit(columns_, u_range);
    cells_per_v_ = per_unit(rows_, v_range);
}

/// Monotone in the coordinate, which is all that completeness needs: boxes that meet share a cell.
PairGrid::CellBox PairGrid::CellBoxOf(const WideBox& box) const noexcept {
    return {static_cast<float>((box.x_min - range_.x_min) * cells_per_u_),
            static_cast<float>((box.x_max - range_.x_min) * cells_per_u_),
            static_cast<float>((box.y_min - range_.y_min) * cells_per_v_),
            static_cast<float>((box.y_max - range_.y_min) * cells_per_v_)};
}

PairGrid::CellRange PairGrid::CellsOf(const CellBox& box) const noexcept {
    const auto cell = [](float place, std::uint32_t count) {
        return std::min(static_cast<std::uint32_t>(place), count - 1);
    };
    return {cell(box.u_min, columns_), cell(box.u_max, columns_), cell(box.v_min, rows_),
            cell(box.v_max, rows_)};
}

void PairGrid::Fill() {
    const auto for_cells = [&](const CellRange& range, const auto& action) {
        for (std::uint32_t v = range.v0; v <= range.v1; ++v) {
            for (std::uint32_t u = range.u0; u <= range.u1; ++u) {
                action(u, v, v * columns_ + u);
            }
        }
    };
    begin_.assign(std::size_t{columns_} * rows_ + 1, 0);
    std::vector<CellBox> boxes;
    boxes.reserve(used_.size());
    std::size_t entries = 0;
    for (std::size_t k = 0; k < used_.size(); ++k) {
        const CellRange range = CellsOf(boxes.emplace_back(CellBoxOf(FrameBox(k))));
        entries += std::size_t{range.u1 - range.u0 + 1} * (range.v1 - range.v0 + 1);
        if (entries > kEntriesPerLine * used_.size()) {
            begin_.clear();
            return;
        }
        for_cells(range, [&](std::uint32_t /*u*/, std::uint32_t /*v*/, std::uint32_t cell) {
            ++begin_[cell];
        });
    }
    // Ends of the cells first; filling backwards turns them into beginnings and keeps input order.
    for (std::size_t cell = 1; cell < begin_.size(); ++cell) {
        begin_[cell] += begin_[cell - 1];
    }
    entries_ = std::make_unique_for_overwrite<Entry[]>(entries);
    for (std::size_t k = boxes.size(); k-- > 0;) {
        const CellRange range = CellsOf(boxes[k]);
        for_cells(range, [&](std::uint32_t u, std::uint32_t v, std::uint32_t cell) {
            entries_[--begin_[cell]] = {
                boxes[k], used_[k],
                (u == range.u0 ? kFirstColumn : 0) | (v == range.v0 ? kFirstRow : 0)};
        });
    }
    complete_ = true;
}

}  // namespace Geom::detail
