#include "common/math/step.h"

#include "tests/math/curve_support.h"

#include <cmath>
#include <tuple>

namespace {

using namespace lmw::test;
using lmw::kUndefined;
using math::fn::interpolate::Beyond;

const Points kStairs = {{1.0, 10.0}, {2.0, 20.0}, {4.0, 40.0}};

TEST(StepCurve, HasItsTailRulesInTheirOrder) {
    const std::tuple<const char*, TailType, TailType, double, double> rows[] = {
        {"the first point is data", kNone, kNone, 1.0, 10.0},
        {"a value holds up to the next point", kNone, kNone, std::nextafter(2.0, 0.0), 10.0},
        {"and not including it", kNone, kNone, 2.0, 20.0},
        {"before: no tail", kNone, kCalc, 0.0, kUndefined},
        {"the last point is already in the tail", kNone, kNone, 4.0, kUndefined},
        {"a cycle after leaves the slope before alone", TailType::Slope(1.0), kCycle, 0.0, 11.0},
        {"a slope before counts away from the data", TailType::Slope(2.0), kCalc, 0.0, 12.0},
        {"a slope after runs from the first point", kCalc, TailType::Slope(0.5), 4.0, 41.5},
        {"and goes on so", kCalc, TailType::Slope(0.5), 6.0, 42.5},
        {"no cycle backwards", kCycle, kCycle, 0.5, kUndefined},
        {"a level slope at infinity", kNone, TailType(), HUGE_VAL, 40.0},
        {"a cycle at infinity", kNone, kCycle, HUGE_VAL, kUndefined},
    };
    for (const auto& [why, before, after, x, expected] : rows) {
        EXPECT_EQ(MakeStep(kStairs, before, after)(x), expected) << why;
    }
    EXPECT_TRUE(std::isnan(MakeStep(kStairs, kCalc, kCalc)(std::nan(""))));
}

TEST(StepCurve, CyclesFromItsFirstPointLimitedToItsLast) {
    const Step own = MakeStep(kStairs, kNone, kCycle);  // period 3
    EXPECT_EQ(own(4.0), 10.0);
    EXPECT_EQ(own(5.5), 20.0);
    EXPECT_EQ(own(1.0 + 3e9), 10.0);
    const Step longer = MakeStep(kStairs, kNone, kCycle, 5.0);
    EXPECT_EQ(longer(5.9), 40.0) << "the last value holds to the end of the period";
    EXPECT_EQ(longer(6.0), 10.0);
    const Step shorter = MakeStep(kStairs, kNone, kCycle, 2.0);
    EXPECT_EQ(shorter(3.5), 20.0) << "data stay data";
    EXPECT_EQ(shorter(4.0), 20.0) << "phase 1 of the cycle that began at x = 3";
    EXPECT_EQ(shorter(5.0), 10.0);
    EXPECT_EQ(MakeStep({{1.0, 7.0}}, kNone, kCycle)(3.0), 7.0);
    for (const double period : {0.0, -1.0, HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(MakeStep(kStairs, kNone, kCycle, period)(5.0), kUndefined) << period;
        EXPECT_EQ(MakeStep(kStairs, kNone, kCycle, period).Integrate(1, 5, kTolerance), kUndefined);
    }
}

TEST(StepCurve, WithoutPointsIsUndefined) {
    const Step step = MakeStep({}, kCalc, kCalc);
    EXPECT_EQ(step(0.0), kUndefined);
    EXPECT_EQ(step.Integrate(0.0, 1.0, kTolerance), kUndefined);
    EXPECT_EQ(step.GetFunctionPeriodForCalculation(), kUndefined);
    EXPECT_EQ(step.DyDx(0.0, kTolerance), 0.0);
    EXPECT_EQ(step.Domain().first, kUndefined);
}

TEST(StepCurve, DescribesItsDomain) {
    const auto domain = MakeStep(kStairs, kCycle, kCycle).Domain();
    EXPECT_EQ(domain.first, 1.0);
    EXPECT_EQ(domain.last, 4.0);
    EXPECT_EQ(domain.before, Beyond::kUndefined);
    EXPECT_EQ(domain.after, Beyond::kRepeats);
    EXPECT_EQ(domain.period, 3.0);
    EXPECT_EQ(MakeStep(kStairs, TailType(), kCycle, -1.0).Domain().after, Beyond::kUndefined);
}

// The rules again, by linear search.
double PlainStep(const Points& points, double x) {
    double value = points.front().y;
    for (const FPOINT& point : points) {
        value = point.x <= x ? point.y : value;
    }
    return value;
}

TEST(StepCurve, PreparedAgreesWithUnpreparedAndLinearSearch) {
    PropertyRandom random;
    for (int round = 0; round < 300; ++round) {
        Points points = RandomPoints(random, random.Integer(2, 40));
        if (random.Chance(0.3)) {
            points[points.size() / 2].x = points[points.size() / 2 - 1].x;  // repeated
        }
        Step step(kCalc, kCalc, First(points), Last(points));
        const Step unprepared = step;
        step.UpdateCalculatedValues();
        for (int i = 0; i < 50; ++i) {
            const double x = random.Chance(0.2)
                                 ? random.Pick(points).x
                                 : random.Uniform(points.front().x - 1.0, points.back().x + 1.0);
            EXPECT_EQ(step(x), PlainStep(points, x)) << Exact(x);
            EXPECT_EQ(unprepared(x), step(x)) << Exact(x);
            const double y = random.Uniform(points.front().x - 1.0, points.back().x + 1.0);
            EXPECT_NEAR(unprepared.Integrate(x, y, kTolerance), step.Integrate(x, y, kTolerance),
                        1e-12 * 10.0 * (points.back().x - points.front().x + 2.0));
        }
    }
}

TEST(StepCurve, UnorderedPointsGiveSomeValueOfTheirs) {
    PropertyRandom random;
    for (int round = 0; round < 300; ++round) {
        Points points;
        for (int i = random.Integer(1, 9); i > 0; --i) {
            points.push_back({random.Chance(0.1) ? std::nan("") : random.Uniform(-5.0, 5.0), 1.0});
        }
        const Step step = MakeStep(points, kCalc, kCycle);
        for (int i = 0; i < 20; ++i) {
            const double value = step(random.Uniform(-6.0, 6.0));
            EXPECT_TRUE(value == 1.0 || value == kUndefined) << value;
            (void)step.Integrate(random.Uniform(-6.0, 6.0), random.Uniform(-6.0, 6.0), kTolerance);
        }
    }
}

TEST(StepCurve, IntegratesLeftValueTimesWidth) {
    const Step level = MakeStep(kStairs, kCalc, kCalc);
    EXPECT_DOUBLE_EQ(level.Integrate(0.0, 5.0, kTolerance), 10.0 + 10.0 + 40.0 + 40.0);
    EXPECT_DOUBLE_EQ(level.Integrate(5.0, 0.0, kTolerance), 100.0) << "either order";
    EXPECT_DOUBLE_EQ(level.Integrate(1.25, 1.5, kTolerance), 2.5);
    EXPECT_EQ(level.Integrate(1.5, 1.5, kTolerance), 0.0);
    // A slope tail is one piece with the value at its left end.
    const Step sloped = MakeStep(kStairs, TailType::Slope(2.0), TailType::Slope(1.0));
    EXPECT_DOUBLE_EQ(sloped.Integrate(-1.0, 1.0, kTolerance), 14.0 * 2.0);
    EXPECT_DOUBLE_EQ(sloped.Integrate(4.0, 6.0, kTolerance), 43.0 * 2.0);
    // A place without a value makes the whole undefined; touching one does not.
    const Step bare = MakeStep(kStairs, kNone, kNone);
    EXPECT_EQ(bare.Integrate(0.5, 3.0, kTolerance), kUndefined);
    EXPECT_EQ(bare.Integrate(3.0, 4.5, kTolerance), kUndefined);
    EXPECT_EQ(bare.Integrate(9.0, 9.0, kTolerance), kUndefined);
    EXPECT_DOUBLE_EQ(bare.Integrate(1.0, 4.0, kTolerance), 50.0);
}

TEST(StepCurve, IntegratesCyclesAsTheRepeatedPieces) {
    for (const double period : {kUndefined, 5.0, 2.0, 2.5}) {
        const Step step = MakeStep(kStairs, kNone, kCycle, period);
        const double length = step.GetFunctionPeriodForCalculation();
        PropertyRandom random;
        for (int i = 0; i < 200; ++i) {
            const double a = random.Uniform(1.0, 20.0);
            const double b = a + random.Uniform(0.0, 30.0);
            EXPECT_NEAR(step.Integrate(a, b, kTolerance),
                        PlainIntegral(step, kStairs, a, b, length), 1e-10)
                << Exact(a) << " " << Exact(b) << " period " << period;
        }
    }
}

}  // namespace
