// The kinds of function, from their definition texts to their values.

#include "common/fn/kinds.h"

#include "common/fn/attributes.h"
#include "common/fn/evaluate.h"
#include "common/fn/fn_const.h"
#include "common/fn/fn_curves.h"
#include "common/fn/fn_fred_xing.h"
#include "common/fn/fn_reference.h"
#include "common/fn/fn_string.h"
#include "common/fn/fn_undefined.h"
#include "common/math/fpu.h"

#include "tests/fn/test_kinds.h"
#include "tests/support/property_random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace lmw::fn;
using lmw::kUndefined;
using math::algorithm::Tolerance;
using math::fn::TailType;

IFn Made(const std::wstring& text) {
    IFn function;
    const gtl::status result = Create(text, function);
    EXPECT_TRUE(result.Succeeded()) << testing::PrintToString(result.as_wstring());
    return function;
}

double At(const IFn& function, double x) {
    return impl::SafeCalculate(*function, &x, nullptr);
}

TEST(Create, MakesAPreparedFunctionOfItsText) {
    const std::tuple<const wchar_t*, double, double> rows[] = {
        {L"Const(5)", 1e9, 5.0},
        {L"Const(Value=-2)", 0.0, -2.0},
        {L"ConstPressure(20)", 0.0, 20.0},
        {L"ConstPressure(ConstPressure=21)", 0.0, 21.0},
        {L"Step(DataInit=0 1;2 3;4 7,SlopeAfter=Calc)", 3.9, 3.0},
        {L"Step(DataInit=0 1;2 3;4 7,SlopeAfter=Calc)", 4.0, 7.0},
        {L"Linear(DataInit=0 1;2 3)", 0.5, 1.5},
        {L"Linear(DataInit=0 1;2 3)", 9.0, 3.0},
        {L"Linear(DataInit=0 1;2 3,SlopeAfter=Calc)", 9.0, 10.0},
        {L"Linear(DataInit=0 1;2 3,SlopeAfter=None)", 9.0, kUndefined},
        {L"Linear(DataInit=0 1;2 3,SlopeAfter=Cycle,FunctionPeriod=4)", 4.5, 1.5},
        {L"Linear(DataInit=1 0;100 4,LogInput=true)", 10.0, 2.0},
        {L"Linear(DataInit=1 0;100 4,LogInput=true)", -1.0, kUndefined},
        {L"Linear(DataInit=0 1;2 100,LogOutput=true)", 1.0, 10.0},
        {L"Spline(DataInit=0 1;2 3)", 0.5, 1.5},
        {L"FredlundXing(A=12,N=1.8,M=0.6,SatWC=0.42)", 1.0, 0.42},
        {L"FredlundXing(A=12,N=1.8,M=0.6,SatWC=0.42)", -1e6, 0.0},
    };
    for (const auto& [text, x, value] : rows) {
        EXPECT_DOUBLE_EQ(At(Made(text), x), value) << testing::PrintToString(std::wstring(text));
    }
}

