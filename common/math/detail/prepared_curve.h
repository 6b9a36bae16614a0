#pragma once

// What Linear and Spline evaluate: a piecewise polynomial with its tails resolved. Made by
// curve_preparation.h.

#include "common/math/curve_common.h"
#include "common/math/detail/piecewise_polynomial.h"
#include "common/math/tail_type.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

namespace math::fn::interpolate::detail {

/// The part of a polynomial's breakpoints that is the curve, and what is known of its end values.
struct ActiveRange {
    std::size_t first = 0;
    std::size_t last = 0;
    /// Whether the values at the two ends are the y values there, or those of the polynomial.
    enum class Ends : std::uint8_t { kOfPolynomial, kOfPoints } ends = Ends::kOfPolynomial;
};

/// An immutable curve.
///
/// The tails are looked at once, here, so that no reserved tail value ever meets arithmetic: a
/// cyclic tail after makes everything before undefined, a cyclic tail before is undefined always,
/// Calc becomes the slope of the polynomial at its end.
///
/// Threads: all calls may run at once on one object. No call allocates, throws, or raises a
/// floating-point exception for an argument that is NaN or infinite.
class PreparedCurve {
 public:
    PreparedCurve(PiecewisePolynomial polynomial, const ActiveRange& range, const TailType& before,
                  const TailType& after);

    /// `order` is that of the polynomial.
    template <std::uint32_t order>
    [[nodiscard]] double Value(double x) const noexcept {
        if (Inside_(x)) [[likely]] {
            return polynomial_.ValueInside<order>(x);
        }
        return ValueOutside_(x);
    }

    template <std::uint32_t order>
    [[nodiscard]] double Derivative(double x) const noexcept {
        if (Inside_(x)) [[likely]] {
            return polynomial_.DerivativeInside<order>(x);
        }
        return DerivativeOutside_(x);
    }

    /// Between the lesser and the greater of the bounds.
    template <std::uint32_t order>
    [[nodiscard]] double Integral(double a, double b) const noexcept {
        if (Inside_(a) && Inside_(b)) [[likely]] {
            return polynomial_.IntegralInside<order>(std::min(a, b), std::max(a, b));
        }
        return IntegralOutside_(a, b);
    }

    [[nodiscard]] std::span<const double> Coefficients() const noexcept {
        return polynomial_.Coefficients();
    }

 private:
    struct Tail {
        Beyond kind = Beyond::kUndefined;
        double slope = 0.0;
    };

    /// Quiet comparisons: an ordered one would trap for NaN.
    [[nodiscard]] bool Inside_(double x) const noexcept {
        return std::isgreater(x, low_) && std::isless(x, high_);
    }
    [[nodiscard]] double ValueOutside_(double x) const noexcept;
    [[nodiscard]] double DerivativeOutside_(double x) const noexcept;
    [[nodiscard]] double IntegralOutside_(double a, double b) const noexcept;
    [[nodiscard]] double Wrapped_(double x) const noexcept;
    [[nodiscard]] double CyclesIntegral_(double from, double to) const noexcept;

    double low_;
    double high_;
    PiecewisePolynomial polynomial_;
    double low_value_ = 0.0;
    double high_value_ = 0.0;
    Tail before_;
    Tail after_;
};

/// What a curve with these tails does at either end (the derivative of Calc aside).
[[nodiscard]] Beyond KindBefore(const TailType& before, const TailType& after) noexcept;
[[nodiscard]] Beyond KindAfter(const TailType& after) noexcept;

}  // namespace math::fn::interpolate::detail
