#include "common/math/detail/piecewise_polynomial.h"

#include "common/undefined.h"

#include <cmath>
#include <utility>

namespace math::fn::interpolate::detail {

namespace {

bool AreBreakpoints(std::span<const double> x) {
    for (std::size_t i = 0; i < x.size(); ++i) {
        if (!std::isfinite(x[i]) || (i > 0 && x[i] < x[i - 1])) {
            return false;
        }
    }
    return true;
}

bool AreValues(std::span<const double> y) {
    for (const double value : y) {
        if (!std::isfinite(value) || !lmw::IsDefined(value)) {
            return false;
        }
    }
    return true;
}

}  // namespace

EngineError PiecewisePolynomial::Start(std::vector<double> x, std::vector<double> y) {
    order_ = 0;
    x_.clear();
    if (x.size() < 2) {
        return EngineError::kTooFewPoints;
    }
    if (!AreBreakpoints(x)) {
        return EngineError::kBadX;
    }
    if (y.size() != x.size() || !AreValues(y)) {
        return EngineError::kBadY;
    }
    x_ = std::move(x);
    y_ = std::move(y);
    return EngineError::kNone;
}

EngineError PiecewisePolynomial::SetOrder(std::uint32_t order) {
    if (x_.empty()) {
        return EngineError::kNoTask;
    }
    if (order != kLinearOrder && order != kCubicOrder) {
        return EngineError::kBadOrder;
    }
    order_ = order;
    return EngineError::kNone;
}

EngineError PiecewisePolynomial::Construct() {
    if (x_.empty()) {
        return EngineError::kNoTask;
    }
    if (order_ != kLinearOrder) {
        return EngineError::kBadOrder;
    }
    coefficients_.resize((x_.size() - 1) * kLinearOrder);
    for (std::size_t i = 0; i + 1 < x_.size(); ++i) {
        const double width = x_[i + 1] - x_[i];
        coefficients_[2 * i] = width > 0.0 ? y_[i] : y_[i + 1];
        coefficients_[2 * i + 1] = width > 0.0 ? (y_[i + 1] - y_[i]) / width : 0.0;
    }
    return Finish_();
}

EngineError PiecewisePolynomial::SetCoefficients(std::vector<double> coefficients) {
    if (x_.empty()) {
        return EngineError::kNoTask;
    }
    if (order_ == 0) {
        return EngineError::kBadOrder;
    }
    if (coefficients.size() != (x_.size() - 1) * order_) {
        return EngineError::kBadCoefficients;
    }
    coefficients_ = std::move(coefficients);
    return Finish_();
}

EngineError PiecewisePolynomial::Finish_() {
    for (const double coefficient : coefficients_) {
        if (!std::isfinite(coefficient)) {  // the quotient of a huge step and a tiny width
            coefficients_.clear();
            return EngineError::kBadCoefficients;
        }
    }
    index_.Build(x_);
    sums_ = PrefixSums();
    sums_.Reserve(x_.size() - 1);
    for (std::size_t i = 0; i + 1 < x_.size(); ++i) {
        sums_.Append(IntegralOn_(i, x_[i], x_[i + 1]));
    }
    sums_finite_ = sums_.Finite();
    return EngineError::kNone;
}

std::size_t PiecewisePolynomial::Interval(double site) const noexcept {
    if (site < x_.front()) {
        return 0;
    }
    return site < x_.back() ? index_.Find(x_.data(), site) : x_.size() - 2;
}

double PiecewisePolynomial::Value(double site) const noexcept {
    return std::isnan(site) ? site : ValueOn_(Interval(site), site);
}

double PiecewisePolynomial::Derivative(double site) const noexcept {
    return std::isnan(site) ? site : DerivativeOn_(Interval(site), site);
}

/// With m the middle of the part and h its width, the integral of a cubic p is
/// h p(m) + h^3 p''(m) / 24: no difference of antiderivatives, so a narrow part loses no digits.
double PiecewisePolynomial::IntegralOn_(std::size_t interval, double from,
                                        double to) const noexcept {
    const double* c = coefficients_.data() + interval * order_;
    const double h = to - from;
    const double m = from - x_[interval] + 0.5 * h;
    if (order_ == kLinearOrder) {
        return h * (c[0] + m * c[1]);
    }
    const double middle = c[0] + m * (c[1] + m * (c[2] + m * c[3]));
    return h * (middle + h * h * (c[2] + 3.0 * m * c[3]) / 12.0);
}

double PiecewisePolynomial::WholeIntervals_(std::size_t begin, std::size_t end) const noexcept {
    if (sums_finite_) {
        return sums_.Between(begin, end);
    }
    double sum = 0.0;
    for (std::size_t i = begin; i < end; ++i) {
        sum += IntegralOn_(i, x_[i], x_[i + 1]);
    }
    return sum;
}

double PiecewisePolynomial::Integral(double from, double to) const noexcept {
    const std::size_t first = Interval(from);
    const std::size_t last = Interval(to);
    if (first == last) {
        return IntegralOn_(first, from, to);
    }
    return IntegralOn_(first, from, x_[first + 1]) + WholeIntervals_(first + 1, last) +
           IntegralOn_(last, x_[last], to);
}

}  // namespace math::fn::interpolate::detail
