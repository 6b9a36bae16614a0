#pragma once

// The cubic Hermite spline whose slopes follow from a tension: slopes, smoothing, coefficients.
// The formulas and their sources stand at the class Spline; this file has no other policy.

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace math::fn::interpolate::detail {

/// The shape parameter of a tension: 3 - 0.03 * tension, limited to [0, 3]. No unit.
[[nodiscard]] double ShapeParameter(std::uint32_t tension) noexcept;

/// Whether every x is less than the next one; false when one is NaN.
[[nodiscard]] bool StrictlyIncreasing(std::span<const double> x) noexcept;

/// Points with a slope at each. Kept as one array per quantity, so that the loops over them can be
/// vectorised.
class TensionSpline {
 public:
    /// Two points or more, x strictly increasing. Computes the slopes.
    TensionSpline(std::vector<double> x, std::vector<double> y, double shape);

    /// Moves the inner points towards the curve over their neighbours and computes the slopes anew.
    /// `smooth` from 0 (half way) to 100 and more (not at all).
    ///
    /// Each new value lies between the old one and a value between its neighbours', at most half
    /// way: monotone values stay monotone and no value leaves the range of the values around it. A
    /// smoothing spline would do neither, and would lift a water content above saturation.
    void Smooth(std::uint32_t smooth);

    [[nodiscard]] std::span<const double> Slopes() const noexcept { return slope_; }
    [[nodiscard]] std::span<const double> Y() const noexcept { return y_; }

    /// c0, c1, c2, c3 of each interval: the cubic with the values and slopes of its two points.
    [[nodiscard]] std::vector<double> Coefficients() const;

    /// The points. Afterwards there is nothing else to be had from the object.
    [[nodiscard]] std::vector<double> TakeX() { return std::move(x_); }
    [[nodiscard]] std::vector<double> TakeY() { return std::move(y_); }

 private:
    void ComputeSlopes_();
    template <class Power>
    void ComputeInnerSlopes_(const Power& power);

    double shape_;
    std::vector<double> x_;
    std::vector<double> y_;
    std::vector<double> slope_;
    std::vector<double> width_;   ///< of the interval that begins at each point but the last
    std::vector<double> secant_;  ///< of that interval
};

}  // namespace math::fn::interpolate::detail
