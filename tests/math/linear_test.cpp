#include "common/math/linear.h"

#include "tests/math/curve_support.h"

#include <cmath>

namespace {

using namespace lmw::test;
using lmw::kUndefined;

const Points kRoof = {{1.0, 10.0}, {2.0, 30.0}, {4.0, 20.0}};

TEST(LinearCurve, HasValueAndDerivativeInEveryTail) {
    struct Row {
        const char* why;
        TailType before, after;
        double x, value, derivative;
    };
    const Row rows[] = {
        {"the slope at a point is that on its right", kNone, kNone, 2.0, 30.0, -5.0},
        {"at the last point that of the last interval", kNone, kNone, 4.0, 20.0, -5.0},
        {"at the first point", kNone, kNone, 1.0, 10.0, 20.0},
        {"no tail before", kNone, kCalc, 0.999, kUndefined, kUndefined},
        {"no tail after", kCalc, kNone, 4.001, kUndefined, kUndefined},
        {"slope before, the usual sign", TailType::Slope(3.0), kNone, 0.0, 7.0, 3.0},
        {"slope after, from the last point", kNone, TailType::Slope(3.0), 6.0, 26.0, 3.0},
        {"end slope before", kCalc, kNone, 0.0, -10.0, 20.0},
        {"end slope after", kNone, kCalc, 6.0, 10.0, -5.0},
        {"cycle before alone is undefined", kCycle, kCalc, 0.0, kUndefined, kUndefined},
        {"cycle after: nothing before", TailType::Slope(3.0), kCycle, 0.9, kUndefined, kUndefined},
        {"cycle after without tail before", kNone, kCycle, 0.9, kUndefined, kUndefined},
        {"level tails reach infinity", TailType(), TailType(), -HUGE_VAL, 10.0, 0.0},
        {"slopes do too", kNone, TailType::Slope(3.0), HUGE_VAL, HUGE_VAL, 3.0},
        {"a cycle does not", kNone, kCycle, HUGE_VAL, kUndefined, kUndefined},
    };
    for (const Row& row : rows) {
        const Linear curve = MakeLinear(kRoof, row.before, row.after);
        EXPECT_EQ(curve(row.x), row.value) << row.why;
        EXPECT_EQ(curve.DyDx(row.x, kTolerance), row.derivative) << row.why;
    }
    EXPECT_TRUE(std::isnan(MakeLinear(kRoof, kNone, kNone)(std::nan(""))));
    EXPECT_TRUE(std::isnan(MakeLinear(kRoof, kNone, kCycle).DyDx(std::nan(""), kTolerance)));
}

TEST(LinearCurve, KeepsTheCallersPointsThroughACycle) {
    Linear curve(First(kRoof), Last(kRoof), kNone, kCycle);
    curve.SetFunctionPeriod(2.0);  // cuts the last point away
    ASSERT_TRUE(curve.UpdateCalculatedValues().Succeeded());
    EXPECT_EQ(curve(2.5), 20.0) << "between (2, 30) and the closing point (3, 10)";
    EXPECT_EQ(curve.NumberOfDataPoints(), 3U);
    EXPECT_EQ(curve.end() - curve.begin(), 3);
    EXPECT_EQ(curve.begin()[2], 4.0);
    EXPECT_EQ(curve.Domain().last, 4.0);
    EXPECT_EQ(curve.Domain().period, 2.0);
}

TEST(LinearCurve, ClosesACycleWithItsFirstValue) {
    const Linear own = MakeLinear(kRoof, kNone, kCycle);  // the last point becomes (4, 10)
    EXPECT_EQ(own(4.0), 10.0);
    EXPECT_EQ(own(3.0), 20.0);
    EXPECT_EQ(own(4.5), 20.0);
    EXPECT_EQ(own(1.5 + 300.0), 20.0);
    EXPECT_EQ(own.DyDx(4.5, kTolerance), 20.0);
    EXPECT_EQ(own.DyDx(7.0, kTolerance), 20.0) << "at a repetition that of its right side";
    EXPECT_EQ(own.DyDx(6.5, kTolerance), -10.0);
    const Linear longer = MakeLinear(kRoof, kNone, kCycle, 5.0);
    EXPECT_EQ(longer(5.0), 15.0) << "from (4, 20) to (6, 10)";
    EXPECT_EQ(longer(7.0), 30.0);
    // A point that equals the end of the period but for rounding is the end of the period.
    const Points tenths = {{0.1, 1.0}, {0.2, 5.0}, {0.3, 9.0}};
    const Linear rounded = MakeLinear(tenths, kNone, kCycle, 0.2);
    EXPECT_NEAR(rounded(0.3), 1.0, 1e-13);
    EXPECT_NEAR(rounded(0.25), 3.0, 1e-13);
}

TEST(LinearCurve, RepeatedXIsAJump) {
    const Linear curve = MakeLinear(
        {{0.0, 0.0}, {1.0, 1.0}, {1.0, 5.0}, {2.0, 6.0}, {3.0, 7.0}, {3.0, 0.0}}, kCalc, kCalc);
    EXPECT_NEAR(curve(std::nextafter(1.0, 0.0)), 1.0, 1e-15);
    EXPECT_EQ(curve(1.0), 5.0);
    EXPECT_EQ(curve(1.5), 5.5);
    EXPECT_EQ(curve(3.0), 0.0);
    EXPECT_EQ(curve(9.0), 0.0) << "level after a jump at the end";
    EXPECT_DOUBLE_EQ(curve.Integrate(0.0, 4.0, kTolerance), 0.5 + 5.5 + 6.5);
    const Linear all_one = MakeLinear({{1.0, 2.0}, {1.0, 3.0}, {1.0, 4.0}}, kCalc, kCalc);
    EXPECT_EQ(all_one(0.0), 4.0);
    EXPECT_EQ(all_one(1.0), 4.0);
}

TEST(LinearCurve, ReportsWhatItCannotPrepare) {
    struct Row {
        const char* why;
        Points points;
        TailType after;
        double period;
        std::uint32_t message;
        const wchar_t* argument;
        std::size_t place;
    };
    const Row rows[] = {
        {"falling x", {{0, 0}, {2, 1}, {1, 2}}, kCalc, kUndefined, 20755, L"-1005", 1},
        {"NaN x", {{0, 0}, {std::nan(""), 1}, {2, 2}}, kCalc, kUndefined, 20755, L"-1005", 1},
        {"NaN y", {{0, std::nan("")}, {2, 1}}, kCalc, kUndefined, 20755, L"-1008", 1},
        {"missing y", {{0, 0}, {2, kUndefined}}, kCalc, kUndefined, 20755, L"-1008", 1},
        {"an infinite slope", {{0, 0}, {1e-300, 1e300}}, kCalc, kUndefined, 20755, L"-1016", 1},
        {"behind the period", {{0, 0}, {1, 1}, {9, 2}, {8, 2}}, kCycle, 5.0, 20755, L"-1005", 1},
        {"a period lost in rounding", {{1e9, 0}, {2e9, 1}}, kCycle, 1e-9, 20755, L"-1004", 1},
        {"no period", {{1, 0}, {1, 1}}, kCycle, kUndefined, 24389, L"0", 0},
        {"negative period", {{1, 0}, {2, 1}}, kCycle, -1.0, 24389, L"-1", 0},
        {"infinite period", {{1, 0}, {2, 1}}, kCycle, HUGE_VAL, 24389, L"inf", 0},
        {"NaN period", {{1, 0}, {2, 1}}, kCycle, std::nan(""), 24389, L"nan", 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.why);
        Linear curve(First(row.points), Last(row.points), kCalc, row.after);
        curve.SetFunctionPeriod(row.period);
        for (int attempt = 0; attempt < 2; ++attempt) {
            const gtl::status result = curve.UpdateCalculatedValues();
            ASSERT_TRUE(result.Failed());
            EXPECT_EQ(result.MessageId(), row.message);
            EXPECT_EQ(result.Detail()->Arguments()[row.place], row.argument);
            EXPECT_EQ(curve(0.5), kUndefined);
            EXPECT_EQ(curve.NumberOfDataPoints(), row.points.size());
        }
    }
}

TEST(LinearCurve, IntegralsOverUndefinedPlacesAreUndefined) {
    const Linear bare = MakeLinear(kRoof, kNone, kNone);
    EXPECT_EQ(bare.Integrate(0.0, 2.0, kTolerance), kUndefined);
    EXPECT_EQ(bare.Integrate(2.0, 5.0, kTolerance), kUndefined);
    EXPECT_EQ(bare.Integrate(5.0, 6.0, kTolerance), kUndefined);
    EXPECT_DOUBLE_EQ(bare.Integrate(1.0, 4.0, kTolerance), 70.0);
    EXPECT_EQ(MakeLinear(kRoof, kCycle, kCalc).Integrate(0.0, 2.0, kTolerance), kUndefined);
    EXPECT_EQ(MakeLinear(kRoof, kCalc, kCycle).Integrate(0.0, 2.0, kTolerance), kUndefined);
    EXPECT_EQ(MakeLinear(kRoof, kCalc, kCalc).Integrate(0.0, HUGE_VAL, kTolerance), kUndefined);
}

// A conductivity that falls over twelve decades: the last interval is nothing beside the sum of
// all.
TEST(LinearCurve, IntegralsFarBehindLargeOnesKeepTheirDigits) {
    Points points;
    for (int i = 0; i <= 120; ++i) {
        points.push_back({static_cast<double>(i), std::pow(10.0, 2.0 - 0.1 * i)});
    }
    const Linear curve = MakeLinear(points, kNone, kNone);
    double plain = 0.0;
    for (std::size_t i = 100; i < 119; ++i) {
        plain += 0.5 * (points[i].y + points[i + 1].y);
    }
    EXPECT_NEAR(curve.Integrate(100.0, 119.0, kTolerance), plain, 1e-15 * plain * 4.0);
}

TEST(LinearCurve, IntegralsSurviveSumsThatOverflow) {
    const Points points = {{0.0, 1e308}, {1.0, 1e308}, {2.0, 1e308},
                           {3.0, 5.0},   {4.0, 5.0},   {5.0, 5.0}};
    const Linear curve = MakeLinear(points, kNone, kNone);
    EXPECT_EQ(curve.Integrate(3.0, 5.0, kTolerance), 10.0);
}

}  // namespace
