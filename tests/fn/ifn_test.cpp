// Handles, copy-on-write, the undefined function, and what happens when nothing can go on.

#include "common/fn/ifn.h"

#include "common/datatable/deep_table_context.h"
#include "common/fn/evaluate.h"
#include "common/fn/fn_const.h"
#include "common/fn/fn_curves.h"
#include "common/fn/fn_error.h"
#include "common/fn/fn_undefined.h"
#include "common/fn/kinds.h"

#include "tests/fn/test_kinds.h"
#include "tests/support/test_host.h"
#include "tests/support/threads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <thread>
#include <vector>

namespace {

using lmw::fn::impl::IsUndefined;
using lmw::fn::impl::SafeCalculate;
using namespace lmw::test;

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
    EXPECT_TRUE(lmw::fn::impl::LastError(*handle).Succeeded());
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
            EXPECT_EQ(lmw::fn::impl::LastError(*undefined).MessageId(), 20548U);
        }
    });
    const gtl::status copy = lmw::fn::impl::LastError(*undefined);
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
        const lmw::fn::impl::ScopedErrorHandler scope(&handler);
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
