#pragma once

// The closed-form water content curve of Fredlund and Xing, and its fit to measured points. For a
// curve through tabulated points use the interpolants of common/math.
// Surprising: pressures are pore-water pressures, so suctions are negative arguments.

#include "common/export.h"
#include "common/math/fpoint.h"
#include "common/math/unit_set.h"
#include "common/undefined.h"

#include <array>
#include <cstdint>
#include <span>
#include <utility>

namespace math::fn::flow {

struct FredXingFit;

/// Volumetric water content as a function of pore-water pressure.
///
/// With suction s = -pressure, limit L and residual suction r = 0.003 L:
///
///     theta(s) = theta_s * C(s) * [1 / ln(e + (s/a)^n)]^m
///     C(s)     = 1 - ln(1 + s/r) / ln(1 + L/r)
///
/// after D. G. Fredlund and A. Xing (1994), Equations for the soil-water characteristic curve,
/// Canadian Geotechnical Journal 31(4), 521-532, eqs. 26 and 31.
///
/// 1. A pressure of 0 or more gives theta_s, and so does any pressure when a is 0 or less.
/// 2. At the limit the water content is 0; beyond it nothing is clamped and it is negative.
/// 3. If a, n, m, theta_s or the limit is the undefined value, every result is, whatever the
///    pressure. By design: the residual suction is tied to the limit by the factor 0.003 (3000 kPa
///    for the standard limit of 1e6 kPa) and is no parameter; fitted parameters stored in projects
///    rely on it.
///
/// A default-constructed curve has a = n = m = theta_s = 0 and an undefined limit: it is not valid
/// and evaluates to the undefined value. A plain value: copying is free, any number of threads may
/// evaluate one.
class LMW_API FredXing {
 public:
    FredXing() noexcept = default;

    /// `a` and `limit` are suctions in the caller's pressure unit, `theta_s` the saturated water
    /// content (volume per volume), `n` and `m` pure numbers.
    FredXing(const double& a, const double& n, const double& m, const double& thetaS,
             const double& limit) noexcept
        : a_(a), n_(n), m_(m), theta_s_(thetaS), limit_(limit) {}

    /// The water content at a pore-water pressure in the unit of `a`; negative pressures are
    /// suctions. Allocates nothing and throws nothing, and raises no overflow where the result is
    /// finite; costs two powers and four logarithms.
    [[nodiscard]] double operator()(const double& pressure) const noexcept;

    [[nodiscard]] double A() const noexcept { return a_; }
    [[nodiscard]] double N() const noexcept { return n_; }
    [[nodiscard]] double M() const noexcept { return m_; }

    /// Whether a, n, m and the limit are defined and a, n, m and theta_s positive.
    /// By design: an undefined theta_s passes.
    [[nodiscard]] bool IsValid() const noexcept;

    /// (-limit, 0): the pressures over which the curve varies.
    [[nodiscard]] std::pair<double, double> PressureLimits() const noexcept {
        return {-limit_, 0.0};
    }

    /// The standard limit of 1e6 kPa in the pressure unit of `units`.
    [[nodiscard]] static double CalcLimit(const math::UnitSet& units) noexcept;

    /// Fits a, n and m to `count` measured points (x = pressure, y = water content) with theta_s
    /// held and the limit CalcLimit(units). On entry a, n, m are starting values (used when they
    /// are positive and finite), on return the fitted ones. Returns the code of FredXingFit; -1
    /// leaves them unchanged.
    [[nodiscard]] static int EstimateParam(const double& thetaS, FPOINT* points, int count,
                                           const math::UnitSet& units, double& a, double& n,
                                           double& m);

    /// The same with a full report. `start` are the starting values of a, n, m.
    [[nodiscard]] static FredXingFit Fit(double thetaS, std::span<const FPOINT> points,
                                         const math::UnitSet& units,
                                         const std::array<double, 3>& start);

 private:
    double a_ = 0.0;
    double n_ = 0.0;
    double m_ = 0.0;
    double theta_s_ = 0.0;
    double limit_ = lmw::kUndefined;
};

/// How a fit ended and what it found.
///
/// Method: Levenberg-Marquardt with the analytic Jacobian in (ln a, ln n, ln m), each parameter
/// kept within its bounds (a in limit * [1e-9, 0.1], n in [0.05, 100], m in [0.02, 50]) by freezing
/// it there while the sum of squares falls outwards (K. Levenberg 1944, Quarterly of Applied
/// Mathematics 2, 164-168; D. W. Marquardt 1963, SIAM Journal 11, 431-441). It starts from the
/// caller's values and from the best few of a fixed grid: a at suctions spread over the measured
/// ones, three values each of n and m.
///
/// 1. The sum of squares is never larger than that of the caller's start.
/// 2. Points with an undefined or non-finite coordinate are skipped. Points at a pressure of 0 or
///    more count in the sum of squares only.
/// 3. The result does not depend on the unit of pressure beyond rounding.
struct FredXingFit {
    enum Code : std::int32_t {
        kBadInput =
            -1,  ///< theta_s not positive and finite, or fewer than three points with suction
        kConverged = 0,       ///< a minimum inside the bounds
        kIterationLimit = 1,  ///< the best values within kMaxIterations of a start
        /// A parameter stands at a bound, or the caller's start lies beyond one and is better: the
        /// data do not determine it.
        kAtBound = 2,
        /// A minimum inside the bounds, but one of many: the data do not determine the parameters
        /// (fewer than three different suctions, or effects that cannot be told apart).
        kUndetermined = 3,
    };
    static constexpr int kMaxIterations = 300;

    Code code = kBadInput;
    double a = lmw::kUndefined;  ///< in the pressure unit of the points
    double n = lmw::kUndefined;
    double m = lmw::kUndefined;
    int iterations = 0;                         ///< of all starts together
    int points = 0;                             ///< points used, those without suction included
    double sum_of_squares = lmw::kUndefined;    ///< of the residuals, (volume/volume)^2
    double root_mean_square = lmw::kUndefined;  ///< of the residuals, volume/volume
    /// Row-major 3 x 3 covariance of (a, n, m): s^2 (J^T J)^-1 with s^2 = sum_of_squares / (points
    /// - 3); all undefined with three points or fewer, at a bound, or when the matrix is singular.
    std::array<double, 9> covariance = {lmw::kUndefined, lmw::kUndefined, lmw::kUndefined,
                                        lmw::kUndefined, lmw::kUndefined, lmw::kUndefined,
                                        lmw::kUndefined, lmw::kUndefined, lmw::kUndefined};
};

}  // namespace math::fn::flow
