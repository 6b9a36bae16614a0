#pragma once

// The data points of a curve as the caller gave them.

#include "common/math/fpoint.h"
#include "common/undefined.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace math::fn::interpolate::detail {

/// Immutable x and y values, shared by the copies of a curve. Functions take a pointer to one, null
/// for a curve without points.
class CurvePoints {
 public:
    CurvePoints(const FPOINT* first, const FPOINT* last)
        : size_(static_cast<std::size_t>(last - first)), values_(2 * size_) {
        for (std::size_t i = 0; i < size_; ++i) {
            values_[i] = first[i].x;
            values_[size_ + i] = first[i].y;
        }
    }

    [[nodiscard]] std::size_t Size() const noexcept { return size_; }
    [[nodiscard]] std::span<const double> X() const noexcept { return {values_.data(), size_}; }
    [[nodiscard]] std::span<const double> Y() const noexcept {
        return {values_.data() + size_, size_};
    }

 private:
    std::size_t size_;
    std::vector<double> values_;  ///< all x, then all y
};

using SharedPoints = std::shared_ptr<const CurvePoints>;

/// Null for an empty range.
inline SharedPoints SharePoints(const FPOINT* first, const FPOINT* last) {
    return first == last ? nullptr : std::make_shared<const CurvePoints>(first, last);
}

inline std::size_t NumberOf(const SharedPoints& points) noexcept {
    return points ? points->Size() : 0;
}

inline double FirstX(const SharedPoints& points) noexcept {
    return points ? points->X().front() : lmw::kUndefined;
}

inline double LastX(const SharedPoints& points) noexcept {
    return points ? points->X().back() : lmw::kUndefined;
}

/// `stored` when it is set, else the span of the points, undefined without points.
inline double PeriodForCalculation(double stored, const SharedPoints& points) noexcept {
    return lmw::IsDefined(stored) || !points ? stored : LastX(points) - FirstX(points);
}

}  // namespace math::fn::interpolate::detail
