#pragma once

// The piecewise polynomial curve: straight lines without tension, a shape-preserving cubic with it.
// Surprising: a curve of two or more points has no values until UpdateCalculatedValues() succeeded,
// and every setter makes it unprepared again.

#include "common/export.h"
#include "common/math/curve_common.h"
#include "common/math/fpoint.h"
#include "common/math/tail_type.h"
#include "common/math/tolerance.h"
#include "common/status.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace math::fn::interpolate {

namespace detail {
class CurvePoints;
class PreparedCurve;
}  // namespace detail

/// A piecewise polynomial through (or, smoothed, near) the data points, continued by a tail at
/// either end.
///
/// Tension 0 makes straight lines, as Linear does. Any other tension makes a cubic Hermite spline
/// whose slopes follow from the neighbouring secants d1, d2 and widths h1, h2 by the shape
/// parameter p = 3 - 0.03 * tension, limited to [0, 3]:
///
///     slope = 0                             where d1 * d2 <= 0
///           = sign * min(L, 3 * min(|d1|, |d2|))   elsewhere,
///     L     = (w1 |d1|^(1-p) + w2 |d2|^(1-p)) / (w1 |d1|^-p + w2 |d2|^-p),
///     w1    = h2 / (h1 + h2),  w2 = 1 - w1.
///
/// p = 1 is the weighted harmonic mean of Fritsch and Butland (1984, SIAM J. Sci. Stat. Comput. 5),
/// p = 0 (tension 100) the parabolic slope of de Boor and Swartz (1977, J. Approx. Theory 21), both
/// under the bound of Fritsch and Carlson (1980, SIAM J. Numer. Anal. 17). Small tensions lean
/// towards the flatter secant. At the ends the slope is d + (1 - p/3)(e - d), d the end secant and
/// e the slope of the parabola through three points, 0 where its sign differs from d's, limited to
/// 3 |d|.
///
/// 1. Monotone data give a monotone curve and collinear data a straight line, at every tension and
///    every smoothing; the curve never leaves the range of the two points it runs between.
/// 2. Smooth 100 or more passes through the points. Below, the points move half way at most
///    towards the Hermite cubic over their neighbours, by (1 - smooth / 100) / 2, and the slopes
///    are computed anew. Exactly 100 also makes the end values those of the end points, bit for
///    bit (where several points share the first x, the first of them, while Linear has the last).
///    Without tension, smooth moves nothing.
/// 3. Values, derivatives, integrals, tails, one point, no points and NaN are as with Linear. A
///    cycle with tension is padded by up to ten points at either side instead of closed by one, so
///    that it is smooth where it repeats.
///
/// Smooth and tension have no unit; 0 to 100 is their range of use. Copies are cheap: they share
/// the immutable points and the immutable prepared curve, and setters of one do not touch the
/// other. Threads: const calls may run at once on one object; setters and UpdateCalculatedValues()
/// may not. No evaluation allocates or throws.
///
/// Example:
///     Spline content(100, 50, TailType::Slope(0.0), TailType::Calc(), points.data(),
///                    points.data() + points.size(), lmw::kUndefined);
///     if (const gtl::status result = content.UpdateCalculatedValues(); result.Failed()) { ... }
///     const double slope = content.DyDx(suction, math::algorithm::Tolerance<double>());
class LMW_API Spline : private algorithm::Common {
 public:
    /// `period` is a length in x, undefined for the span of the data. An empty range of points
    /// makes an empty curve.
    Spline(std::uint32_t smooth, std::uint32_t tension, const TailType& before,
           const TailType& after, const FPOINT* first, const FPOINT* last, double period);

    /// Replaces the points; the curve becomes unprepared.
    void Assign(const FPOINT* first, const FPOINT* last);

    /// Prepares the curve; does nothing when it is prepared already or has fewer than two points.
    /// Fails, and leaves the curve unprepared, as Linear does; with tension also by message 22762
    /// when the x values do not increase strictly, which names the first point at fault.
    gtl::status UpdateCalculatedValues();

    /// The value at `x`; the undefined value where there is none.
    double operator()(const double& x) const;

    /// The derivative at `x`, in units of y per unit of x. One point gives 0; undefined where the
    /// value is. `tolerance` is not used: the derivative is exact.
    double DyDx(double x, const math::algorithm::Tolerance<double>& tolerance) const;

    /// The integral from the lesser to the greater of the bounds; see Linear::Integrate.
    double Integrate(double a, double b, const math::algorithm::Tolerance<double>& tolerance) const;

    /// values[i] = (*this)(x[i]) for all i that both spans have. The spans may be the same memory.
    void Evaluate(std::span<const double> x, std::span<double> values) const;
    /// slopes[i] = DyDx(x[i]), likewise.
    void DyDx(std::span<const double> x, std::span<double> slopes) const;
    /// integrals[i] = Integrate(from, to[i]), likewise.
    void Integrate(double from, std::span<const double> to, std::span<double> integrals) const;

    [[nodiscard]] std::uint32_t Smooth() const { return smooth_; }
    [[nodiscard]] std::uint32_t Tension() const { return tension_; }
    /// Coefficients per interval: 4 (cubic) with tension, else 2 (linear).
    [[nodiscard]] std::uint32_t Order() const { return tension_ > 0 ? 4 : 2; }
    using Common::FunctionPeriod;
    using Common::TailAfter;
    using Common::TailBefore;

    /// Each makes the curve unprepared.
    void SetSmooth(std::uint32_t smooth);
    void SetTension(std::uint32_t tension);
    void SetTailBefore(const TailType& tail);
    void SetTailAfter(const TailType& tail);
    void SetFunctionPeriod(double period);

    /// The period that a cycle has: the stored one, else the span of the data; undefined when
    /// neither is there.
    [[nodiscard]] double GetFunctionPeriodForCalculation() const;

    /// First and last x and what lies beyond them once the curve is prepared.
    [[nodiscard]] CurveDomain Domain() const;

    [[nodiscard]] std::size_t NumberOfDataPoints() const;

    /// First and last x as they were given; undefined without points.
    [[nodiscard]] double Min() const;
    [[nodiscard]] double Max() const;

    /// The x values as they were given.
    [[nodiscard]] const double* begin() const;
    [[nodiscard]] const double* end() const;

    /// The polynomial coefficients, empty while unprepared: for each interval of the prepared
    /// breakpoints (a cycle adds some) Order() doubles c0, c1, ... of the powers of x - x[i]. Valid
    /// until the next setter.
    [[nodiscard]] std::span<const double> GetCoefficients() const;

 private:
    std::uint32_t smooth_;
    std::uint32_t tension_;
    std::shared_ptr<const detail::CurvePoints> points_;
    std::shared_ptr<const detail::PreparedCurve> prepared_;
};

}  // namespace math::fn::interpolate
