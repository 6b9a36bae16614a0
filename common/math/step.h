#pragma once

// The piecewise constant curve: the value of a data point holds from its x up to, not including,
// the x of the next point (a monthly rainfall, a staged construction). For curves without jumps use
// linear.h or spline.h.
// Surprising: the last point already belongs to the tail, and the two slope tails do not measure
// from the end of the data that one expects (see operator()).

#include "common/export.h"
#include "common/math/curve_common.h"
#include "common/math/fpoint.h"
#include "common/math/tail_type.h"
#include "common/math/tolerance.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace math::fn::interpolate {

namespace detail {
class StepTable;
}

/// A step function over its own copy of the data points.
///
/// Tails, period and their setters come from algorithm::Common and take effect at once.
/// UpdateCalculatedValues() is wanted before many evaluations: without it every evaluation is a
/// plain binary search and an integral walks its pieces, with it both cost the same whatever the
/// number of points. The values are the same either way, the integrals up to rounding.
///
/// Points that are not ordered by x give unspecified values, never a read out of bounds. A cycle
/// whose period is not positive and finite has no values in its tail.
///
/// Threads: const calls may run at once on one object; setters and UpdateCalculatedValues() may
/// not. Copying copies the points and shares what was prepared. No evaluation allocates or throws.
///
/// Example:
///     Step rain(TailType::None(), TailType::Cycle(), months.data(), months.data() + 12);
///     rain.SetFunctionPeriod(12.0);
///     rain.UpdateCalculatedValues();
///     const double in_third_may = rain(28.5);
class LMW_API Step : public algorithm::Common {
 public:
    Step(const TailType& before, const TailType& after, const FPOINT* first, const FPOINT* last);

    /// Prepares the search and the integrals. Cannot fail: what cannot be prepared (unordered
    /// points) stays with the plain search.
    void UpdateCalculatedValues();

    /// The value at `x`; the undefined value where there is none. In this order:
    /// 1. No points: undefined. NaN gives NaN.
    /// 2. Before the first point: Calc gives the first y; None and Cycle are undefined; a slope s
    ///    gives first y + s * (first x - x), a slope counted positive away from the data.
    /// 3. At or after the last point: Calc gives the last y; None is undefined; a slope s gives
    ///    last y + s * (x - first x), a run counted from the first point; Cycle looks up
    ///    first x + fmod(x - first x, period), limited to the last x, and gives the first y when
    ///    there are fewer than two points.
    /// 4. Otherwise the y of the last point whose x is not greater than `x`.
    double operator()(const double& x) const;

    /// 0 everywhere, also where the step function jumps or has no value.
    double DyDx(double x, const math::algorithm::Tolerance<double>& tolerance) const;

    /// The integral from the lesser to the greater of the bounds, so that their order does not
    /// matter: the sum over the pieces between them of the value at the piece's left end times its
    /// width. Pieces end at every data point and at every repetition of one; a slope tail is one
    /// piece. Undefined when a piece has no value or there are no points; NaN when a bound is NaN,
    /// undefined when one is infinite. `tolerance` is not used: the sum is exact up to rounding.
    double Integrate(double a, double b, const math::algorithm::Tolerance<double>& tolerance) const;

    /// The period that a cycle has: the stored one, else the span of the data; undefined when
    /// neither is there.
    [[nodiscard]] double GetFunctionPeriodForCalculation() const;

    /// values[i] = (*this)(x[i]) for all i that both spans have. The spans may be the same memory.
    void Evaluate(std::span<const double> x, std::span<double> values) const;
    /// slopes[i] = DyDx(x[i]), likewise.
    void DyDx(std::span<const double> x, std::span<double> slopes) const;
    /// integrals[i] = Integrate(from, to[i]), likewise.
    void Integrate(double from, std::span<const double> to, std::span<double> integrals) const;

    /// First and last x and what lies beyond them.
    [[nodiscard]] CurveDomain Domain() const;

    [[nodiscard]] std::span<const FPOINT> Points() const { return points_; }

 private:
    [[nodiscard]] double ValueOf_(double x) const noexcept;
    [[nodiscard]] double ValueBefore_(double x) const noexcept;
    [[nodiscard]] double ValueInCycle_(double x) const noexcept;
    [[nodiscard]] std::size_t PieceOf_(double x) const noexcept;
    [[nodiscard]] double IntegralOfData_(double from, double to) const noexcept;
    [[nodiscard]] double IntegralAfter_(double from, double to) const noexcept;

    std::vector<FPOINT> points_;
    std::shared_ptr<const detail::StepTable> table_;
};

}  // namespace math::fn::interpolate
