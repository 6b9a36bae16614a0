#pragma once

// What a curve does beyond its first and beyond its last data point.
// Surprising: a tail is one double with reserved values, so a slope that happens to equal a
// reserved value *is* that tail: Slope(1.1e308) is Calc(). This is how tails are stored in
// projects.

#include "common/export.h"
#include "common/status.h"
#include "common/undefined.h"

#include <string>

namespace math::fn {

/// The continuation of a curve beyond one of its ends.
///
/// A default-constructed tail is a slope tail of slope 0: the curve stays level. The reserved
/// values are tested by exact equality, before any arithmetic; -1.1e308 and the like are plain
/// slopes. Copying is free; a tail is a value and has no thread rules.
struct TailType {
    /// None() is the undefined value; Calc() 1.1e308; Cycle() the most negative finite double; any
    /// other value is a slope, in units of y per unit of x.
    double value = 0.0;

    /// No tail: the curve is undefined beyond this end.
    [[nodiscard]] static constexpr TailType None() noexcept { return {lmw::kUndefined}; }
    /// Continue with the curve's own slope at this end; a step function keeps its end value.
    [[nodiscard]] static constexpr TailType Calc() noexcept { return {1.1e308}; }
    /// Repeat the curve periodically.
    [[nodiscard]] static constexpr TailType Cycle() noexcept { return {-lmw::kUndefined}; }
    /// A straight line with slope `s`, in units of y per unit of x.
    [[nodiscard]] static constexpr TailType Slope(double s) noexcept { return {s}; }

    /// Compare the stored doubles exactly.
    bool operator==(const TailType&) const = default;
};

}  // namespace math::fn

namespace str {

/// "None", "Calc", "Cycle", or the slope as the shortest number that reads back to the same double.
LMW_API std::wstring as_wstring(const math::fn::TailType& tail);

/// The inverse of as_wstring. The three words are case-sensitive; any other text is read as a
/// number, and the status is that of the number conversion (str::ParseDouble). On failure `tail`
/// stays untouched.
LMW_API gtl::status from_wstring(const std::wstring& text, math::fn::TailType& tail);

}  // namespace str
