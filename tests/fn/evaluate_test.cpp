// The guarded evaluation, the questions about what a kind may offer, and the handles of functions.

#include "common/fn/evaluate.h"

#include "common/datatable/deep_table_context.h"
#include "common/fn/fn_const.h"
#include "common/fn/fn_curves.h"
#include "common/fn/fn_error.h"
#include "common/fn/fn_undefined.h"
#include "common/fn/ifn.h"
#include "common/fn/kinds.h"

#include "tests/fn/test_kinds.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/test_host.h"
#include "tests/support/threads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

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

TEST(Handle, CopiesShareUntilOneIsChanged) {
    const IFn original(std::make_unique<FnConst>(1.0));
    IFn copy = original;
    EXPECT_EQ(&*copy, &*original);
    EXPECT_EQ(original->ReferenceCount(), 2);
    static_cast<FnConst&>(copy.pImpl_mutable()).SetValue(2.0);
    EXPECT_EQ(SafeCalculate(*original, nullptr, nullptr), 1.0);
    EXPECT_EQ(SafeCalculate(*copy, nullptr, nullptr), 2.0);
    EXPECT_EQ(original->ReferenceCount(), 1);

    const FnImpl* const alone = &*copy;
    EXPECT_EQ(&copy.pImpl_mutable(), alone);
    const IFn& same = copy;
    copy = same;  // to itself
    EXPECT_EQ(&*copy, alone);
    EXPECT_EQ(alone->ReferenceCount(), 1);
}

TEST(Handle, PreparesThroughCopyOnWriteAndOnlyWhenNeeded) {
    IFn original(std::make_unique<FnConst>(1.0));
    IFn copy = original;
    EXPECT_TRUE(copy.UpdateCalculatedValues().Succeeded());
    EXPECT_NE(&*copy, &*original);
    EXPECT_FALSE(original->IsUpToDate());
    const IFn prepared = copy;
    EXPECT_TRUE(copy.UpdateCalculatedValues().Succeeded());
    EXPECT_EQ(&*copy, &*prepared);
}

TEST(Handle, DefaultMadeAndMovedFromAreTheUndefinedFunctionOfTheThread) {
    IFn handle;
    EXPECT_TRUE(IsUndefined(&*handle));
    EXPECT_EQ(&*handle, &IFn::FnUndefined_());
    EXPECT_EQ(IFn::FnUndefined_().Name(), L"");
    EXPECT_EQ(SafeCalculate(*handle, nullptr, nullptr), lmw::kUndefined);
    EXPECT_TRUE(LastError(*handle).Succeeded());
    std::thread([here = &IFn::FnUndefined_()] { EXPECT_NE(&IFn::FnUndefined_(), here); }).join();

    IFn moved(std::make_unique<FnConst>(1.0));
    const IFn taken = std::move(moved);
    EXPECT_EQ(&moved.pImpl(), &IFn::FnUndefined_());  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(SafeCalculate(*taken, nullptr, nullptr), 1.0);
}

TEST(UndefinedFunction, IsSharedEvenWhenChanged) {
    IFn first(lmw::fn::CreateUndefined(L"sand", {}));
    IFn second = first;
    EXPECT_EQ(&first.pImpl_mutable(), &second.pImpl_mutable());
}

TEST(UndefinedFunction, GivesEveryThreadItsOwnCopyOfTheReason) {
    gtl::status why = lmw::fn::error::UnableToComputeValue(L"sand", L"wet", L"no water");
    why.AttachSource("place", 12);
    const IFn undefined(lmw::fn::CreateUndefined(L"sand", why));
    InThreads(4, [&](std::size_t) {
        for (int round = 0; round < 100; ++round) {
            EXPECT_EQ(LastError(*undefined).MessageId(), 20548U);
        }
    });
    const gtl::status copy = LastError(*undefined);
    EXPECT_EQ(copy.as_wstring(), why.as_wstring());
    EXPECT_EQ(copy.Detail()->Arguments(), why.Detail()->Arguments());
    EXPECT_EQ(copy.Detail()->SourceFile(), "place");
    EXPECT_EQ(copy.Detail()->Line(), 12);
    EXPECT_EQ(why.Detail()->ReferenceCount(), 1U);
}

