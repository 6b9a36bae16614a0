#include "common/math/detail/piecewise_polynomial.h"

#include "common/undefined.h"

#include <bit>
#include <cmath>
#include <utility>

namespace math::fn::interpolate::detail {

namespace {

/// On the bits, where a compiler can vectorise it: one more than the largest exponent is carried
/// into the sign.
bool AllFinite(std::span<const double> numbers) {
    constexpr std::uint64_t kExponent = 0x7FF0000000000000;
    constexpr std::uint64_t kOne = 0x0010000000000000;
    std::uint64_t carried = 0;
    for (const double number : numbers) {
        carried |= (std::bit_cast<std::uint64_t>(number) & kExponent) + kOne;
    }
    return carried >> 63U == 0;
}

bool AreBreakpoints(std::span<const double> x) {
    bool ordered = true;
    for (std::size_t i = 1; i < x.size(); ++i) {
        ordered &= std::islessequal(x[i - 1], x[i]);
    }
    return ordered && AllFinite(x);
}

bool AreValues(std::span<const double> y) {
    bool defined = true;
    for (const double value : y) {
        defined &= lmw::IsDefined(value);
    }
    return defined && AllFinite(y);
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
    if (!AllFinite(coefficients_)) {  // the quotient of a huge step and a tiny width
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
