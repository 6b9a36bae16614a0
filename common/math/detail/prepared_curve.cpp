#include "common/math/detail/prepared_curve.h"

#include "common/math/detail/cycle.h"
#include "common/undefined.h"

#include <algorithm>
#include <utility>

namespace math::fn::interpolate::detail {

namespace {

/// A level line stays level at infinity, where 0 times the run would be invalid.
double OnLine(double value, double slope, double run) noexcept {
    return slope == 0.0 ? value : value + slope * run;
}

}  // namespace

Beyond KindBefore(const TailType& before, const TailType& after) noexcept {
    if (after == TailType::Cycle() || before == TailType::Cycle() || before == TailType::None()) {
        return Beyond::kUndefined;
    }
    return Beyond::kLine;
}

Beyond KindAfter(const TailType& after) noexcept {
    if (after == TailType::Cycle()) {
        return Beyond::kRepeats;
    }
    return after == TailType::None() ? Beyond::kUndefined : Beyond::kLine;
}

PreparedCurve::PreparedCurve(PiecewisePolynomial polynomial, const ActiveRange& range,
                             const TailType& before, const TailType& after)
    : low_(polynomial.X()[range.first]),
      high_(polynomial.X()[range.last]),
      polynomial_(std::move(polynomial)) {
    const bool of_points = range.ends == ActiveRange::Ends::kOfPoints;
    low_value_ = of_points ? polynomial_.Y()[range.first] : polynomial_.Value(low_);
    high_value_ = of_points ? polynomial_.Y()[range.last] : polynomial_.Value(high_);
    before_ = {KindBefore(before, after),
               before == TailType::Calc() ? polynomial_.Derivative(low_) : before.value};
    after_ = {KindAfter(after),
              after == TailType::Calc() ? polynomial_.Derivative(high_) : after.value};
}

double PreparedCurve::ValueOutside_(double x) const noexcept {
    if (std::isless(x, low_)) {
        return before_.kind == Beyond::kLine ? OnLine(low_value_, before_.slope, x - low_)
                                             : lmw::kUndefined;
    }
    if (std::isgreater(x, high_)) {
        if (after_.kind == Beyond::kLine) {
            return OnLine(high_value_, after_.slope, x - high_);
        }
        const double wrapped = after_.kind == Beyond::kRepeats ? Wrapped_(x) : lmw::kUndefined;
        if (!lmw::IsDefined(wrapped)) {
            return lmw::kUndefined;
        }
        if (wrapped > low_ && wrapped < high_) {
            return polynomial_.Value(wrapped);
        }
        return wrapped <= low_ ? low_value_ : high_value_;
    }
    if (x == low_) {
        return low_value_;
    }
    return x == high_ ? high_value_ : x;  // what equals neither is NaN
}

double PreparedCurve::DerivativeOutside_(double x) const noexcept {
    if (std::isless(x, low_)) {
        return before_.kind == Beyond::kLine ? before_.slope : lmw::kUndefined;
    }
    if (std::isgreater(x, high_)) {
        if (after_.kind == Beyond::kLine) {
            return after_.slope;
        }
        const double wrapped = after_.kind == Beyond::kRepeats ? Wrapped_(x) : lmw::kUndefined;
        return lmw::IsDefined(wrapped) ? polynomial_.Derivative(wrapped) : lmw::kUndefined;
    }
    return polynomial_.Derivative(x);
}

/// Where in [low, high] the cycle is at `x` beyond high; undefined at infinity.
double PreparedCurve::Wrapped_(double x) const noexcept {
    const double phase = CyclePhase(x - high_, high_ - low_);
    return lmw::IsDefined(phase) ? std::min(low_ + phase, high_) : lmw::kUndefined;
}

double PreparedCurve::IntegralOutside_(double a, double b) const noexcept {
    if (!std::isfinite(a) || !std::isfinite(b)) {
        return std::isnan(a) ? a : std::isnan(b) ? b : lmw::kUndefined;
    }
    const double from = std::min(a, b);
    const double to = std::max(a, b);
    if ((from < low_ && before_.kind == Beyond::kUndefined) ||
        (to > high_ && after_.kind == Beyond::kUndefined)) {
        return lmw::kUndefined;
    }
    double sum = 0.0;
    if (from < low_) {
        const double end = std::min(to, low_);
        const double middle = from + 0.5 * (end - from);
        sum += OnLine(low_value_, before_.slope, middle - low_) * (end - from);
    }
    if (from < high_ && to > low_) {
        sum += polynomial_.Integral(std::max(from, low_), std::min(to, high_));
    }
    if (to > high_) {
        const double begin = std::max(from, high_);
        if (after_.kind == Beyond::kRepeats) {
            sum += CyclesIntegral_(begin, to);
        } else {
            const double middle = begin + 0.5 * (to - begin);
            sum += OnLine(high_value_, after_.slope, middle - high_) * (to - begin);
        }
    }
    return sum;
}

double PreparedCurve::CyclesIntegral_(double from, double to) const noexcept {
    return IntegralOverCycles(from - high_, to - high_, high_ - low_, [this](double u, double v) {
        return polynomial_.Integral(std::min(low_ + u, high_), std::min(low_ + v, high_));
    });
}

}  // namespace math::fn::interpolate::detail