TEST(Create, KeepsReasonAndTextInAnUndefinedFunction) {
    const std::tuple<const wchar_t*, std::uint32_t, const wchar_t*> rows[] = {
        {L"Linear", 20547, L""},
        {L"Bezier(1)", 20220, L"Bezier"},
        {L"Linear(DataInit=0 1;2 x)", 20218, L"Linear"},
        {L"Linear(Colour=red)", 21638, L"Linear"},
        {L"Linear()", 20549, L"Linear"},
        {L"Const()", 20549, L"Const"},
        {L"FredlundXing(A=12,N=1.8,M=0.6)", 20549, L"FredlundXing"},
        {L"FredlundXing(A=-12,N=1.8,M=0.6,SatWC=0.4)", 24389, L"FredlundXing"},
        {L"Linear(DataInit=0 1;2 3,LogInput=true)", 24389, L"Linear"},
        {L"Spline(DataInit=2 1;0 3,Tension=50)", 22762, L"Spline"},
        {L"VolWC(3)", 20549, L"VolWC"},  // nobody resolves the number
    };
    lmw::test::RecordingHandler handler;
    const impl::ScopedErrorHandler scope(&handler);
    for (const auto& [text, message, name] : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        IFn function = Made(L"Const(1)");
        EXPECT_EQ(Create(text, function).MessageId(), message);
        ASSERT_TRUE(impl::IsUndefined(&*function));
        EXPECT_EQ(static_cast<const FnUndefined&>(*function).Name(), name);
        const IFn copy = IFn(function->Clone());
        EXPECT_EQ(impl::as_wstring(*copy), text);
        EXPECT_TRUE(impl::IsEqual(*copy, *function));
        EXPECT_FALSE(impl::IsEqual(*IFn(), *function));
        EXPECT_EQ(At(function, 1.0), kUndefined);
        EXPECT_EQ(handler.Take().at(0).message_id, message);
    }
}

TEST(Kinds, HaveTextsThatMakeEqualFunctions) {
    const std::map<std::wstring, std::wstring> texts = {
        {L"Const", L"Const(Value=0.1)"},
        {L"FredlundXing",
         L"FredlundXing(InputParam=PorePressure,OutputParam=VolumetricWaterContent,A=12,N=1.8,"
         L"M=0.6,SatWC=0.42,SuctionLimit=1e+06)"},
        {L"Spline", L"Spline(Type=a\\,b,DataInit=0 1;1 2,Tension=50,Smooth=80,SlopeAfter=Cycle)"},
        {L"ConstForce", L"ConstForce(ConstForce=3)"},
    };
    for (const auto& [kind, text] : texts) {
        SCOPED_TRACE(testing::PrintToString(text));
        const IFn function = Made(text);
        const std::wstring written = impl::as_wstring(*function);
        const IFn again = Made(written);
        EXPECT_TRUE(impl::IsEqual(*function, *again));
        EXPECT_EQ(impl::as_wstring(*again), written);
        EXPECT_EQ(again->KindName(), kind);
    }
    EXPECT_EQ(impl::as_wstring(*Made(texts.at(L"ConstForce"))), texts.at(L"ConstForce"));
    // Every kind can be made and copied, and is called by its name.
    for (const std::wstring& name : KindNames()) {
        SCOPED_TRACE(testing::PrintToString(name));
        const std::unique_ptr<FnImpl> function = MakeFunction(name);
        EXPECT_EQ(function->KindName(), name);
        EXPECT_TRUE(impl::IsEqual(*function, *function->Clone()));
    }
    EXPECT_EQ(KindNames().size(), 6U + 16U + 63U);
}

TEST(Kinds, AreRegisteredOnceUnderAProperName) {
    const auto make = [] { return std::make_unique<lmw::test::PlainKind>(); };
    EXPECT_EQ(RegisterKind(L"Const", make).MessageId(), 20220U);
    EXPECT_EQ(RegisterKind(L"", make).MessageId(), 20547U);
    EXPECT_EQ(RegisterKind(L"a(b", make).MessageId(), 20547U);
    EXPECT_EQ(MakeFunction(L"Bezier"), nullptr);
}

