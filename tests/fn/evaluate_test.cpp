// The guarded evaluation and the questions about what a kind may offer.

#include "common/fn/evaluate.h"

#include "common/fn/fn_const.h"
#include "common/fn/fn_curves.h"
#include "common/fn/fn_error.h"
#include "common/fn/fn_undefined.h"
#include "common/fn/kinds.h"

#include "tests/fn/test_kinds.h"
#include "tests/support/allocation_counter.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

using namespace lmw::fn::impl;
using lmw::kUndefined;
using lmw::fn::error::CalculationException;
using namespace lmw::test;
using math::algorithm::Tolerance;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

class ReasonedKind final : public PlainKind, public lmw::fn::IFnLastError {
 public:
    using PlainKind::PlainKind;
    [[nodiscard]] gtl::status LastError() const override {
        return lmw::fn::error::UnableToComputeValue(L"reasoned", {}, {});
    }
};

template <class Exception>
PlainKind::Calculation Throwing(std::uint32_t message_id) {
    return [message_id](auto, auto) -> double { throw Exception(gtl::status(message_id)); };
}

TEST(SafeCalculate, GivesTheUndefinedValueAndTheReasonForWhatIsNoValue) {
    struct Row {
        const char* name;
        PlainKind::Calculation calculation;
        double value;
        std::uint32_t reason;  // 1: the handler is not called
    };
    const double least = -std::numeric_limits<double>::max();
    const Row rows[] = {
        {"value", [](auto, auto) { return 2.5; }, 2.5, 1},
        {"least finite", [least](auto, auto) { return least; }, least, 1},
        {"undefined", [](auto, auto) { return kUndefined; }, kUndefined, 20548},
        {"NaN", [](auto, auto) { return kNan; }, kUndefined, 20548},
        {"infinity", [](auto, auto) { return kInfinity; }, kUndefined, 20548},
        {"-infinity", [](auto, auto) { return -kInfinity; }, kUndefined, 20548},
        {"own exception", Throwing<CalculationException>(20549), kUndefined, 20549},
        {"status exception", Throwing<gtl::status_exception>(21638), kUndefined, 21638},
    };
    RecordingHandler handler;
    const double x = 1.0;
    const double y = 2.0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ReasonedKind kind(row.calculation);
        EXPECT_EQ(SafeCalculate(kind, &x, &y), row.value);  // nobody listens
        const ScopedErrorHandler scope(&handler);
        EXPECT_EQ(SafeCalculate(kind, &x, &y), row.value);
        const auto failures = handler.Take();
        ASSERT_EQ(failures.size(), row.reason == 1 ? 0U : 1U);
        if (!failures.empty()) {
            EXPECT_EQ(failures[0].function, &kind);
            EXPECT_EQ(failures[0].x, &x);
            EXPECT_EQ(failures[0].y, &y);
            EXPECT_EQ(failures[0].message_id, row.reason);
        }
    }
    EXPECT_EQ(CurrentErrorHandler(), nullptr);
}

TEST(SafeCalculate, PassesOtherExceptionsOn) {
    const PlainKind kind([](auto, auto) -> double { throw std::runtime_error("not ours"); });
    RecordingHandler handler;
    const ScopedErrorHandler scope(&handler);
    EXPECT_THROW(SafeCalculate(kind, nullptr, nullptr), std::runtime_error);
    EXPECT_TRUE(handler.Take().empty());
}

TEST(SafeCalculate, AllocatesNothingForAValueOrWithoutAHandler) {
    LMW_SKIP_UNCOUNTED_ALLOCATIONS();
    IFn linear;
    ASSERT_TRUE(lmw::fn::Create(L"Linear(DataInit=0 1;1 2,SlopeAfter=None)", linear).Succeeded());
    for (const double x : {0.5, 2.0}) {
        EXPECT_EQ(AllocationsOf([&] { SafeCalculate(*linear, &x, nullptr); }), 0U) << x;
    }
}

TEST(ErrorHandler, BelongsToItsThread) {
    RecordingHandler here;
    const FnConst broken;
    const ScopedErrorHandler scope(&here);
    std::thread([&broken] {
        EXPECT_EQ(CurrentErrorHandler(), nullptr);
        RecordingHandler there;
        const ScopedErrorHandler inner(&there);
        EXPECT_EQ(SafeCalculate(broken, nullptr, nullptr), kUndefined);
        EXPECT_EQ(there.Take().size(), 1U);
    }).join();
    EXPECT_TRUE(here.Take().empty());
    EXPECT_EQ(CurrentErrorHandler(), &here);
}

class CurvedKind final : public PlainKind {
 public:
    [[nodiscard]] bool SupportsDyDx() const override { return true; }
    [[nodiscard]] double DyDx(double x, const Tolerance<double>& /*tolerance*/) const override {
        return 2.0 * x;
    }
    [[nodiscard]] bool SupportsIntegrate() const override { return true; }
    [[nodiscard]] double Integrate(double /*a*/, double /*b*/,
                                   const Tolerance<double>& /*tolerance*/) const override {
        throw CalculationException(lmw::fn::error::FunctionDefinitionIncomplete());
    }
};

