#include "common/math/spline.h"

#include "tests/math/curve_support.h"

#include <array>
#include <cmath>
#include <utility>

namespace {

using namespace lmw::test;
using lmw::kUndefined;

// Silt loam, suction in cm of water and water content: Ehlers (1977), Geoderma 19.
const Points kSiltLoam = {{11, 0.38},   {27, 0.37},   {50, 0.36},   {83, 0.35},   {140, 0.34},
                          {316, 0.32},  {550, 0.30},  {880, 0.28},  {1500, 0.26}, {2450, 0.24},
                          {4000, 0.22}, {7500, 0.20}, {14700, 0.18}};

constexpr std::array kTensions = {1U, 30U, 50U, 67U, 100U, 4000000000U};

TEST(SplineCurve, WithoutTensionIsTheLinearCurveBitForBit) {
    for (const TailType& after : {kCalc, kCycle, TailType::Slope(-1.0)}) {
        for (const double period : {9000.0, kUndefined}) {
            const Spline spline = MakeSpline(kSiltLoam, 30, 0, kCalc, after, period);
            const Linear linear = MakeLinear(kSiltLoam, kCalc, after, period);
            for (const double x : {-5.0, 11.0, 30.0, 316.0, 8000.0, 14700.0, 2e4, 7e5}) {
                EXPECT_EQ(spline(x), linear(x)) << x;
                EXPECT_EQ(spline.DyDx(x, kTolerance), linear.DyDx(x, kTolerance)) << x;
                EXPECT_EQ(spline.Integrate(99.0, x, kTolerance),
                          linear.Integrate(99.0, x, kTolerance));
            }
            EXPECT_EQ(spline.Order(), 2U);
            EXPECT_EQ(spline.GetCoefficients().size() % 2, 0U);
        }
    }
}

TEST(SplineCurve, PassesThroughItsPointsWithOneSlopeAtEach) {
    for (const unsigned tension : kTensions) {
        const Spline spline = MakeSpline(kSiltLoam, 100, tension);
        const auto c = spline.GetCoefficients();
        ASSERT_EQ(c.size(), 12U * 4U);
        for (std::size_t i = 0; i + 1 < kSiltLoam.size(); ++i) {
            const double h = kSiltLoam[i + 1].x - kSiltLoam[i].x;
            EXPECT_EQ(c[4 * i], kSiltLoam[i].y);
            EXPECT_NEAR(c[4 * i] + h * (c[4 * i + 1] + h * (c[4 * i + 2] + h * c[4 * i + 3])),
                        kSiltLoam[i + 1].y, 1e-15);
            const double end_slope = c[4 * i + 1] + h * (2 * c[4 * i + 2] + h * 3 * c[4 * i + 3]);
            const double next_slope = spline.DyDx(kSiltLoam[i + 1].x, kTolerance);
            EXPECT_NEAR(end_slope, next_slope, 1e-12 * std::fabs(c[1])) << tension << " " << i;
        }
        EXPECT_EQ(spline(14700.0), 0.18) << "the end value itself";
    }
}

// Property 1 of the header.
TEST(SplineCurve, StaysMonotoneBetweenItsPointsAndStraightAtEveryTensionAndSmoothing) {
    PropertyRandom random;
    for (int round = 0; round < 400; ++round) {
        Points points = RandomPoints(random, random.Integer(2, 12));
        const bool straight = round % 4 == 0;
        double y = 0.0;
        for (FPOINT& point : points) {
            point.y = straight ? 0.25 * (point.x - points.front().x) : y;
            y += random.Chance(0.2) ? 0.0 : random.LogUniform(1e-9, 1e3);
        }
        const unsigned smooth =
            random.Chance(0.5) ? 100U : static_cast<unsigned>(random.Integer(0, 99));
        const Spline spline =
            MakeSpline(points, smooth, static_cast<unsigned>(random.Integer(1, 120)));
        const double top = points.back().y;
        double last = spline(points.front().x);
        for (int i = 1; i <= 400; ++i) {
            const double t = i / 400.0;
            const double x = points.front().x * (1.0 - t) + points.back().x * t;
            const double value = spline(x);
            EXPECT_GE(value, last - 1e-12 * top) << Exact(x);
            EXPECT_LE(value, top * (1.0 + 1e-12));
            last = value;
            if (straight) {
                EXPECT_NEAR(value, 0.25 * (x - points.front().x), 1e-10);
                EXPECT_NEAR(spline.DyDx(x, kTolerance), 0.25, 1e-9);
            }
        }
        EXPECT_EQ(spline(points.front().x), points.front().y) << "ends stay";
        if (straight) {
            EXPECT_NEAR(spline(points.back().x + 9.0), top + 0.25 * 9.0, 1e-8) << "and its tail";
        }
    }
}

TEST(SplineCurve, DerivativesAndIntegralsAgreeWithThePlainOnes) {
    PropertyRandom random;
    for (int round = 0; round < 200; ++round) {
        const Points points = RandomPoints(random, random.Integer(2, 40));
        const bool cyclic = random.Chance(0.5);
        const double span = points.back().x - points.front().x;
        const double period = cyclic ? span * random.Uniform(0.5, 1.5) : kUndefined;
        const unsigned tension =
            random.Chance(0.4) ? 0U : static_cast<unsigned>(random.Integer(1, 100));
        const Spline spline =
            MakeSpline(points, static_cast<unsigned>(random.Integer(0, 100)), tension,
                       TailType::Slope(2.0), cyclic ? kCycle : kCalc, period);
        const double low = cyclic ? points.front().x : points.front().x - span;
        const double high = points.back().x + (cyclic ? 4.0 : 1.0) * span;
        double size = 1.0;
        for (int i = 0; i < 10; ++i) {
            const double a = random.Uniform(low, high);
            const double b = random.Uniform(a, high);
            size = std::max({size, std::fabs(spline(a)), std::fabs(spline(b))});
            EXPECT_NEAR(spline.Integrate(a, b, kTolerance),
                        PlainIntegral(spline, points, a, b, cyclic ? period : 0.0),
                        1e-11 * 10.0 * size * (1.0 + span))
                << Exact(a) << " " << Exact(b);
            const double h = 1e-6;
            const double slope = spline.DyDx(a, kTolerance);
            const double quotient = (spline(a + h) - spline(a - h)) / (2.0 * h);
            if (tension > 0 && lmw::IsDefined(spline(a - h))) {  // lines have corners
                EXPECT_NEAR(slope, quotient, 0.05 * (1.0 + std::fabs(slope))) << Exact(a);
            }
        }
    }
}

TEST(SplineCurve, SmoothIsWhatItsFormulaSays) {
    // One inner point: at smooth 0 it moves half way to the Hermite cubic over its neighbours.
    const Points peak = {{0.0, 0.0}, {1.0, 3.0}, {3.0, 4.0}};
    const double d1 = 3.0;
    const double d2 = 0.5;
    const double parabola = (2.0 * 1.0 + 2.0) * d1 / 3.0 - 1.0 * d2 / 3.0;
    const double m0 = parabola;  // tension 100: shape 0
    const double parabola_right = (2.0 * 2.0 + 1.0) * d2 / 3.0 - 2.0 * d1 / 3.0;
    const double m2 = parabola_right > 0.0 ? parabola_right : 0.0;
    const double t = 1.0 / 3.0;
    const double over = 3.0 * t * (1 - t) * ((1 - t) * m0 - t * m2) + 4.0 * t * t * (3 - 2 * t);
    EXPECT_NEAR(MakeSpline(peak, 0, 100)(1.0), 3.0 + 0.5 * (over - 3.0), 1e-14);
    EXPECT_NEAR(MakeSpline(peak, 60, 100)(1.0), 3.0 + 0.2 * (over - 3.0), 1e-14);
    EXPECT_EQ(MakeSpline(peak, 100, 100)(1.0), 3.0);
    EXPECT_EQ(MakeSpline(peak, 250, 100)(1.0), 3.0);
}

TEST(SplineCurve, ACycleWithTensionIsSmoothWhereItRepeats) {
    for (const auto& [count, breakpoints] : {std::pair{3, 9U}, {10, 30U}, {11, 31U}, {25, 45U}}) {
        Points points;
        for (int i = 0; i < count; ++i) {
            const double phase = 6.283185307179586 * i / count;
            points.push_back({100.0 + i, std::sin(phase) + 0.3 * std::cos(2.0 * phase)});
        }
        const double period = count;
        const Spline spline = MakeSpline(points, 100, 60, kNone, kCycle, period);
        EXPECT_EQ(spline.GetCoefficients().size(), 4 * (breakpoints - 1));
        EXPECT_EQ(spline.NumberOfDataPoints(), points.size());
        EXPECT_EQ(spline.Min(), 100.0);
        EXPECT_EQ(spline.Max(), points.back().x);
        for (double x = 100.0; x <= 100.0 + period; x += 0.25) {
            EXPECT_NEAR(spline(x + period), spline(x), 1e-12) << x;
            EXPECT_NEAR(spline.DyDx(x + 3.0 * period, kTolerance), spline.DyDx(x, kTolerance),
                        1e-12);
        }
        EXPECT_EQ(spline(100.0 + period), points.front().y);
        EXPECT_EQ(spline(99.9), kUndefined);
        const double join = 100.0 + period;
        EXPECT_NEAR(spline.DyDx(join - 1e-9, kTolerance), spline.DyDx(join + 1e-9, kTolerance),
                    1e-6);
    }
}

TEST(SplineCurve, ACycleOfOnePointIsConstant) {
    // A period that leaves only the first point.
    const Spline spline = MakeSpline({{1.0, 4.0}, {2.0, 5.0}}, 100, 50, kCalc, kCycle, 0.5);
    EXPECT_EQ(spline(1.3), 4.0);
    EXPECT_EQ(spline(77.7), 4.0);
    EXPECT_DOUBLE_EQ(spline.Integrate(1.0, 11.0, kTolerance), 40.0);
    EXPECT_EQ(spline.Max(), 2.0) << "the points stay the caller's";
}

TEST(SplineCurve, WithTensionNeedsStrictlyIncreasingX) {
    for (const auto& [points, at_fault] : {std::pair{Points{{0, 0}, {1, 1}, {1, 2}}, L"3"},
                                           {Points{{0, 0}, {2, 1}, {1, 2}}, L"3"},
                                           {Points{{0, 0}, {std::nan(""), 1}, {1, 2}}, L"2"}}) {
        Spline spline(100, 10, kCalc, kCalc, First(points), Last(points), kUndefined);
        const gtl::status result = spline.UpdateCalculatedValues();
        EXPECT_EQ(result.MessageId(), 22762U);
        EXPECT_EQ(result.Detail()->Arguments()[0], at_fault);
        EXPECT_EQ(spline(0.5), kUndefined);
        EXPECT_TRUE(spline.GetCoefficients().empty());
    }
    const Points lost = {{1e9, 0}, {2e9, 1}};
    Spline spline(100, 10, kCalc, kCycle, First(lost), Last(lost), 1e-9);
    EXPECT_EQ(spline.UpdateCalculatedValues().MessageId(), 22762U);
    spline.SetFunctionPeriod(-3.0);
    EXPECT_EQ(spline.UpdateCalculatedValues().MessageId(), 24389U);
    const Points holes = {{0, 0}, {1, std::nan("")}, {2, 1}};
    spline = Spline(0, 37, kCalc, kCalc, First(holes), Last(holes), kUndefined);
    EXPECT_EQ(spline.UpdateCalculatedValues().Detail()->Arguments()[1], L"-1008");
}

}  // namespace