// The functions against the curves they are made of, and their derivatives against differences.
TEST(FunctionsOfPoints, FollowTheirCurvesOnEveryScale) {
    lmw::test::PropertyRandom random;
    const Tolerance<double> tolerance;
    for (int round = 0; round < 200; ++round) {
        const bool log_input = random.Chance(0.5);
        const bool log_output = random.Chance(0.5);
        std::vector<FPOINT> points;
        std::vector<FPOINT> scaled;
        double x = random.LogUniform(1e-3, 1.0);
        for (int i = 0; i < 6; ++i) {
            points.push_back({x, random.LogUniform(0.1, 10.0)});
            scaled.push_back({log_input ? std::log10(x) : x,
                              log_output ? std::log10(points.back().y) : points.back().y});
            x += random.LogUniform(0.1, 10.0);
        }
        FnSpline function;
        function.SetPoints(points);
        function.SetTension(50);
        function.SetTailAfter(TailType::Calc());
        function.SetLogInput(log_input);
        function.SetLogOutput(log_output);
        const IFn shared(function.Clone());
        EXPECT_EQ(At(shared, points[1].x), kUndefined);  // not prepared
        ASSERT_TRUE(function.UpdateCalculatedValues().Succeeded());
        math::fn::interpolate::Spline curve(100, 50, {}, TailType::Calc(), scaled.data(),
                                            scaled.data() + scaled.size(), kUndefined);
        ASSERT_TRUE(curve.UpdateCalculatedValues().Succeeded());
        const double site = random.Uniform(points.front().x, 1.1 * points.back().x);
        const double on_curve = curve(log_input ? std::log10(site) : site);
        EXPECT_EQ(function.Calculate(&site, nullptr),
                  log_output ? std::pow(10.0, on_curve) : on_curve);

        const double step = 1e-6 * site;
        const double low = site - step;
        const double high = site + step;
        const double difference =
            (function.Calculate(&high, nullptr) - function.Calculate(&low, nullptr)) / (high - low);
        const impl::ComputedResult slope = impl::DyDx(site, tolerance, function);
        EXPECT_TRUE(slope.computed);
        EXPECT_NEAR(slope.value, difference, 1e-4 * (1.0 + std::fabs(difference))) << site;
        EXPECT_EQ(impl::Integrate(low, high, tolerance, function).computed,
                  !log_input && !log_output);
    }
}

TEST(FunctionsOfPoints, KnowTheirExtentsPointsAndReview) {
    constexpr auto kInclusive = gtl::bound_kind::inclusive;
    const gtl::range<double> of_points = {-1.0, kInclusive, 3.0, kInclusive};
    const std::pair<const wchar_t*, gtl::range<double>> rows[] = {
        {L"Linear(DataInit=0 -1;2 3)", of_points},
        {L"Linear(DataInit=0 -1;2 3,SlopeBefore=None,SlopeAfter=Cycle)", of_points},
        {L"Linear(DataInit=0 -1;2 3,SlopeAfter=Calc)", {}},
        {L"Step(DataInit=0 -1;2 3,SlopeAfter=Calc)", of_points},
        {L"Step(DataInit=0 -1;2 3,SlopeBefore=1)", {}},
        {L"Const(4)", {4.0, kInclusive, 4.0, kInclusive}},
    };
    for (const auto& [text, extents] : rows) {
        EXPECT_EQ(impl::OutputExtents(*Made(text)), extents)
            << testing::PrintToString(std::wstring(text));
    }
    const IFn linear = Made(rows[0].first);
    EXPECT_EQ(linear->InputRangeNumPoints(), 2);
    EXPECT_EQ(linear->InputRangeAt(1), 2.0);
    EXPECT_EQ(linear->InputRangeAt(2), kUndefined);
    const IFnReview* const review = impl::Review(*linear);
    ASSERT_NE(review, nullptr);
    EXPECT_EQ(review->PointAt(1), (FPOINT{2.0, 3.0}));
    EXPECT_EQ(review->ValueAt(1), 3.0);
    EXPECT_EQ(review->ValueAt(-1), kUndefined);
}

