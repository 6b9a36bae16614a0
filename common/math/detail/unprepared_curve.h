#pragma once

// What Linear and Spline answer without a prepared polynomial, and what else they share.

#include "common/math/curve_common.h"
#include "common/math/detail/curve_points.h"
#include "common/math/detail/prepared_curve.h"
#include "common/undefined.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace math::fn::interpolate::detail {

/// One point is a constant; anything else has no value before it is prepared.
inline double UnpreparedValue(const SharedPoints& points) noexcept {
    return NumberOf(points) == 1 ? points->Y().front() : lmw::kUndefined;
}

inline double UnpreparedDerivative(const SharedPoints& points) noexcept {
    return NumberOf(points) == 1 ? 0.0 : lmw::kUndefined;
}

inline double UnpreparedIntegral(const SharedPoints& points, double a, double b) noexcept {
    if (NumberOf(points) != 1) {
        return lmw::kUndefined;
    }
    if (!std::isfinite(a) || !std::isfinite(b)) {
        return std::isnan(a) ? a : std::isnan(b) ? b : lmw::kUndefined;
    }
    return (std::max(a, b) - std::min(a, b)) * points->Y().front();
}

inline CurveDomain DomainOf(const SharedPoints& points, const algorithm::Common& common,
                            double period) noexcept {
    CurveDomain domain{FirstX(points), LastX(points)};
    if (NumberOf(points) == 1) {
        domain.before = Beyond::kLine;
        domain.after = Beyond::kLine;
    } else if (points) {
        domain.before = KindBefore(common.TailBefore(), common.TailAfter());
        domain.after = KindAfter(common.TailAfter());
        domain.period = domain.after == Beyond::kRepeats ? period : lmw::kUndefined;
    }
    return domain;
}

/// results[i] = function(x[i]) for all i that both have.
template <class Function>
void ForEach(std::span<const double> x, std::span<double> results, const Function& function) {
    const std::size_t count = std::min(x.size(), results.size());
    for (std::size_t i = 0; i < count; ++i) {
        results[i] = function(x[i]);
    }
}

}  // namespace math::fn::interpolate::detail
