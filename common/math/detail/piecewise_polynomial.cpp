#include "common/math/detail/piecewise_polynomial.h"

#include "common/undefined.h"

#include <cmath>
#include <limits>
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
    bool finite = true;
    for (const double coefficient : coefficients_) {
        finite &= std::fabs(coefficient) <= std::numeric_limits<double>::max();
    }
    if (!finite) {  // the quotient of a huge step and a tiny width
        coefficients_.clear();
        return EngineError::kBadCoefficients;
    }
    index_.Build(x_);
    if (order_ == kLinearOrder) {
        BuildSums_<kLinearOrder>();
    } else {
        BuildSums_<kCubicOrder>();
    }
    sums_finite_ = sums_.Finite();
    return EngineError::kNone;
}

template <std::uint32_t order>
void PiecewisePolynomial::BuildSums_() {
    sums_.Build(x_.size() - 1,
                [this](std::size_t i) { return IntegralOn_<order>(i, x_[i], x_[i + 1]); });
}

std::size_t PiecewisePolynomial::Interval(double site) const noexcept {
    if (site < x_.front()) {
        return 0;
    }
    return site < x_.back() ? index_.Find(x_.data(), site) : x_.size() - 2;
}

double PiecewisePolynomial::SearchedValue_(const BreakpointIndex::Bucket& bucket,
                                           double site) const noexcept {
    const std::size_t interval = bucket.Search(x_.data(), site);
    return order_ == kLinearOrder ? ValueOn_<kLinearOrder>(interval, site)
                                  : ValueOn_<kCubicOrder>(interval, site);
}

double PiecewisePolynomial::SearchedDerivative_(const BreakpointIndex::Bucket& bucket,
                                                double site) const noexcept {
    const std::size_t interval = bucket.Search(x_.data(), site);
    return order_ == kLinearOrder ? DerivativeOn_<kLinearOrder>(interval, site)
                                  : DerivativeOn_<kCubicOrder>(interval, site);
}

double PiecewisePolynomial::Value(double site) const noexcept {
    if (std::isnan(site)) {
        return site;
    }
    const std::size_t interval = Interval(site);
    return order_ == kLinearOrder ? ValueOn_<kLinearOrder>(interval, site)
                                  : ValueOn_<kCubicOrder>(interval, site);
}

double PiecewisePolynomial::Derivative(double site) const noexcept {
    if (std::isnan(site)) {
        return site;
    }
    const std::size_t interval = Interval(site);
    return order_ == kLinearOrder ? DerivativeOn_<kLinearOrder>(interval, site)
                                  : DerivativeOn_<kCubicOrder>(interval, site);
}

/// The way around running sums that are too large for a double.
template <std::uint32_t order>
double PiecewisePolynomial::AddPieces_(std::size_t begin, std::size_t end) const noexcept {
    double sum = 0.0;
    for (std::size_t i = begin; i < end; ++i) {
        sum += IntegralOn_<order>(i, x_[i], x_[i + 1]);
    }
    return sum;
}

template double PiecewisePolynomial::AddPieces_<kLinearOrder>(std::size_t,
                                                              std::size_t) const noexcept;
template double PiecewisePolynomial::AddPieces_<kCubicOrder>(std::size_t,
                                                             std::size_t) const noexcept;

double PiecewisePolynomial::Integral(double from, double to) const noexcept {
    const std::size_t first = Interval(from);
    const std::size_t last = Interval(to);
    return order_ == kLinearOrder ? IntegralBetween_<kLinearOrder>(first, last, from, to)
                                  : IntegralBetween_<kCubicOrder>(first, last, from, to);
}

}  // namespace math::fn::interpolate::detail
