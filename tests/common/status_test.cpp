#include "common/status.h"

#include "common/sys/text_encoding.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace {

using gtl::status;
using lmw::test::TestHost;

// Property 1.
TEST(Status, DefaultIsSuccessWithoutRecordTextOrAllocation) {
    const status success;
    EXPECT_TRUE(success.Succeeded());
    EXPECT_EQ(success.Detail(), nullptr);
    EXPECT_EQ(success.MessageId(), 0U);
    EXPECT_EQ(success.as_wstring(), L"");
    bool failed = false;
    const std::size_t allocations = lmw::test::AllocationsOf([&failed] {
        const status first;
        status second = first;
        status third = std::move(second);
        third = first;
        failed = third.Failed();
    });
    EXPECT_FALSE(failed);
    EXPECT_EQ(allocations, 0U);
}

// Property 2; a leak or a double free shows under the address sanitizer.
TEST(Status, CopiesShareOneCountedRecord) {
    const TestHost host;
    status first(101, L"a");
    ASSERT_TRUE(first.Failed());
    EXPECT_EQ(first.Detail()->ReferenceCount(), 1U);
    {
        const status second =
            first;  // NOLINT(performance-unnecessary-copy-initialization): counted below
        EXPECT_EQ(second.Detail(), first.Detail());
        EXPECT_EQ(first.Detail()->ReferenceCount(), 2U);
        status other(102);
        other = second;
        EXPECT_EQ(first.Detail()->ReferenceCount(), 3U);
        other = status();
        EXPECT_EQ(first.Detail()->ReferenceCount(), 2U);
    }
    EXPECT_EQ(first.Detail()->ReferenceCount(), 1U);

    status& same = first;
    first = same;
    EXPECT_EQ(first.Detail()->ReferenceCount(), 1U);

    const status moved = std::move(first);
    EXPECT_EQ(moved.Detail()->ReferenceCount(), 1U);
    EXPECT_TRUE(first.Succeeded());  // NOLINT(bugprone-use-after-move): property 3
}

TEST(Status, RecordHoldsWhatItWasMadeOf) {
    const TestHost host;
    status failure(123, L"a", L"b%d", L"", L"d");
    EXPECT_EQ(failure.Detail()->Message(), L"123[%s|%s|%s|%s|%s]");
    EXPECT_EQ(failure.Detail()->Arguments(),
              (std::array<std::wstring, 5>{L"a", L"b%d", L"", L"d", L""}));
    EXPECT_EQ(failure.Detail()->SourceFile(), "");
    EXPECT_EQ(failure.Detail()->Line(), -1);
    EXPECT_EQ(failure.MessageId(), 123U);
    EXPECT_EQ(failure.as_wstring(), L"123[a|b%d||d|]");

    failure.AttachSource("curve.cpp", 42);
    EXPECT_EQ(failure.Detail()->SourceFile(), "curve.cpp");
    EXPECT_EQ(failure.Detail()->Line(), 42);
    EXPECT_TRUE(status().AttachSource("curve.cpp", 42).Succeeded());
}

TEST(Status, TemplateIsFetchedWhenTheRecordIsMade) {
    status failure;
    {
        TestHost host;
        host.SetText(7, L"first %s");
        failure = status(7, L"x");
    }
    EXPECT_EQ(failure.as_wstring(), L"first x");
}

TEST(Status, TemplateEndingInAnUnfinishedPlaceholderGivesTheEmptyText) {
    TestHost host;
    for (const wchar_t* text : {L"%", L"reached 100%", L"value %-5", L"%s is %l", L"%s %I64"}) {
        host.SetText(7, text);
        EXPECT_EQ(status(7, L"x", L"y").as_wstring(), L"") << text;
    }
}

TEST(Status, ReadyTextsComeBackToTheLetter) {
    for (const std::wstring& text :
         {std::wstring(), std::wstring(L"100%"), std::wstring(L"%s%n%%"),
          std::wstring(L"a\nb \U0001F600 \u4E2D"), std::wstring(L"nul\0inside", 10)}) {
        const status failure = status::FromText(text);
        EXPECT_TRUE(failure.Failed());
        EXPECT_EQ(failure.MessageId(), 0U);
        EXPECT_EQ(failure.as_wstring(), text);
    }
}

TEST(StatusException, CarriesTheStatusAndShowsItsText) {
    status reason = status::FromText(L"out of \u00E4ther 100%");
    try {
        throw gtl::status_exception(reason);
    } catch (const std::exception& error) {
        EXPECT_EQ(error.what(), sys::Narrow(L"out of \u00E4ther 100%"));
        const auto* carried = dynamic_cast<const gtl::status_exception*>(&error);
        ASSERT_NE(carried, nullptr);
        EXPECT_EQ(carried->Status().Detail(), reason.Detail());
    }
    EXPECT_EQ(reason.Detail()->ReferenceCount(), 1U);
    EXPECT_STREQ(gtl::status_exception(status()).what(), "");
}

// Freed memory would show under the sanitizer.
TEST(StatusException, NextTextOverwritesTheSharedBufferWhichStaysReadable) {
    const gtl::status_exception first(status::FromText(L"first"));
    const gtl::status_exception second(status::FromText(L"other"));
    const char* text = first.what();
    EXPECT_STREQ(text, "first");
    EXPECT_EQ(second.what(), text);
    EXPECT_STREQ(text, "other");
    const gtl::status_exception longer(status::FromText(std::wstring(100'000, L'x')));
    EXPECT_EQ(std::string(longer.what()).size(), 100'000U);
    EXPECT_EQ(std::string(text).substr(0, 4).size(), 4U);
}

}  // namespace
