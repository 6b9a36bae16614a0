#include "common/math/detail/step_table.h"

#include <cmath>

namespace math::fn::interpolate::detail {

bool StepTable::Accepts(std::span<const FPOINT> points) noexcept {
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!std::isfinite(points[i].x) || (i > 0 && points[i].x < points[i - 1].x)) {
            return false;
        }
    }
    return points.size() >= 2;
}

StepTable::StepTable(std::span<const FPOINT> points)
    : first_(points.front().x), last_(points.back().x) {
    x_.reserve(points.size());
    y_.reserve(points.size());
    for (const FPOINT& point : points) {
        x_.push_back(point.x);
        y_.push_back(point.y);
    }
    index_.Build(x_);
    sums_.Build(x_.size() - 1, [this](std::size_t i) { return y_[i] * (x_[i + 1] - x_[i]); });
}

}  // namespace math::fn::interpolate::detail
