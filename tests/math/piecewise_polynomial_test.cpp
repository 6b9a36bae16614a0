#include "common/math/detail/piecewise_polynomial.h"

#include "common/math/curve_construction.h"
#include "common/math/detail/construction_scope.h"
#include "common/math/detail/cycle.h"
#include "common/undefined.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using math::fn::interpolate::detail::EngineError;
using math::fn::interpolate::detail::kCubicOrder;
using math::fn::interpolate::detail::kLinearOrder;
using math::fn::interpolate::detail::PiecewisePolynomial;

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
    ASSERT_EQ(lines.Start({0.1, 0.4, 0.4, 2.2}, {1.0, 3.0, 8.0, -0.7}), EngineError::kNone);
    ASSERT_EQ(lines.SetOrder(kLinearOrder), EngineError::kNone);
    ASSERT_EQ(lines.Construct(), EngineError::kNone);
    const auto c = lines.Coefficients();
    ASSERT_EQ(c.size(), 6U);
    EXPECT_EQ(c[0], 1.0);
    EXPECT_EQ(c[1], (3.0 - 1.0) / (0.4 - 0.1));
    EXPECT_EQ(c[4], 8.0);
    EXPECT_EQ(c[5], (-0.7 - 8.0) / (2.2 - 0.4));
}

TEST(ConstructionScope, MarksTheThreadAndRestoresWhatItFound) {
    using math::fn::interpolate::ConstructingCurve;
    using math::fn::interpolate::detail::ConstructionScope;
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
    using math::fn::interpolate::detail::IntegralOverCycles;
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

}  // namespace
