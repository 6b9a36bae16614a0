#include "common/fn/fred_xing.h"

#include "common/math/fpu.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace {

using lmw::kUndefined;
using math::UnitSet;
using math::fn::flow::FredXing;

TEST(FredXing, AgreesWithTheFormulaAndWithPublishedValues) {
    const FredXing curve(100.0, 2.0, 1.0, 0.4, 1e6);
    EXPECT_DOUBLE_EQ(curve(-100.0),
                     0.4 * (1.0 - std::log(1.0 + 100.0 / 3000.0) / std::log(1.0 + 1e6 / 3000.0)) /
                         std::log(std::numbers::e + 1.0));

    // Silt: Fredlund, Rahardjo, Fredlund (2012), Unsaturated Soil Mechanics in Engineering
    // Practice, Fig. 5.34; relative water contents computed from the formula with other software,
    // six digits.
    const FredXing silt(1.948, 2.708, 1.084, 1.0, 1e6);
    for (const auto& [suction, expected] : {std::pair{1.0, 0.939979},
                                            {2.0, 0.732235},
                                            {10.0, 0.197563},
                                            {100.0, 0.076423},
                                            {1000.0, 0.044352}}) {
        EXPECT_NEAR(silt(-suction), expected, 5e-7) << suction;
    }
}

// Property 1.
TEST(FredXing, IsSaturatedWithoutSuctionOrScale) {
    const FredXing curve(10.0, 2.0, 0.7, 0.45, 1e6);
    for (const double pressure :
         {0.0, -0.0, 1e-300, 50.0, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(curve(pressure), 0.45);
    }
    for (const double a : {0.0, -3.0}) {
        EXPECT_EQ(FredXing(a, 2.0, 0.7, 0.45, 1e6)(-100.0), 0.45);
    }
}

// Property 2.
TEST(FredXing, IsEmptyAtTheLimitAndNegativeBeyond) {
    const FredXing curve(10.0, 2.0, 0.7, 0.45, 1e6);
    EXPECT_EQ(curve(-1e6), 0.0);
    EXPECT_LT(curve(-2e6), 0.0);
    EXPECT_EQ(curve.PressureLimits(), std::pair(-1e6, 0.0));
}

// Property 3: the undefined test comes before every other.
TEST(FredXing, UndefinedParametersGiveTheUndefinedValue) {
    for (int which = 0; which < 5; ++which) {
        double values[] = {10.0, 2.0, 0.7, 0.45, 1e6};
        values[which] = kUndefined;
        const FredXing curve(values[0], values[1], values[2], values[3], values[4]);
        EXPECT_EQ(curve(-100.0), kUndefined) << which;
        EXPECT_EQ(curve(5.0), kUndefined) << which;
        EXPECT_EQ(curve.IsValid(), which == 3) << which;  // by design: an undefined theta_s passes
    }
    EXPECT_EQ(FredXing()(-1.0), kUndefined);
    EXPECT_EQ(FredXing()(1.0), kUndefined);
    EXPECT_FALSE(FredXing().IsValid());
    EXPECT_EQ(FredXing(0.0, 2.0, 0.7, kUndefined, 1e6)(1.0), kUndefined);
}

TEST(FredXing, ValidityNeedsPositiveParameters) {
    EXPECT_TRUE(FredXing(10.0, 2.0, 0.7, 0.45, 1e6).IsValid());
    EXPECT_TRUE(FredXing(10.0, 2.0, 0.7, 0.45, -1.0).IsValid());
    EXPECT_FALSE(FredXing(0.0, 2.0, 0.7, 0.45, 1e6).IsValid());
    EXPECT_FALSE(FredXing(10.0, -2.0, 0.7, 0.45, 1e6).IsValid());
    EXPECT_FALSE(FredXing(10.0, 2.0, 0.0, 0.45, 1e6).IsValid());
    EXPECT_FALSE(FredXing(10.0, 2.0, 0.7, 0.0, 1e6).IsValid());
}

TEST(FredXing, StaysFiniteAndDoesNotTrapWhereThePowerOverflows) {
    const FredXing steep(1.0, 100.0, 1.0, 0.4, 1e6);
    const double before = steep(-1e3);  // 1e300
    const double behind = steep(-2e3);  // 2e330
    EXPECT_GT(before, behind);
    math::fpu::Exception::On(math::fpu::Exception::DefaultExceptionMask());
    const double trapping = steep(-2e3);
    math::fpu::Exception::Off();
    EXPECT_EQ(trapping, behind);
    EXPECT_NEAR(behind,
                0.4 * (1.0 - std::log(1.0 + 2e3 / 3e3) / std::log(1.0 + 1e6 / 3e3)) /
                    (100.0 * std::log(2e3)),
                1e-15);
}

TEST(FredXing, StandardLimitFollowsTheUnitOfPressure) {
    EXPECT_EQ(FredXing::CalcLimit(UnitSet::KiloPascal()), 1e6);
    EXPECT_EQ(FredXing::CalcLimit(UnitSet::Pascal()), 1e9);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::PoundsPerSquareInch()), 145037.7377302, 1e-6);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::PoundsPerSquareFoot()), 20885434.233, 1e-2);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::MetresOfWater()), 101971.6213, 1e-4);
    EXPECT_NEAR(FredXing::CalcLimit(UnitSet::FeetOfWater()), 334552.5633, 1e-3);
}

}  // namespace
