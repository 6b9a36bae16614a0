#pragma once

// A range of numbers with two ends of their own kinds. Plain data: the errors of values outside a
// range are in range_error.h.

#include "common/range_error.h"

namespace gtl {

/// The numbers between `lower` and `upper`, in the unit of the values it is asked about.
///
/// 1. An end is absent exactly when its bound is 0 and its kind is `none`; a default-made range is
///    unbounded and contains everything.
/// 2. A bound belongs to the range only when its kind is `inclusive`.
/// 3. NaN is contained in every range: it compares with no bound.
template <class Number>
struct range {
    Number lower{};
    bound_kind lower_kind = bound_kind::none;
    Number upper{};
    bound_kind upper_kind = bound_kind::none;

    /// By design: a lower bound other than 0 takes part in the comparison although its kind is
    /// `none` (and excludes the bound itself). Ranges stored with a bound but without its kind rely
    /// on it; going by the kind alone would let every value pass them.
    [[nodiscard]] constexpr bool HasLower() const noexcept {
        return lower != Number{} || lower_kind != bound_kind::none;
    }

    /// By design: likewise for the upper end.
    [[nodiscard]] constexpr bool HasUpper() const noexcept {
        return upper != Number{} || upper_kind != bound_kind::none;
    }

    [[nodiscard]] constexpr bool Contains(Number value) const noexcept {
        if (HasLower() &&
            (value < lower || (value == lower && lower_kind != bound_kind::inclusive))) {
            return false;
        }
        return !(HasUpper() &&
                 (value > upper || (value == upper && upper_kind != bound_kind::inclusive)));
    }

    friend constexpr bool operator==(const range&, const range&) = default;
};

}  // namespace gtl
