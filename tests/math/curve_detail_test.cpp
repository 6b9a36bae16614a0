#include "common/math/curve_construction.h"
#include "common/math/detail/breakpoint_index.h"
#include "common/math/detail/construction_scope.h"
#include "common/math/detail/cycle.h"
#include "common/math/detail/piecewise_polynomial.h"
#include "common/math/detail/tension_spline.h"
#include "common/undefined.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace {

using namespace lmw::test;
using math::fn::interpolate::detail::BreakpointIndex;
using namespace math::fn::interpolate::detail;
using math::fn::interpolate::detail::ShapeParameter;
using math::fn::interpolate::detail::TensionSpline;

std::size_t PlainInterval(const std::vector<double>& x, double site) {
    const auto inner = std::upper_bound(x.begin() + 1, x.end() - 1, site);
    return static_cast<std::size_t>(inner - (x.begin() + 1));
}

// Spacings for which one of the bucket rules is made, and those that none of them likes.
TEST(BreakpointIndex, AgreesWithBinarySearchForEverySpacing) {
    PropertyRandom random;
    const std::vector<std::function<double()>> spacings = {
        [&] { return random.Uniform(-3.0, 1000.0); },
        [&] { return random.LogUniform(1e-2, 1e6); },
        [&] { return -random.LogUniform(1e-2, 1e6); },
        [&] { return random.SignedLogUniform(1e-300, 1e300); },
        [&] { return 1e9 + random.Uniform(0.0, 1e-5); },
        [&] { return random.Integer(0, 5) + 1e-6 * random.Uniform(0.0, 1.0); },
        [&] { return static_cast<double>(random.Integer(-3, 3)); },
        [&] { return random.Chance(0.5) ? 0.0 : random.LogUniform(1e-5, 1e5); },
        [&] { return 5e-324 * random.Integer(0, 40); },
        [&] { return random.Chance(0.5) ? -1.5e308 : 1e308 * random.Uniform(-1.0, 1.0); },
        [&] { return random.Chance(0.1) ? 1e300 : random.Uniform(0.0, 1.0); },
    };
    for (int round = 0; round < 2000; ++round) {
        const auto& spacing = random.Pick(spacings);
        std::vector<double> x;
        for (int i = random.Integer(2, 60); i > 0; --i) {
            x.push_back(spacing());
        }
        std::sort(x.begin(), x.end());
        if (x.front() == x.back()) {
            continue;  // no site lies in [first, last)
        }
        BreakpointIndex index;
        index.Build(x);
        std::vector<double> sites;
        for (const double breakpoint : x) {
            sites.insert(sites.end(), {breakpoint, std::nextafter(breakpoint, -HUGE_VAL),
                                       std::nextafter(breakpoint, HUGE_VAL)});
        }
        sites.push_back(0.0);
        sites.push_back(-0.0);
        for (int i = 0; i < 30; ++i) {
            sites.push_back(spacing());
        }
        for (const double site : sites) {
            if (site >= x.front() && site < x.back()) {
                ASSERT_EQ(index.Find(x.data(), site), PlainInterval(x, site))
                    << Exact(site) << " in " << testing::PrintToString(x);
            }
        }
    }
}

TEST(PiecewisePolynomial, ReportsEveryErrorByItsNumber) {
    PiecewisePolynomial none;
    EXPECT_EQ(static_cast<int>(none.Construct()), -1000);
    EXPECT_EQ(static_cast<int>(none.SetOrder(kLinearOrder)), -1000);
    EXPECT_EQ(static_cast<int>(none.SetCoefficients({1.0, 2.0})), -1000);
    EXPECT_EQ(static_cast<int>(none.Start({1.0}, {1.0})), -1004);
    EXPECT_EQ(static_cast<int>(none.Start({1.0, 0.0}, {1.0, 2.0})), -1005);
    EXPECT_EQ(static_cast<int>(none.Start({1.0, HUGE_VAL}, {1.0, 2.0})), -1005);
    EXPECT_EQ(static_cast<int>(none.Start({0.0, 1.0}, {1.0})), -1008);
    EXPECT_EQ(static_cast<int>(none.Start({0.0, 1.0}, {1.0, lmw::kUndefined})), -1008);
    PiecewisePolynomial started;
    ASSERT_EQ(started.Start({0.0, 1.0}, {1.0, 2.0}), EngineError::kNone);
    EXPECT_EQ(static_cast<int>(started.SetOrder(3)), -1010);
    EXPECT_EQ(static_cast<int>(started.SetCoefficients({1.0, 2.0})), -1010);
    ASSERT_EQ(started.SetOrder(kCubicOrder), EngineError::kNone);
    EXPECT_EQ(static_cast<int>(started.Construct()), -1010);
    EXPECT_EQ(static_cast<int>(started.SetCoefficients({1.0, 2.0, 3.0})), -1016);
    EXPECT_EQ(static_cast<int>(started.SetCoefficients({1.0, 2.0, 3.0, std::nan("")})), -1016);
    EXPECT_EQ(started.SetCoefficients({1.0, 2.0, 3.0, 4.0}), EngineError::kNone);
}

