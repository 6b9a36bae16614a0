#pragma once

// Arithmetic of a periodic continuation, shared by all curves.

#include "common/undefined.h"

#include <cmath>

namespace math::fn::interpolate::detail {

/// Whether something can repeat with this period.
inline bool IsPeriod(double period) noexcept {
    return std::isfinite(period) && lmw::IsDefined(period) && period > 0.0;
}

/// fmod(run, period) for run >= 0 and a valid period, in [0, period); undefined when the run is not
/// finite, for which fmod would be invalid. Exact.
inline double CyclePhase(double run, double period) noexcept {
    if (!std::isfinite(run)) {
        return lmw::kUndefined;
    }
    return run < period ? run : std::fmod(run, period);
}

/// The integral of a function of period `period` from `from` to `to`, 0 <= from <= to, where
/// `inside(u, v)` is its integral for 0 <= u <= v <= period: the rest of the cycle it begins in,
/// whole cycles, and the start of the cycle it ends in, so that no difference of large integrals is
/// taken. The cost does not depend on the number of cycles. Undefined for a run that is not finite.
template <class Inside>
double IntegralOverCycles(double from, double to, double period, const Inside& inside) noexcept {
    const double from_phase = CyclePhase(from, period);
    const double to_phase = CyclePhase(to, period);
    if (!lmw::IsDefined(from_phase) || !lmw::IsDefined(to_phase)) {
        return lmw::kUndefined;
    }
    const double cycles = std::round(((to - to_phase) - (from - from_phase)) / period);
    if (cycles == 0.0) {
        return inside(from_phase, to_phase);
    }
    const double whole = cycles > 1.0 ? (cycles - 1.0) * inside(0.0, period) : 0.0;
    return inside(from_phase, period) + whole + inside(0.0, to_phase);
}

}  // namespace math::fn::interpolate::detail
