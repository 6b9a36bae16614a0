#pragma once

// The undefined value: what every numeric query of the library returns when it has no value, and
// what data tables hold where a value is missing. Surprising: it is an ordinary finite double, so
// arithmetic with it gives nonsense, not NaN. Test before computing.

#include <limits>

namespace lmw {

/// The undefined (missing) value: the largest finite double, 1.7976931348623157e308.
inline constexpr double kUndefined = std::numeric_limits<double>::max();

/// The one test of the undefined value: true exactly when `value` differs from kUndefined, so NaN,
/// the infinities and -1.797e308 are defined. Raises no floating-point exception, for NaN either.
[[nodiscard]] constexpr bool IsDefined(double value) noexcept {
    return value != kUndefined;
}

}  // namespace lmw