TEST(PiecewisePolynomial, EvaluatesSuppliedCubicsByHornerFromTheLeftEnd) {
    PiecewisePolynomial cubic;
    ASSERT_EQ(cubic.Start({-1.0, 0.5, 2.0}, {0.0, 0.0, 0.0}), EngineError::kNone);
    ASSERT_EQ(cubic.SetOrder(kCubicOrder), EngineError::kNone);
    ASSERT_EQ(cubic.SetCoefficients({1.0, -2.0, 0.5, 0.1, 7.0, 3.0, -1.0, 0.3}),
              EngineError::kNone);
    const auto horner = [](double c0, double c1, double c2, double c3, double d) {
        return c0 + d * (c1 + d * (c2 + d * c3));
    };
    EXPECT_EQ(cubic.Value(0.3), horner(1.0, -2.0, 0.5, 0.1, 0.3 + 1.0));
    EXPECT_EQ(cubic.Value(0.5), 7.0) << "a breakpoint belongs to its right";
    EXPECT_EQ(cubic.Value(2.0), horner(7.0, 3.0, -1.0, 0.3, 1.5)) << "the last to the last";
    EXPECT_EQ(cubic.Derivative(0.5), 3.0);
    EXPECT_DOUBLE_EQ(cubic.Derivative(2.0), 3.0 - 2.0 * 1.5 + 0.9 * 2.25);
    EXPECT_TRUE(std::isnan(cubic.Value(std::nan(""))));
    EXPECT_TRUE(std::isnan(cubic.Derivative(std::nan(""))));
    const auto antiderivative = [](double d) {
        return d * (7.0 + d * (1.5 + d * (-1.0 / 3.0 + d * 0.075)));
    };
    EXPECT_DOUBLE_EQ(cubic.Integral(0.75, 2.0), antiderivative(1.5) - antiderivative(0.25));
}

TEST(PiecewisePolynomial, ConstructsExactSecants) {
    PiecewisePolynomial lines;
    ASSERT_EQ(lines.Start({0.1, 0.4, 2.2}, {1.0, 7.0, -0.7}), EngineError::kNone);
    ASSERT_EQ(lines.SetOrder(kLinearOrder), EngineError::kNone);
    ASSERT_EQ(lines.Construct(), EngineError::kNone);
    const auto c = lines.Coefficients();
    ASSERT_EQ(c.size(), 4U);
    EXPECT_EQ(c[1], (7.0 - 1.0) / (0.4 - 0.1));  // the product with 1 / 0.3 is another double
    EXPECT_EQ(c[3], (-0.7 - 7.0) / (2.2 - 0.4));
}

TEST(ConstructionScope, MarksTheThreadAndRestoresWhatItFound) {
    using math::fn::interpolate::ConstructingCurve;
    EXPECT_EQ(ConstructingCurve(), 0U);
    {
        const ConstructionScope outer;
        {
            const ConstructionScope inner;
            EXPECT_EQ(ConstructingCurve(), 1U);
        }
        EXPECT_EQ(ConstructingCurve(), 1U) << "the previous value, not zero";
    }
    EXPECT_EQ(ConstructingCurve(), 0U);
}