class DeepKind final : public PlainKind, public IDeepTableContext {
 public:
    gtl::status InitializeInstance(GID owner, GID table) override {
        SetValue(owner * 1000.0 + table);
        return owner == 0 ? lmw::fn::error::OperationNotSupported() : gtl::status();
    }
    [[nodiscard]] std::unique_ptr<FnImpl> Clone() const override {
        return std::make_unique<DeepKind>(*this);
    }
};

TEST(Handle, InitializesOnlyFunctionsThatLookIntoTables) {
    IFn plain(std::make_unique<FnConst>());  // incomplete, and not asked to prepare itself
    EXPECT_TRUE(plain.InitializeInstance(1, 2).Succeeded());

    IFn deep(std::make_unique<DeepKind>());
    const IFn before = deep;
    EXPECT_TRUE(deep.InitializeInstance(3, 4).Succeeded());
    EXPECT_TRUE(deep->IsUpToDate());
    EXPECT_EQ(SafeCalculate(*deep, nullptr, nullptr), 3004.0);
    EXPECT_EQ(SafeCalculate(*before, nullptr, nullptr), 0.0);
    EXPECT_EQ(deep.InitializeInstance(0, 4).MessageId(), 21638U);
}

TEST(EnsureValid, PreparesWhatIsOutOfDateAndReportsTheOutcome) {
    FnConst constant;
    gtl::status outcome;
    lmw::fn::EnsureValid(constant, outcome);
    EXPECT_EQ(outcome.MessageId(), 20549U);
    constant.SetValue(1.0);
    lmw::fn::EnsureValid(constant, outcome);
    EXPECT_TRUE(outcome.Succeeded());
    outcome = lmw::fn::error::OperationNotSupported();
    lmw::fn::EnsureValid(constant, outcome);  // nothing to do
    EXPECT_TRUE(outcome.Failed());
    lmw::fn::EnsureValid(constant);
}

class LastWords final : public TestHost {
 public:
    void Fatal(const gtl::status& reason, const char* place, int line) const noexcept override {
        std::fprintf(stderr, "host: %u at %s %d\n", reason.MessageId(), place, line);
    }
};

TEST(EnsureValidDeathTest, EndsTheProcessByTheFatalPath) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            const LastWords host;
            FnConst incomplete;
            lmw::fn::EnsureValid(incomplete);
        },
        testing::AllOf(testing::HasSubstr("critical"), testing::HasSubstr("fnimpl"),
                       testing::HasSubstr("host: 20549 at fnimpl 481")));
}

TEST(SharedFunctions, AreEvaluatedByManyThreadsEachWithItsOwnHandler) {
    constexpr int kRounds = 500;
    std::vector<IFn> functions;
    for (const wchar_t* text : {L"Linear(DataInit=0 0;10 20,SlopeBefore=None)",
                                L"Spline(DataInit=0 0;5 10;10 20,Tension=50,SlopeBefore=None)",
                                L"Step(DataInit=0 0;10 20,SlopeBefore=None)", L"Unheard(Of=1)"}) {
        lmw::fn::Create(text, functions.emplace_back()).Ignore();
    }
    InThreads(8, [&](std::size_t) {
        RecordingHandler handler;
        const ScopedErrorHandler scope(&handler);
        for (int round = 0; round < kRounds; ++round) {
            const IFn own = functions[static_cast<std::size_t>(round) % functions.size()];
            for (const double x : {5.0, -1.0}) {
                SafeCalculate(*own, &x, nullptr);
            }
        }
        // One failure before the data for each, and both for the function that is not there.
        EXPECT_EQ(handler.Take().size(), kRounds + kRounds / 4U);
    });
}

}  // namespace
