#pragma once

// The piecewise-polynomial engine beneath Linear and Spline: breakpoints, coefficients, look-up,
// value, derivative, integral. It knows nothing of tails and cycles (prepared_curve.h) nor of how
// slopes are chosen (tension_spline.h).

#include "common/math/detail/breakpoint_index.h"
#include "common/math/detail/prefix_sums.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace math::fn::interpolate::detail {

/// Why a piecewise polynomial could not be made. The numbers reach users in messages.
enum class EngineError : std::int32_t {
    kNone = 0,
    kNoTask = -1000,           ///< nothing was started
    kMemory = -1001,           ///< out of memory
    kTooFewPoints = -1004,     ///< fewer than two breakpoints
    kBadX = -1005,             ///< a breakpoint that is not finite or less than the one before
    kBadY = -1008,             ///< a value that is missing, not finite or undefined
    kBadOrder = -1010,         ///< neither linear nor cubic
    kBadCoefficients = -1016,  ///< not `order` numbers for each interval
};

/// Coefficients per interval.
inline constexpr std::uint32_t kLinearOrder = 2;
inline constexpr std::uint32_t kCubicOrder = 4;

/// A polynomial on each interval between neighbouring breakpoints, in powers of x - x[i].
///
/// Made by Start, SetOrder, then Construct (straight lines through the values) or SetCoefficients.
///
/// 1. Order 2 constructed: c0 = y[i], c1 = (y[i+1] - y[i]) / (x[i+1] - x[i]). An interval without
///    width, which only the last of the breakpoints can select, is the constant y[i+1].
/// 2. A site belongs to the interval number (breakpoints not greater than it) - 1, limited to the
///    first and the last: at a breakpoint value and derivative are those of the interval on its
///    right, at the last one those of the last interval. NaN gives NaN.
/// 3. Values and derivatives are Horner's scheme in (site - x[i]).
///
/// Threads: const calls may run at once on one object.
class PiecewisePolynomial {
 public:
    /// Takes the breakpoints and the values at them.
    EngineError Start(std::vector<double> x, std::vector<double> y);
    /// kLinearOrder or kCubicOrder.
    EngineError SetOrder(std::uint32_t order);
    /// Straight lines between the points; needs order 2.
    EngineError Construct();
    /// `coefficients`: order numbers c0, c1, ... for each interval.
    EngineError SetCoefficients(std::vector<double> coefficients);

    [[nodiscard]] std::size_t Size() const noexcept { return x_.size(); }
    [[nodiscard]] std::span<const double> X() const noexcept { return x_; }
    [[nodiscard]] std::span<const double> Y() const noexcept { return y_; }
    [[nodiscard]] std::uint32_t Order() const noexcept { return order_; }
    [[nodiscard]] std::span<const double> Coefficients() const noexcept { return coefficients_; }

    /// The interval of any site that is not NaN.
    [[nodiscard]] std::size_t Interval(double site) const noexcept;

    /// For a site in [first breakpoint, last breakpoint); `order` is Order(), passed where the
    /// caller knows it.
    template <std::uint32_t order>
    [[nodiscard]] double ValueInside(double site) const noexcept;
    template <std::uint32_t order>
    [[nodiscard]] double DerivativeInside(double site) const noexcept;
    /// For two such sites, from <= to.
    template <std::uint32_t order>
    [[nodiscard]] double IntegralInside(double from, double to) const noexcept;

    /// For any site, NaN included.
    [[nodiscard]] double Value(double site) const noexcept;
    [[nodiscard]] double Derivative(double site) const noexcept;

    /// The integral between two sites, first breakpoint <= from <= to <= last breakpoint.
    [[nodiscard]] double Integral(double from, double to) const noexcept;