TEST(DerivativeAndIntegral, AreComputedOnlyWhereTheKindOffersThem) {
    const Tolerance<double> tolerance;
    const PlainKind plain;
    for (const ComputedResult& result :
         {DyDx(1.0, tolerance, plain), Integrate(0.0, 1.0, tolerance, plain)}) {
        EXPECT_FALSE(result.computed);
        EXPECT_EQ(result.value, kUndefined);
        EXPECT_EQ(result.second, kUndefined);
    }
    const CurvedKind curved;
    EXPECT_TRUE(DyDx(3.0, tolerance, curved).computed);
    EXPECT_EQ(DyDx(3.0, tolerance, curved).value, 6.0);
    RecordingHandler handler;
    const ScopedErrorHandler scope(&handler);
    const ComputedResult thrown = Integrate(0.0, 1.0, tolerance, curved);
    EXPECT_FALSE(thrown.computed);
    EXPECT_EQ(thrown.value, kUndefined);
    EXPECT_EQ(handler.Take().at(0).message_id, 20549U);
}

TEST(Capabilities, HaveDefaultsWhereAKindOffersNone) {
    const PlainKind plain;
    EXPECT_TRUE(LastError(plain).Succeeded());
    EXPECT_EQ(OutputExtents(plain), gtl::range<double>());
    EXPECT_EQ(Review(plain), nullptr);
    EXPECT_EQ(as_wstring(plain), L"Plain(Value=0)");
    EXPECT_EQ(TailCycleLocation(plain), math::TailCycleLocation::None);
    EXPECT_EQ(plain.InputRangeNumPoints(), 0);
    EXPECT_EQ(plain.InputRangeAt(0), kUndefined);
}

TEST(TailCycleLocation, FollowsTheTwoTails) {
    namespace location = math::TailCycleLocation;
    const std::pair<const wchar_t*, location::Type> rows[] = {
        {L"SlopeBefore=Calc,SlopeAfter=0", location::None},
        {L"SlopeBefore=Cycle,SlopeAfter=None", location::Before},
        {L"SlopeBefore=2.5,SlopeAfter=Cycle", location::After},
        {L"SlopeBefore=Cycle,SlopeAfter=Cycle", location::Both}};
    for (const auto& [tails, expected] : rows) {
        IFn step;
        const std::wstring text = std::wstring(L"Step(DataInit=0 1;1 2,") + tails + L")";
        EXPECT_TRUE(lmw::fn::Create(text, step).Succeeded());
        EXPECT_EQ(TailCycleLocation(*step), expected);
    }
}

class OtherPlainKind final : public PlainKind {};

class EqualToAll final : public PlainKind, public lmw::fn::IFnIsEqual {
 public:
    [[nodiscard]] bool IsEqual(const FnImpl& /*other*/) const override { return true; }
};

TEST(IsEqual, ComparesTypeAndDefinitionButNotIdentity) {
    PlainKind a;
    PlainKind b;
    b.SetName(L"another");
    b.SetDescription(L"described");
    EXPECT_TRUE(IsEqual(a, b));
    b.SetValue(1.0);
    EXPECT_FALSE(IsEqual(a, b));
    a.SetValue(kNan);
    b.SetValue(kNan);
    EXPECT_TRUE(IsEqual(a, b));
    EXPECT_FALSE(IsEqual(PlainKind(), OtherPlainKind()));
    EXPECT_FALSE(IsEqual(PlainKind(), FnConst(0.0)));
    EXPECT_TRUE(IsEqual(EqualToAll(), a));
    EXPECT_FALSE(IsEqual(a, EqualToAll()));
    // The same C++ type with dictionaries of other attributes, or of as many others.
    EXPECT_FALSE(IsEqual(FnUnitConst(FnAttrConstForce(), 1.0), FnConst(1.0)));
    // Kinds of one C++ type: a force is no pressure, whatever their numbers.
    EXPECT_FALSE(
        IsEqual(FnUnitConst(FnAttrConstForce(), 1.0), FnUnitConst(FnAttrConstPressure(), 1.0)));
    EXPECT_TRUE(
        IsEqual(FnUnitConst(FnAttrConstForce(), 1.0), FnUnitConst(FnAttrConstForce(), 1.0)));
}

TEST(IsUndefined, GoesByTheDictionary) {
    EXPECT_TRUE(IsUndefined(nullptr));
    EXPECT_TRUE(IsUndefined(lmw::fn::CreateUndefined(L"sand", {}).get()));
    const PlainKind always_undefined([](auto, auto) { return kUndefined; });
    EXPECT_FALSE(IsUndefined(&always_undefined));
}

}  // namespace
