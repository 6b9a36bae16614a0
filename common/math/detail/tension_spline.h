#pragma once

// The cubic Hermite spline whose slopes follow from a tension: slopes, smoothing, coefficients.
// The formulas and their sources stand at the class Spline; this file has no other policy.

#include "common/math/fpoint.h"

#include <cstdint>
#include <span>
#include <vector>

namespace math::fn::interpolate::detail {

/// The shape parameter of a tension: 3 - 0.03 * tension, limited to [0, 3]. No unit.
[[nodiscard]] double ShapeParameter(std::uint32_t tension) noexcept;

/// Whether every x is less than the next one; false when one is NaN.
[[nodiscard]] bool StrictlyIncreasing(std::span<const FPOINT> points) noexcept;

/// Writes the slope of the spline at each point into its third double. At least two points, x
/// strictly increasing, everything finite.
void ComputeSlopes(std::span<FPOINT> points, double shape) noexcept;

/// Moves the inner points towards the curve over their neighbours and computes the slopes anew.
/// `smooth` from 0 (half way) to 100 and more (not at all). The slopes of `points` are wanted on
/// entry.
///
/// Each new value lies between the old one and a value between its neighbours', at most half way:
/// monotone values stay monotone and no value leaves the range of the values around it. A smoothing
/// spline would do neither, and would lift a water content above saturation.
void SmoothPoints(std::vector<FPOINT>& points, std::uint32_t smooth, double shape);

/// c0, c1, c2, c3 of each interval: the cubic with the values and slopes of its two points.
[[nodiscard]] std::vector<double> HermiteCoefficients(std::span<const FPOINT> points);

}  // namespace math::fn::interpolate::detail