TEST(FredlundXingFunction, HasTheDerivativeOfItsCurve) {
    const Tolerance<double> tolerance;
    for (const double n : {0.5, 2.0, 90.0}) {
        FnFredXing function;
        function.SetA(20.0);
        function.SetN(n);
        function.SetM(0.8);
        function.SetSaturatedContent(0.4);
        ASSERT_TRUE(function.UpdateCalculatedValues().Succeeded());
        for (const double suction : {1e-3, 1.0, 15.0, 25.0, 1e4, 9e5, 2e6}) {
            const double step = 1e-5 * suction;
            const double low = -suction - step;
            const double high = -suction + step;
            const double difference =
                (function.Calculate(&high, nullptr) - function.Calculate(&low, nullptr)) /
                (high - low);
            const double slope = impl::DyDx(-suction, tolerance, function).value;
            EXPECT_NEAR(slope, difference, 1e-5 * std::fabs(difference) + 1e-11 / step)
                << "n " << n << ", suction " << suction;
        }
        math::fpu::Exception::On(math::fpu::Exception::DefaultExceptionMask());  // nothing traps
        const double far_out = impl::DyDx(-9e5, tolerance, function).value;
        math::fpu::Exception::Off();
        EXPECT_LT(0.0, far_out);
        EXPECT_EQ(impl::DyDx(1.0, tolerance, function).value, 0.0);
        EXPECT_FALSE(impl::Integrate(-1.0, 0.0, tolerance, function).computed);
        function.SetA(10.0);
        const double x = -1.0;
        EXPECT_EQ(function.Calculate(&x, nullptr), kUndefined);  // not prepared
    }
}

class Project final : public IFunctionResolver {
 public:
    Project() : previous_(SetFunctionResolver(this)) {}
    Project(const Project&) = delete;
    Project& operator=(const Project&) = delete;
    ~Project() override { SetFunctionResolver(previous_); }

    void Add(std::uint32_t number, const std::wstring& text) {
        ::fn::string::AttributePairs pairs;
        std::wstring kind;
        EXPECT_TRUE(::fn::string::Parse(text, kind, pairs).Succeeded());
        functions_[number] = IFn(MakeFunction(kind));
        EXPECT_TRUE(SetPersistedAttributes(functions_[number], pairs).Succeeded());
    }

    [[nodiscard]] IFn FunctionByNumber(std::uint32_t number) const override {
        const auto found = functions_.find(number);
        return found != functions_.end() ? found->second : IFn();
    }

 private:
    const IFunctionResolver* previous_;
    std::map<std::uint32_t, IFn> functions_;
};

TEST(Reference, IsTheFunctionOfItsNumber) {
    Project project;
    project.Add(3, L"Linear(DataInit=0 1;2 3,SlopeAfter=None)");
    project.Add(4, L"HydMod(3)");
    project.Add(5, L"VolWC(6)");
    project.Add(6, L"HydMod(HydModFnNum=5)");
    project.Add(7, L"Const()");
    const IFn direct = Made(L"VolWC(VolWCFnNum=3)");
    const IFn twice = Made(L"Precipitation(4)");
    for (const IFn& reference : {direct, twice}) {
        EXPECT_EQ(At(reference, 0.5), 1.5);
        EXPECT_EQ(reference->InputRangeNumPoints(), 2);
        EXPECT_EQ(impl::DyDx(0.5, Tolerance<double>(), *reference).value, 1.0);
        EXPECT_EQ(impl::Integrate(0.0, 2.0, Tolerance<double>(), *reference).value, 4.0);
        EXPECT_EQ(At(reference, 9.0), kUndefined);
        EXPECT_EQ(impl::LastError(*reference).MessageId(), 20548U);
    }
    EXPECT_EQ(impl::as_wstring(*direct), L"VolWC(VolWCFnNum=3)");

    IFn broken;
    EXPECT_EQ(Create(L"VolWC(6)", broken).MessageId(), 20548U);  // a circle
    EXPECT_EQ(Create(L"VolWC(7)", broken).MessageId(), 20549U);  // incomplete itself
    EXPECT_EQ(Create(L"VolWC(8)", broken).MessageId(), 20549U);  // not there
    EXPECT_EQ(At(Made(L"VolWC(3)"), 0.5), 1.5);                  // circles leave nothing behind
}

}  // namespace