TEST(Cycle, IntegratesTheRestOfOneCycleWholeOnesAndTheStartOfTheLast) {
    // The integral of f(u) = u over [0, 2], repeated: 2 for each whole cycle.
    const auto inside = [](double u, double v) { return 0.5 * (v - u) * (v + u); };
    EXPECT_DOUBLE_EQ(IntegralOverCycles(1.0, 9.0, 2.0, inside), 1.5 + 3.0 * 2.0 + 0.5);
    EXPECT_DOUBLE_EQ(IntegralOverCycles(2.0, 4.0, 2.0, inside), 2.0);
    EXPECT_DOUBLE_EQ(IntegralOverCycles(0.0, 2e15, 2.0, inside), 2e15);
    EXPECT_EQ(IntegralOverCycles(0.0, HUGE_VAL, 2.0, inside), lmw::kUndefined);
    // A short stretch over the seam keeps its digits.
    const double bit = 0x1p-30;
    EXPECT_DOUBLE_EQ(IntegralOverCycles(2.0 - bit, 2.0 + bit, 2.0, inside), 2.0 * bit);
}

// The formulas as they are written at the class Spline.
double PlainInnerSlope(double h1, double d1, double h2, double d2, double p) {
    if (d1 * d2 <= 0.0) {
        return 0.0;
    }
    const double larger = std::max(std::fabs(d1), std::fabs(d2));
    const double u1 = std::fabs(d1) / larger;
    const double u2 = std::fabs(d2) / larger;
    const double w1 = h2 / (h1 + h2);
    const double w2 = 1.0 - w1;
    const double mean = larger * (w1 * std::pow(u1, 1.0 - p) + w2 * std::pow(u2, 1.0 - p)) /
                        (w1 * std::pow(u1, -p) + w2 * std::pow(u2, -p));
    return std::copysign(std::min(mean, 3.0 * std::min(std::fabs(d1), std::fabs(d2))), d1);
}

double PlainEndSlope(double h1, double d1, double h2, double d2, double p) {
    const double e = ((2.0 * h1 + h2) * d1 - h1 * d2) / (h1 + h2);
    const double m = d1 + (1.0 - p / 3.0) * (e - d1);
    if (m * d1 <= 0.0) {
        return 0.0;
    }
    return std::copysign(std::min(std::fabs(m), 3.0 * std::fabs(d1)), d1);
}

TEST(TensionSpline, ShapeFollowsTensionWithinItsRange) {
    EXPECT_EQ(ShapeParameter(0), 3.0);
    EXPECT_EQ(ShapeParameter(50), 1.5);
    EXPECT_EQ(ShapeParameter(100), 0.0);
    EXPECT_EQ(ShapeParameter(4294967295U), 0.0);
}

TEST(TensionSpline, SlopesAreThoseOfThePlainFormulas) {
    PropertyRandom random;
    for (int round = 0; round < 500; ++round) {
        const double p = ShapeParameter(static_cast<unsigned>(random.Integer(0, 110)));
        std::vector<double> x = {random.Uniform(-1.0, 1.0)};
        std::vector<double> y = {0.0};
        for (int i = random.Integer(2, 30); i > 0; --i) {
            x.push_back(x.back() + random.LogUniform(1e-3, 1e3));
            y.push_back(y.back() + (random.Chance(0.1)   ? 0.0
                                    : random.Chance(0.3) ? -random.LogUniform(1e-6, 1e6)
                                                         : random.LogUniform(1e-6, 1e6)));
        }
        const TensionSpline spline(x, y, p);
        const std::size_t n = x.size();
        const auto h = [&](std::size_t i) { return x[i + 1] - x[i]; };
        const auto d = [&](std::size_t i) { return (y[i + 1] - y[i]) / h(i); };
        for (std::size_t i = 0; i < n; ++i) {
            const double plain = i == 0 ? PlainEndSlope(h(0), d(0), h(1), d(1), p)
                                 : i == n - 1
                                     ? PlainEndSlope(h(n - 2), d(n - 2), h(n - 3), d(n - 3), p)
                                     : PlainInnerSlope(h(i - 1), d(i - 1), h(i), d(i), p);
            EXPECT_NEAR(spline.Slopes()[i], plain, 1e-11 * std::fabs(plain)) << i << " p " << p;
        }
    }
}

TEST(TensionSpline, SecantsFarApartInSizeDoNotOverflow) {
    for (const double p : {0.0, 0.03, 1.5, 2.97, 3.0}) {
        const TensionSpline spline({0.0, 1.0, 2.0, 3.0}, {0.0, 1e-200, 1e150, 2e150}, p);
        EXPECT_GE(spline.Slopes()[1], 0.0) << p;
        EXPECT_LE(spline.Slopes()[1], 3e-200) << p;
    }
}

}  // namespace
