// What holds for all curves: preparation, no allocation, no floating-point exception of their own
// making, many threads at once, spans.

#include "common/math/curve_construction.h"
#include "common/math/tail_type.h"
#include "common/math/tolerance.h"
#include "common/sys/floating_point.h"

#include "tests/math/curve_support.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/threads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <tuple>

namespace {

using namespace lmw::test;
using lmw::kUndefined;
using math::algorithm::Tolerance;
using math::fn::TailType;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr std::array kHostile = {kNan,   HUGE_VAL,   -HUGE_VAL,   0.0,    -0.0, 1e308,
                                 -1e308, kUndefined, -kUndefined, 5e-324, 3.5,  1e17};
constexpr unsigned kSerious = sys::kOverflow | sys::kZeroDivide | sys::kInvalid;

const Points kPoints = {{0.0, 1.0}, {1.0, 3.0}, {2.5, 2.0}, {3.0, -4.0}, {7.0, 0.0}};

/// Calls `visit(curve, name)` with every kind of curve with every kind of tail.
template <class Visitor>
void ForEveryCurve(const Visitor& visit) {
    const std::array tails = {kNone, kCalc, kCycle, TailType::Slope(0.5), TailType()};
    for (const TailType& before : tails) {
        for (const TailType& after : tails) {
            const std::string name =
                std::to_string(before.value) + "/" + std::to_string(after.value);
            visit(MakeStep(kPoints, before, after), "step " + name);
            visit(MakeLinear(kPoints, before, after), "linear " + name);
            visit(MakeSpline(kPoints, 80, 0, before, after), "straight spline " + name);
            visit(MakeSpline(kPoints, 80, 40, before, after), "spline " + name);
        }
    }
}

/// `curve` is a cycle of period 2 over the points from 1 to 7, which its setters take back.
template <class Curve>
void ExpectEverySetterStartsAgain(Curve curve, std::vector<void (*)(Curve&)> setters,
                                  const Curve& fresh) {
    setters.insert(setters.end(), {[](Curve& c) { c.SetTailBefore(kNone); },
                                   [](Curve& c) { c.SetTailAfter(kNone); },
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
    ExpectEverySetterStartsAgain<Linear>(MakeLinear(kPoints, kNone, kCycle, 2.0), {},
                                         MakeLinear(kPoints, kNone, kNone));
    ExpectEverySetterStartsAgain<Spline>(
        MakeSpline(kPoints, 100, 50, kNone, kCycle, 2.0),
        {[](Spline& s) { s.SetSmooth(80); }, [](Spline& s) { s.SetTension(30); }},
        MakeSpline(kPoints, 80, 30, kNone, kNone));
    EXPECT_EQ(Linear(First(kPoints), Last(kPoints), kNone, kNone)(1.5), kUndefined) << "new";
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
    curve.SetTailAfter(kNone);
    EXPECT_EQ(curve(-1e9), 7.0);
    EXPECT_EQ(curve.DyDx(1e9, kTolerance), 0.0);
    EXPECT_EQ(curve.Integrate(4.0, 1.0, kTolerance), 21.0);
    EXPECT_EQ(curve.GetFunctionPeriodForCalculation(), 0.0);
    EXPECT_EQ(curve.Domain().after, math::fn::interpolate::Beyond::kLine);
}

TEST(PreparedCurve, WithNoOrOnePointNeedsNoPreparation) {
    ExpectOnePointIsEnough(Linear(nullptr, nullptr, kCalc, kCalc));
    const Spline none(100, 50, kNone, kNone, nullptr, nullptr, kUndefined);
    EXPECT_EQ(none.Min(), kUndefined);
    ExpectOnePointIsEnough(none);
}

TEST(AnyCurve, EvaluatesWithoutAllocating) {
    LMW_SKIP_UNCOUNTED_ALLOCATIONS();
    std::array<double, kHostile.size()> results{};
    ForEveryCurve([&](const auto& curve, const std::string& name) {
        EXPECT_EQ(AllocationsOf([&] {
                      for (const double x : kHostile) {
                          results[0] += curve(x) + curve.DyDx(x, kTolerance) +
                                        curve.Integrate(0.5, x, kTolerance);
                      }
                      curve.Evaluate(kHostile, results);
                      curve.DyDx(kHostile, results);
                      curve.Integrate(0.5, kHostile, results);
                  }),
                  0U)
            << name;
    });
}

TEST(AnyCurve, RaisesNoExceptionForArgumentsOutsideTheNumbers) {
    ForEveryCurve([](const auto& curve, const std::string& name) {
        for (const double x : {kNan, HUGE_VAL, -HUGE_VAL, 0.0, 1e17, -1e17}) {
            sys::ClearFloatingPointFlags();
            (void)curve(x);
            (void)curve.DyDx(x, kTolerance);
            for (const double from : {0.5, kNan, -HUGE_VAL}) {
                (void)curve.Integrate(from, x, kTolerance);
            }
            EXPECT_EQ(sys::FloatingPointFlags() & kSerious, 0U) << name << " at " << x;
        }
    });
}

TEST(AnyCurve, PreparesAndEvaluatesWithTrapsOn) {
    // The sums over these points overflow; a preparation that let that trap would end the program.
    const Points huge = {{0.0, 1e308}, {1e300, 1e308}, {2e300, 0.0}, {2.1e300, 3.0}};
    for (const unsigned trapping : {0U, kSerious}) {
        sys::SetTrappingFloatingPointExceptions(trapping);
        (void)MakeSpline(huge, 100, 30).Integrate(2.05e300, 2.06e300, kTolerance);
        (void)MakeLinear(huge, kNone, kNone)(kNan);
        const Step step = MakeStep(huge, kNone, kCycle);
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
    ForEveryCurve([&](const auto& curve, const std::string& name) {
        std::vector<double> values(sites.size() + 1, 77.0);
        std::vector<double> slopes = values;
        std::vector<double> integrals = values;
        std::vector<double> in_place = sites;
        curve.Evaluate(sites, values);
        curve.DyDx(sites, slopes);
        curve.Integrate(0.5, sites, integrals);
        curve.Evaluate(in_place, in_place);
        for (std::size_t i = 0; i < sites.size(); ++i) {
            EXPECT_EQ(values[i], curve(sites[i])) << name;
            EXPECT_EQ(in_place[i], values[i]) << name;
            EXPECT_EQ(slopes[i], curve.DyDx(sites[i], kTolerance)) << name;
            EXPECT_EQ(integrals[i], curve.Integrate(0.5, sites[i], kTolerance)) << name;
        }
        EXPECT_EQ(values.back(), 77.0) << "nothing beyond the shorter span";
    });
}

// Clean under the thread sanitizer, and one answer for all.
TEST(AnyCurve, ServesManyThreadsAtOnce) {
    const auto serve = [](const auto& curve) {
        const auto sum = [&curve] {
            double total = 0.0;
            for (int i = 0; i < 2000; ++i) {
                const double x = 0.005 * i;
                total +=
                    curve(x) + curve.DyDx(x, kTolerance) + curve.Integrate(0.25, x, kTolerance);
            }
            return total;
        };
        const double expected = sum();
        InThreads(4, [&](std::size_t) { EXPECT_EQ(sum(), expected); });
    };
    serve(MakeStep(kPoints, kCalc, kCycle));
    serve(MakeLinear(kPoints, kCalc, kCalc));
    serve(MakeSpline(kPoints, 50, 40, kNone, kCycle));
}

TEST(TailType, StoresReservedDoublesAndReadsItsOwnText) {
    const std::tuple<TailType, double, const wchar_t*> rows[] = {
        {TailType(), 0.0, L"0"},
        {TailType::None(), 1.7976931348623157e308, L"None"},
        {TailType::Calc(), 1.1e308, L"Calc"},
        {TailType::Cycle(), -1.7976931348623157e308, L"Cycle"},
        {TailType::Slope(-2.5), -2.5, L"-2.5"},
        {TailType::Slope(1.1e308), 1.1e308, L"Calc"},  // a slope of a reserved value is that tail
        {TailType::Slope(-1.1e308), -1.1e308, L"-1.1e+308"},
    };
    for (const auto& [tail, value, text] : rows) {
        EXPECT_EQ(tail.value, value);
        EXPECT_EQ(str::as_wstring(tail), text);
        TailType read = TailType::Slope(77.0);
        EXPECT_TRUE(str::from_wstring(text, read).Succeeded());
        EXPECT_EQ(read, tail);
    }
    EXPECT_EQ(TailType(), TailType::Slope(0.0));
    EXPECT_NE(TailType::Calc(), TailType::Slope(std::nextafter(1.1e308, 0.0)));
}

TEST(TailType, ReadsWordsOnlyInTheirOwnCaseAndElseNumbers) {
    for (const wchar_t* text : {L"none", L"CALC", L"cycle", L"Calc ", L"", L"1.5x"}) {
        TailType tail = TailType::Slope(77.0);
        EXPECT_TRUE(str::from_wstring(text, tail).Failed()) << text;
        EXPECT_EQ(tail, TailType::Slope(77.0)) << "untouched on failure";
    }
    TailType tail;
    EXPECT_TRUE(str::from_wstring(L"1.7976931348623157e308", tail).Succeeded());
    EXPECT_EQ(tail, TailType::None());
}

TEST(Tolerance, ComparesFifteenDigitsOfTheLargestMagnitude) {
    const Tolerance<double> plain;
    EXPECT_TRUE(plain.Equal(0.1 + 0.2, 0.3));
    EXPECT_TRUE(plain.Equal(1000.1 + 0.2, 1000.3));
    EXPECT_FALSE(plain.Equal(1.0, 1.00000000000001));
    EXPECT_FALSE(plain.Equal(1e-20, 2e-20));
    EXPECT_TRUE(Tolerance<double>(-1.0).Equal(1e-20, 2e-20)) << "beneath the reference's digits";
    EXPECT_TRUE(Tolerance<double>(1.0, 3).Equal(1.0, 1.0009));
    EXPECT_TRUE(plain.GreaterOrEqual(0.3, 0.1 + 0.2));
    EXPECT_FALSE(plain.GreaterOrEqual(0.3, 0.4));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(plain.Equal(nan, nan));
    EXPECT_FALSE(plain.GreaterOrEqual(nan, 0.0));
}

}  // namespace
