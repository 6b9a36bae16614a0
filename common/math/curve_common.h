#pragma once

// What the interpolants Step, Linear and Spline have in common: tails, period, and the description
// of where a curve has values.

#include "common/export.h"
#include "common/math/tail_type.h"
#include "common/undefined.h"

#include <cstdint>

namespace math::fn::interpolate {

/// How a curve goes on beyond one of its ends.
enum class Beyond : std::uint8_t {
    kUndefined,  ///< evaluation gives the undefined value
    kLine,       ///< a straight line (a constant is a line of slope 0)
    kRepeats,    ///< the curve repeats
};

/// Where a curve has values. Read-only description; see Step, Linear, Spline::Domain.
struct CurveDomain {
    double first = lmw::kUndefined;  ///< x of the first data point; undefined without points
    double last = lmw::kUndefined;   ///< x of the last data point; undefined without points
    Beyond before = Beyond::kUndefined;
    Beyond after = Beyond::kUndefined;
    /// The length in x after which the curve repeats, when `after` is kRepeats; else undefined.
    double period = lmw::kUndefined;
};

namespace algorithm {

/// The tails and the period that the interpolants share.
///
/// The period is a length in x; the undefined value means that it is not set, and the span of the
/// data is used. Default: level tails, no period. Setters are not synchronised.
class Common {
 public:
    constexpr Common() noexcept = default;
    constexpr Common(const TailType& before, const TailType& after,
                     double period = lmw::kUndefined) noexcept
        : tail_before_(before), tail_after_(after), function_period_(period) {}

    [[nodiscard]] constexpr const TailType& TailBefore() const noexcept { return tail_before_; }
    [[nodiscard]] constexpr const TailType& TailAfter() const noexcept { return tail_after_; }
    [[nodiscard]] constexpr double FunctionPeriod() const noexcept { return function_period_; }

    constexpr void SetTailBefore(const TailType& tail) noexcept { tail_before_ = tail; }
    constexpr void SetTailAfter(const TailType& tail) noexcept { tail_after_ = tail; }
    constexpr void SetFunctionPeriod(double period) noexcept { function_period_ = period; }

 private:
    TailType tail_before_;
    TailType tail_after_;
    double function_period_ = lmw::kUndefined;
};

}  // namespace algorithm
}  // namespace math::fn::interpolate
