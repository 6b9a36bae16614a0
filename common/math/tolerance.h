#pragma once

// Equality of two numbers to a number of significant digits.
// Surprising: the tolerance is relative, but never finer than the digits of the reference
// magnitude it was made from, so that two results that cancel to nearly zero still count as equal.

#include <cmath>

namespace math::algorithm {

template <class Number>
class Tolerance;

/// Two numbers are equal when they differ by at most 10^-digits of the largest of three magnitudes:
/// the reference, and the two numbers.
///
/// 1. Equality is symmetric, and the bound itself counts as equal.
/// 2. With 15 digits (the default) numbers that were written with 15 digits, or differ by a few
///    roundings, are equal; numbers that differ in the 15th digit are not.
/// 3. NaN equals nothing. No comparison raises a floating-point exception for NaN.
///
/// Copying is free; any number of threads may use one object.
template <>
class Tolerance<double> {
 public:
    /// `reference`: the magnitude that the compared numbers are made of (a period, a span); its
    /// sign does not matter. In the unit of the compared numbers.
    constexpr explicit Tolerance(double reference = 0.0, int significant_digits = 15) noexcept
        : reference_(reference), relative_(1.0) {
        for (int digit = 0; digit < significant_digits; ++digit) {
            relative_ /= 10.0;
        }
    }

    [[nodiscard]] constexpr double Reference() const noexcept { return reference_; }

    /// The relative bound, 1e-15 unless another number of digits was asked for. No unit.
    [[nodiscard]] constexpr double Relative() const noexcept { return relative_; }

    [[nodiscard]] bool Equal(double a, double b) const noexcept {
        const double scale =
            std::fmax(std::fabs(reference_), std::fmax(std::fabs(a), std::fabs(b)));
        return a == b || std::islessequal(std::fabs(a - b), relative_ * scale);
    }

    [[nodiscard]] bool GreaterOrEqual(double a, double b) const noexcept {
        return std::isgreater(a, b) || Equal(a, b);
    }

 private:
    double reference_;
    double relative_;
};

}  // namespace math::algorithm
