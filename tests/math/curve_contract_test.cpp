// What holds for all curves: preparation, no allocation, no floating-point exception of their own
// making, many threads at once, spans.

#include "common/math/curve_construction.h"
#include "common/sys/floating_point.h"

#include "tests/math/curve_support.h"
#include "tests/support/allocation_counter.h"

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <thread>

namespace {

using namespace lmw::test;
using lmw::kUndefined;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr std::array kHostile = {kNan,   HUGE_VAL,   -HUGE_VAL,   0.0,    -0.0, 1e308,
                                 -1e308, kUndefined, -kUndefined, 5e-324, 3.5,  1e17};
constexpr unsigned kSerious = sys::kOverflow | sys::kZeroDivide | sys::kInvalid;

/// The calls that all curves share.
struct Calls {
    std::string name;
    std::function<double(double)> value;
    std::function<double(double)> slope;
    std::function<double(double, double)> integral;
    std::function<void(std::span<const double>, std::span<double>)> values;
    std::function<void(std::span<const double>, std::span<double>)> slopes;
    std::function<void(double, std::span<const double>, std::span<double>)> integrals;
};

template <class Curve>
Calls CallsOf(std::string name, Curve curve) {
    return {std::move(name),
            [curve](double x) { return curve(x); },
            [curve](double x) { return curve.DyDx(x, kTolerance); },
            [curve](double a, double b) { return curve.Integrate(a, b, kTolerance); },
            [curve](auto x, auto y) { curve.Evaluate(x, y); },
            [curve](auto x, auto y) { curve.DyDx(x, y); },
            [curve](double a, auto x, auto y) { curve.Integrate(a, x, y); }};
}

const Points kPoints = {{0.0, 1.0}, {1.0, 3.0}, {2.5, 2.0}, {3.0, -4.0}, {7.0, 0.0}};

/// Every kind of curve with every kind of tail.
std::vector<Calls> AllCurves() {
    const std::array tails = {TailType::None(), TailType::Calc(), TailType::Cycle(),
                              TailType::Slope(0.5), TailType()};
    std::vector<Calls> all;
    for (const TailType& before : tails) {
        for (const TailType& after : tails) {
            const std::string name =
                std::to_string(before.value) + "/" + std::to_string(after.value);
            all.push_back(CallsOf("step " + name, MakeStep(kPoints, before, after)));
            all.push_back(CallsOf("linear " + name, MakeLinear(kPoints, before, after)));
            for (const unsigned tension : {0U, 40U}) {
                all.push_back(
                    CallsOf("spline " + name, MakeSpline(kPoints, 80, tension, before, after)));
            }
        }
    }
    return all;
}

/// `curve` is a cycle of period 2 over the points from 1 to 7, which its setters take back.
template <class Curve>
void ExpectEverySetterStartsAgain(Curve curve, std::vector<void (*)(Curve&)> setters,
                                  const Curve& fresh) {
    setters.insert(setters.end(), {[](Curve& c) { c.SetTailBefore(TailType::None()); },
                                   [](Curve& c) { c.SetTailAfter(TailType::None()); },
                                   [](Curve& c) { c.SetFunctionPeriod(kUndefined); },
                                   [](Curve& c) { c.Assign(First(kPoints), Last(kPoints)); }});
    for (const auto& setter : setters) {
        const Curve copy = curve;
        const double before = copy(1.5);
        setter(curve);
        EXPECT_EQ(curve(1.5), kUndefined);
        EXPECT_EQ(curve.DyDx(1.5, kTolerance), kUndefined);
        EXPECT_EQ(curve.Integrate(1.0, 1.5, kTolerance), kUndefined);
        EXPECT_TRUE(lmw::IsDefined(before));
        EXPECT_EQ(copy(1.5), before) << "a copy keeps its preparation";
        ASSERT_TRUE(curve.UpdateCalculatedValues().Succeeded());
    }
    for (const double x : {0.0, 1.5, 2.5, 6.0, 7.0}) {
        EXPECT_EQ(curve(x), fresh(x)) << x;
    }
}

TEST(PreparedCurve, HasNoValuesAfterAnySetterAndStartsAgainFromTheCallersPoints) {
    const TailType none = TailType::None();
    ExpectEverySetterStartsAgain<Linear>(MakeLinear(kPoints, none, TailType::Cycle(), 2.0), {},
                                         MakeLinear(kPoints, none, none));
    ExpectEverySetterStartsAgain<Spline>(
        MakeSpline(kPoints, 100, 50, none, TailType::Cycle(), 2.0),
        {[](Spline& s) { s.SetSmooth(80); }, [](Spline& s) { s.SetTension(30); }},
        MakeSpline(kPoints, 80, 30, none, none));
    EXPECT_EQ(Linear(First(kPoints), Last(kPoints), none, none)(1.5), kUndefined) << "new";
}

template <class Curve>
void ExpectOnePointIsEnough(Curve curve) {
    EXPECT_TRUE(curve.UpdateCalculatedValues().Succeeded());
    EXPECT_EQ(curve(1.0), kUndefined);
    EXPECT_EQ(curve.DyDx(1.0, kTolerance), kUndefined);
    EXPECT_EQ(curve.Integrate(0.0, 1.0, kTolerance), kUndefined);
    EXPECT_EQ(curve.GetFunctionPeriodForCalculation(), kUndefined);
    const FPOINT point{3.0, 7.0};
    curve.Assign(&point, &point + 1);
    curve.SetTailAfter(TailType::None());
    EXPECT_EQ(curve(-1e9), 7.0);
    EXPECT_EQ(curve.DyDx(1e9, kTolerance), 0.0);
    EXPECT_EQ(curve.Integrate(4.0, 1.0, kTolerance), 21.0);
    EXPECT_EQ(curve.GetFunctionPeriodForCalculation(), 0.0);
    EXPECT_EQ(curve.Domain().after, math::fn::interpolate::Beyond::kLine);
}

TEST(PreparedCurve, WithNoOrOnePointNeedsNoPreparation) {
    ExpectOnePointIsEnough(Linear(nullptr, nullptr, TailType::Calc(), TailType::Calc()));
    const Spline none(100, 50, TailType::None(), TailType::None(), nullptr, nullptr, kUndefined);
    EXPECT_EQ(none.Min(), kUndefined);
    ExpectOnePointIsEnough(none);
}

TEST(AnyCurve, EvaluatesWithoutAllocating) {
    if (!CountsLibraryAllocations()) {
        GTEST_SKIP() << "allocations of the library are not seen on this platform";
    }
    std::array<double, kHostile.size()> results{};
    for (const Calls& curve : AllCurves()) {
        EXPECT_EQ(AllocationsOf([&] {
                      for (const double x : kHostile) {
                          results[0] += curve.value(x) + curve.slope(x) + curve.integral(0.5, x);
                      }
                      curve.values(kHostile, results);
                      curve.slopes(kHostile, results);
                      curve.integrals(0.5, kHostile, results);
                  }),
                  0U)
            << curve.name;
    }
}

TEST(AnyCurve, RaisesNoExceptionForArgumentsOutsideTheNumbers) {
    for (const Calls& curve : AllCurves()) {
        for (const double x : {kNan, HUGE_VAL, -HUGE_VAL, 0.0, 1e17, -1e17}) {
            for (const double from : {0.5, kNan, -HUGE_VAL}) {
                sys::ClearFloatingPointFlags();
                (void)curve.value(x);
                EXPECT_EQ(sys::FloatingPointFlags() & kSerious, 0U) << curve.name << " value " << x;
                (void)curve.slope(x);
                EXPECT_EQ(sys::FloatingPointFlags() & kSerious, 0U) << curve.name << " slope " << x;
                (void)curve.integral(from, x);
                EXPECT_EQ(sys::FloatingPointFlags() & kSerious, 0U)
                    << curve.name << " integral " << x;
            }
        }
    }
}

TEST(AnyCurve, PreparesAndEvaluatesWithTrapsOn) {
    // The sums over these points overflow; a preparation that let that trap would end the program.
    const Points huge = {{0.0, 1e308}, {1e300, 1e308}, {2e300, 0.0}, {2.1e300, 3.0}};
    for (const unsigned trapping : {0U, kSerious}) {
        sys::SetTrappingFloatingPointExceptions(trapping);
        (void)MakeSpline(huge, 100, 30).Integrate(2.05e300, 2.06e300, kTolerance);
        (void)MakeLinear(huge, TailType::None(), TailType::None())(kNan);
        const Step step = MakeStep(huge, TailType::None(), TailType::Cycle());
        (void)step(kUndefined);
        const unsigned left = sys::TrappingFloatingPointExceptions();
        const unsigned flags = sys::FloatingPointFlags();
        sys::SetTrappingFloatingPointExceptions(0);
        EXPECT_EQ(left, trapping) << "restored";
        EXPECT_EQ(flags & kSerious, 0U) << "what was held back is forgotten";
    }
    EXPECT_EQ(math::fn::interpolate::ConstructingCurve(), 0U);
}

TEST(AnyCurve, AnswersSpansAsItAnswersOneByOne) {
    std::vector<double> sites;
    for (int i = -20; i < 100; ++i) {
        sites.push_back(0.13 * i);
    }
    for (const Calls& curve : AllCurves()) {
        std::vector<double> values(sites.size() + 1, 77.0);
        std::vector<double> slopes = values;
        std::vector<double> integrals = values;
        std::vector<double> in_place = sites;
        curve.values(sites, values);
        curve.slopes(sites, slopes);
        curve.integrals(0.5, sites, integrals);
        curve.values(in_place, in_place);
        for (std::size_t i = 0; i < sites.size(); ++i) {
            EXPECT_EQ(values[i], curve.value(sites[i])) << curve.name;
            EXPECT_EQ(in_place[i], values[i]) << curve.name;
            EXPECT_EQ(slopes[i], curve.slope(sites[i])) << curve.name;
            EXPECT_EQ(integrals[i], curve.integral(0.5, sites[i])) << curve.name;
        }
        EXPECT_EQ(values.back(), 77.0) << "nothing beyond the shorter span";
    }
}

// Clean under the thread sanitizer, and one answer for all.
TEST(AnyCurve, ServesManyThreadsAtOnce) {
    for (const Calls& curve :
         {CallsOf("step", MakeStep(kPoints, TailType::Calc(), TailType::Cycle())),
          CallsOf("linear", MakeLinear(kPoints, TailType::Calc(), TailType::Calc())),
          CallsOf("spline", MakeSpline(kPoints, 50, 40, TailType::None(), TailType::Cycle()))}) {
        const auto sum = [&curve] {
            double total = 0.0;
            for (int i = 0; i < 2000; ++i) {
                const double x = 0.005 * i;
                total += curve.value(x) + curve.slope(x) + curve.integral(0.25, x);
            }
            return total;
        };
        const double expected = sum();
        std::array<double, 4> totals{};
        std::vector<std::thread> threads;
        for (double& total : totals) {
            threads.emplace_back([&total, &sum] { total = sum(); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        for (const double total : totals) {
            EXPECT_EQ(total, expected) << curve.name;
        }
    }
}

}  // namespace
