#pragma once

// The piecewise linear curve. For a smooth curve through the same points use spline.h, for one with
// jumps step.h (repeated x values make a jump here as well).
// Surprising: a curve of two or more points has no values until UpdateCalculatedValues() succeeded,
// and every setter makes it unprepared again.

#include "common/export.h"
#include "common/math/curve_common.h"
#include "common/math/fpoint.h"
#include "common/math/tail_type.h"
#include "common/math/tolerance.h"
#include "common/status.h"

#include <cstddef>
#include <memory>
#include <span>

namespace math::fn::interpolate {

namespace detail {
class CurvePoints;
class PreparedCurve;
}  // namespace detail

/// Straight lines between data points, continued by a tail at either end.
///
/// The points are kept as they were given: cutting for a cycle happens on a copy, so a setter
/// followed by another preparation starts from the caller's data.
///
/// 1. No points: every value is undefined. One point: its y everywhere, also unprepared.
/// 2. Between two points the value is y[i] + slope * (x - x[i]) of the interval on the right of a
///    data point, at the last point that of the last interval.
/// 3. Repeated x values are a jump: the value at the jump is that of its right side, and after a
///    jump at the last point the curve goes on level.
/// 4. Beyond the data a slope tail is a straight line from the end value; Calc takes the slope of
///    the end interval; None is undefined. Cycle after the data repeats
///    [first x, first x + period], closed by the first y at its end, and makes everything before
///    the data undefined; Cycle before the data without Cycle after it is undefined there.
/// 5. NaN gives NaN.
///
/// Copies are cheap: they share the immutable points and the immutable prepared curve, and setters
/// of one do not touch the other. Threads: const calls may run at once on one object; setters and
/// UpdateCalculatedValues() may not. No evaluation allocates, throws or raises a floating-point
/// exception other than those of the result's own arithmetic. An evaluation is one table look-up
/// and one product.
///
/// Example:
///     Linear content(points.data(), points.data() + points.size(), TailType::Slope(0.0),
///                    TailType::Calc());
///     if (const gtl::status result = content.UpdateCalculatedValues(); result.Failed()) { ... }
///     const double water_content = content(suction);
class LMW_API Linear : private algorithm::Common {
 public:
    Linear(const FPOINT* first, const FPOINT* last, const TailType& before, const TailType& after);

    /// Replaces the points; the curve becomes unprepared.
    void Assign(const FPOINT* first, const FPOINT* last);

    /// Prepares the curve; does nothing when it is prepared already or has fewer than two points.
    /// Fails, and leaves the curve unprepared,
    /// - by LmwError::err_sysserv (service, code) with code -1005 when an x value is not finite or
    ///   less than the one before it, -1008 when a y value is not finite or undefined, -1004 when
    ///   fewer than two points are left in a cycle, -1001 when memory ran out;
    /// - by gtl::impl::range_error::OutOfBounds when the period of a cycle is not positive and
    ///   finite.
    gtl::status UpdateCalculatedValues();

    /// The value at `x`; the undefined value where there is none.
    double operator()(const double& x) const;

    /// The derivative at `x`, in units of y per unit of x: that of the interval the value comes
    /// from, the tail's slope beyond the data, that of the repeated point in a cycle. One point
    /// gives 0; undefined where the value is. `tolerance` is not used: the derivative is exact.
    double DyDx(double x, const math::algorithm::Tolerance<double>& tolerance) const;

    /// The integral from the lesser to the greater of the bounds, so that their order does not
    /// matter. Undefined when the bounds enclose or are a place without a value, or when one is
    /// infinite; NaN when one is NaN. The cost does not depend on the number of intervals or of
    /// periods between the bounds. `tolerance` is not used: the integral is exact up to rounding.
    double Integrate(double a, double b, const math::algorithm::Tolerance<double>& tolerance) const;

    /// values[i] = (*this)(x[i]) for all i that both spans have. The spans may be the same memory.
    void Evaluate(std::span<const double> x, std::span<double> values) const;
    /// slopes[i] = DyDx(x[i]), likewise.
    void DyDx(std::span<const double> x, std::span<double> slopes) const;
    /// integrals[i] = Integrate(from, to[i]), likewise.
    void Integrate(double from, std::span<const double> to, std::span<double> integrals) const;

    using Common::FunctionPeriod;
    using Common::TailAfter;
    using Common::TailBefore;

    /// Each makes the curve unprepared.
    void SetTailBefore(const TailType& tail);
    void SetTailAfter(const TailType& tail);
    void SetFunctionPeriod(double period);

    /// The period that a cycle has: the stored one, else the span of the data; undefined when
    /// neither is there.
    [[nodiscard]] double GetFunctionPeriodForCalculation() const;

    /// First and last x and what lies beyond them once the curve is prepared.
    [[nodiscard]] CurveDomain Domain() const;

    [[nodiscard]] std::size_t NumberOfDataPoints() const;

    /// The x values as they were given.
    [[nodiscard]] const double* begin() const;
    [[nodiscard]] const double* end() const;

 private:
    std::shared_ptr<const detail::CurvePoints> points_;
    std::shared_ptr<const detail::PreparedCurve> prepared_;
};

}  // namespace math::fn::interpolate
