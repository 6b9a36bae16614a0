#include "common/math/quadratic_eqn.h"

#include <algorithm>

namespace math::fn {

namespace {

// A number as fraction 2^exponent, |fraction| in [1/2, 1), so that products and quotients of any
// size can be told from overflow before they are formed. The exponent of 0 is far below all others.
struct Split {
    explicit Split(double value) noexcept : fraction(std::frexp(value, &exponent)) {
        if (fraction == 0.0) {
            exponent = -100000;
        }
    }
    [[nodiscard]] double Scaled(int shift) const noexcept {
        return std::ldexp(fraction, exponent + shift);
    }
    int exponent = 0;
    double fraction;
};

// Appends value 2^exponent to the roots, unless it is too large for a double.
void Append(double value, int exponent, int& count, double& first, double& second) noexcept {
    const Split root(value);
    if (root.exponent + exponent > 1024) {
        return;
    }
    (count == 0 ? first : second) = root.Scaled(exponent);
    ++count;
}

}  // namespace

int QuadraticEqn::SolveAnywhere_(double a, double b, double c, double tolerance, double& first,
                                 double& second) noexcept {
    first = second = lmw::kUndefined;
    if (!std::isfinite(a) || !std::isfinite(b) || !std::isfinite(c)) {
        return 0;
    }
    const Split sa(a);
    const Split sb(b);
    const Split sc(c);
    const int largest = std::max({sa.exponent, sb.exponent, sc.exponent});
    int count = 0;
    const double bound =
        tolerance * std::max({std::fabs(sa.Scaled(-largest)), std::fabs(sb.Scaled(-largest)),
                              std::fabs(sc.Scaled(-largest))});
    if (a == 0.0 || std::fabs(sa.Scaled(-largest)) < bound) {
        if (b != 0.0) {
            Append(-sc.fraction / sb.fraction, sc.exponent - sb.exponent, count, first, second);
        }
        return count;
    }
    if (c == 0.0) {
        Append(-sb.fraction / sa.fraction, sb.exponent - sa.exponent, count, first, second);
        if (b != 0.0) {
            Append(0.0, 0, count, first, second);
        }
        return count;
    }
    // x = 2^k t makes the outer coefficients of about the same size; then all are divided by the
    // power of two m of the largest. What becomes 0 by that is negligible in the discriminant.
    const int k = (sc.exponent - sa.exponent) / 2;
    const int m = std::max({sa.exponent + 2 * k, sb.exponent + k, sc.exponent});
    const double middle = sb.Scaled(k - m);
    const double discriminant = middle * middle - 4.0 * sa.Scaled(2 * k - m) * sc.Scaled(-m);
    if (discriminant < 0.0) {
        return 0;
    }
    const double root = std::sqrt(discriminant);
    const double q = -0.5 * (middle + (b < 0.0 ? -root : root));
    Append(q / sa.fraction, m - sa.exponent - k, count, first, second);
    if (discriminant != 0.0) {
        Append(sc.fraction / q, sc.exponent - m + k, count, first, second);
    }
    return count;
}

}  // namespace math::fn
