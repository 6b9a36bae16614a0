#pragma once

// The quadratic equation a x^2 + b x + c = 0 with real roots, in the form that loses no digits to
// cancellation between b and the root of the discriminant, for coefficients of any size.
// Surprising: the number of roots is that of the representable ones; there may be one although a is
// not 0.

#include "common/export.h"
#include "common/undefined.h"

#include <cmath>

namespace math::fn {

/// The solver. It has no state.
///
/// With q = -(b + sign(b) sqrt(b^2 - 4 a c)) / 2, sign(0) counting as +1, the roots are q / a and c
/// / q, in this order (W. H. Press et al., Numerical Recipes, 3rd edition 2007, equations 5.6.4 and
/// 5.6.5).
///
/// 1. Each root found is, up to a few roundings, the exact root of an equation whose coefficients
///    differ from those given by a few roundings; roots whose magnitudes differ are accurate to a
///    few roundings themselves.
/// 2. |a| below `tolerance` times the largest of |a|, |b|, |c| counts as 0: the equation is linear
///    with the one root -c / b.
/// 3. A discriminant of 0 (as computed) gives one root, a negative one none.
/// 4. Nothing overflows, and nothing that matters underflows, wherever in the range of double the
///    coefficients lie. A root that is itself too large for a double is left out.
/// 5. A coefficient that is not finite, or none but c different from 0: no roots.
class LMW_API QuadraticEqn {
 public:
    /// Solves the equation and returns the number of roots, 0 to 2. `first` and `second` get the
    /// roots in their order; one that is not there is lmw::kUndefined. `tolerance` has no unit,
    /// such as 1e-20.
    static int Solve(double a, double b, double c, double tolerance, double& first,
                     double& second) noexcept;

 private:
    static int SolveAnywhere_(double a, double b, double c, double tolerance, double& first,
                              double& second) noexcept;
};

// Implementation. The usual sizes are inline, because the inverse map of quadrilaterals solves one
// equation a point.

inline int QuadraticEqn::Solve(double a, double b, double c, double tolerance, double& first,
                               double& second) noexcept {
    const double abs_a = std::fabs(a);
    const double abs_b = std::fabs(b);
    const double abs_c = std::fabs(c);
    double largest = abs_a < abs_b ? abs_b : abs_a;
    largest = largest < abs_c ? abs_c : largest;
    // Within the bounds below no product and no quotient overflows, and what underflows is too
    // small to matter. NaN fails one of them.
    if (largest < 0x1p500) {
        if (abs_a < tolerance * largest) {
            if (abs_b > 0x1p-500 && abs_c < 0x1p500) {
                first = -c / b;
                second = lmw::kUndefined;
                return 1;
            }
        } else if (abs_a > 0x1p-500) {
            const double square = b * b;
            const double product = 4.0 * a * c;
            if (square + std::fabs(product) > 0x1p-900) {
                first = second = lmw::kUndefined;
                const double discriminant = square - product;
                if (discriminant < 0.0) {
                    return 0;
                }
                const double root = std::sqrt(discriminant);
                const double q = -0.5 * (b + (b < 0.0 ? -root : root));
                first = q / a;
                if (discriminant == 0.0) {
                    return 1;
                }
                second = c / q;
                return 2;
            }
        }
    }
    return SolveAnywhere_(a, b, c, tolerance, first, second);
}

}  // namespace math::fn