 private:
    EngineError Finish_();
    // Out of line, so that the inlined evaluations are without calls.
    [[nodiscard]] double SearchedValue_(const BreakpointIndex::Bucket& bucket,
                                        double site) const noexcept;
    [[nodiscard]] double SearchedDerivative_(const BreakpointIndex::Bucket& bucket,
                                             double site) const noexcept;
    template <std::uint32_t order>
    [[nodiscard]] double ValueOn_(std::size_t interval, double site) const noexcept;
    template <std::uint32_t order>
    [[nodiscard]] double DerivativeOn_(std::size_t interval, double site) const noexcept;
    template <std::uint32_t order>
    [[nodiscard]] double IntegralBetween_(std::size_t first, std::size_t last, double from,
                                          double to) const noexcept;
    template <std::uint32_t order>
    [[nodiscard]] double IntegralOn_(std::size_t interval, double from, double to) const noexcept;
    template <std::uint32_t order>
    void BuildSums_();
    template <std::uint32_t order>
    [[nodiscard]] double AddPieces_(std::size_t begin, std::size_t end) const noexcept;

    BreakpointIndex index_;
    std::vector<double> x_;
    std::vector<double> coefficients_;
    std::uint32_t order_ = 0;
    bool sums_finite_ = false;
    PrefixSums sums_;
    std::vector<double> y_;
};

// Implementation of what evaluations inline.

template <std::uint32_t order>
double PiecewisePolynomial::ValueOn_(std::size_t interval, double site) const noexcept {
    const double d = site - x_[interval];
    const double* c = coefficients_.data() + interval * order;
    if constexpr (order == kLinearOrder) {
        return c[0] + d * c[1];
    } else {
        return c[0] + d * (c[1] + d * (c[2] + d * c[3]));
    }
}

template <std::uint32_t order>
double PiecewisePolynomial::DerivativeOn_(std::size_t interval, double site) const noexcept {
    const double* c = coefficients_.data() + interval * order;
    if constexpr (order == kLinearOrder) {
        return c[1];
    } else {
        const double d = site - x_[interval];
        return c[1] + d * (2.0 * c[2] + d * (3.0 * c[3]));
    }
}

template <std::uint32_t order>
double PiecewisePolynomial::ValueInside(double site) const noexcept {
    const BreakpointIndex::Bucket& bucket = index_.BucketOf(site);
    if (bucket.Crowded()) [[unlikely]] {
        return SearchedValue_(bucket, site);
    }
    return ValueOn_<order>(bucket.Interval(site), site);
}

template <std::uint32_t order>
double PiecewisePolynomial::DerivativeInside(double site) const noexcept {
    const BreakpointIndex::Bucket& bucket = index_.BucketOf(site);
    if (bucket.Crowded()) [[unlikely]] {
        return SearchedDerivative_(bucket, site);
    }
    return DerivativeOn_<order>(bucket.Interval(site), site);
}

/// With m the middle of the part and h its width, the integral of a cubic p is
/// h p(m) + h^3 p''(m) / 24: no difference of antiderivatives, so a narrow part loses no digits.
template <std::uint32_t order>
double PiecewisePolynomial::IntegralOn_(std::size_t interval, double from,
                                        double to) const noexcept {
    const double* c = coefficients_.data() + interval * order;
    const double h = to - from;
    const double m = from - x_[interval] + 0.5 * h;
    if constexpr (order == kLinearOrder) {
        return h * (c[0] + m * c[1]);
    } else {
        const double middle = c[0] + m * (c[1] + m * (c[2] + m * c[3]));
        return h * (middle + h * (h * (c[2] + 3.0 * m * c[3])) * (1.0 / 12.0));
    }
}

template <std::uint32_t order>
double PiecewisePolynomial::IntegralBetween_(std::size_t first, std::size_t last, double from,
                                             double to) const noexcept {
    if (first == last) {
        return IntegralOn_<order>(first, from, to);
    }
    const double whole =
        sums_finite_ ? sums_.Between(first + 1, last) : AddPieces_<order>(first + 1, last);
    return IntegralOn_<order>(first, from, x_[first + 1]) + whole +
           IntegralOn_<order>(last, x_[last], to);
}

template <std::uint32_t order>
double PiecewisePolynomial::IntegralInside(double from, double to) const noexcept {
    const double* x = x_.data();
    return IntegralBetween_<order>(index_.Find(x, from), index_.Find(x, to), from, to);
}

}  // namespace math::fn::interpolate::detail
