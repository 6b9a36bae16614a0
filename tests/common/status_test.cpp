#include "common/status.h"

#include "common/convert_error.h"
#include "common/errors.h"
#include "common/message_text.h"
#include "common/range_error.h"
#include "common/sys/last_error.h"
#include "common/sys/text_encoding.h"
#include "common/system_error.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using gtl::status;
using lmw::test::TestHost;
using Convert = gtl::Convert_error_status;
using File = LmwError::File;
using gtl::bound_kind;
using gtl::impl::range_error;
using lmw::diag::impl::SysCodeAsString_;

TEST(Status, DefaultIsSuccessWithoutRecordTextOrAllocation) {  // property 1
    const status success;
    EXPECT_TRUE(success.Succeeded());
    EXPECT_EQ(success.Detail(), nullptr);
    EXPECT_EQ(success.MessageId(), 0U);
    EXPECT_EQ(success.as_wstring(), L"");
    EXPECT_EQ(lmw::test::AllocationsOf([&success] {
                  status second = success;
                  status third = std::move(second);
                  third = success;
              }),
              0U);
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

struct FactoryRow {
    status made;
    std::uint32_t message_id;
    std::size_t arguments;  // of "a", "b" and "c"
};

std::vector<FactoryRow> AllFactories() {
    // clang-format off
    return {
        {LmwError::Undefined(), 24181, 0},              {LmwError::dll_load(L"a", L"b"), 20503, 2},
        {LmwError::err_sysserv(L"a", L"b"), 20755, 2},  {LmwError::err_sysserv(L"a", L"b", L"c"), 20755, 3},
        {LmwError::mngsrv(), 20706, 0},                 {LmwError::syntax(L"a"), 20754, 1},
        {LmwError::syntax("a"), 20754, 1},              {LmwError::unexpected_exception(L"a"), 20654, 1},
        {LmwError::unexpected_exception("a"), 20654, 1},
        {File::copy(L"a", L"b", L"c"), 20516, 3},       {File::create_dir(L"a", L"b"), 20517, 2},
        {File::del(L"a", L"b"), 20518, 2},              {File::file_not_found(L"a"), 20524, 1},
        {File::find(L"a", L"b"), 20519, 2},             {File::get_temp_path(L"a"), 20520, 1},
        {File::invalid_path(L"a"), 20521, 1},           {File::open(L"a", L"b"), 20526, 2},
        {File::read(L"a", L"b"), 20536, 2},             {File::rename(L"a", L"b", L"c"), 20538, 3},
        {File::save_over_readonly(L"a"), 20539, 1},     {File::set_attrib(L"a", L"b"), 20540, 2},
        {File::shell_missing_association(L"a", L"b"), 20514, 2},
        {File::unknown_file_type(L"a"), 20758, 1},      {File::write(L"a", L"b"), 20541, 2},
        {Convert::InvalidCharStatus(L"a", L"b"), 20218, 2},
        {Convert::NotSupportedStatus(L"a", L"b"), 20219, 2},
        {Convert::OutOfRangeStatus(L"a", L"b"), 20220, 2},
        {Convert::OverflowStatus(L"a", L"b"), 20221, 2},
        {gtl::RangeStatusFormat(), 24389, 0},           {range_error::ValueIsRequired(), 20914, 0},
    };
    // clang-format on
}

TEST(Errors, FactoriesGiveTheirMessageItsTextAndArguments) {
    const wchar_t* const kTexts[] = {L"a", L"b", L"c"};
    for (const FactoryRow& row : AllFactories()) {
        SCOPED_TRACE(row.message_id);
        EXPECT_EQ(row.made.MessageId(), row.message_id);
        EXPECT_GT(row.made.as_wstring().size(), 8U);
        std::array<std::wstring, status::kMaxArguments> arguments;
        std::copy_n(kTexts, row.arguments, arguments.begin());
        EXPECT_EQ(row.made.Detail()->Arguments(), arguments);
        // A template may have a place for an argument that only some overloads give.
        std::size_t placeholders = 0;
        const std::wstring text = App::Default().MessageText(row.message_id);
        for (std::size_t at = text.find(L"%s"); at < text.size(); at = text.find(L"%s", at + 2)) {
            ++placeholders;
        }
        EXPECT_GE(placeholders, row.arguments);
    }
    for (const std::uint32_t plain :
         {20898U, 21652U, 21622U, 27550U, 20549U, 21638U, 20547U, 21139U, 21147U}) {
        EXPECT_FALSE(App::Default().MessageText(plain).empty()) << plain;
        EXPECT_EQ(App::Default().MessageText(plain).find(L'%'), std::wstring::npos) << plain;
    }
    EXPECT_EQ(App::Default().MessageText(1), L"");
    EXPECT_EQ(File::file_path_too_long(L"a", ~0ULL).Detail()->Arguments(),
              (std::array<std::wstring, status::kMaxArguments>{L"a", L"18446744073709551615"}));
    EXPECT_EQ(File::file_path_too_long(L"a", 1).MessageId(), 20527U);
    EXPECT_EQ(lmw::MessageText(23262, {L"Stage", L"4"}), L"Stage (run 4)");
}

TEST(Errors, CompoundNumbersItsPartsOnLinesOfTheirOwn) {
    const TestHost host;
    const std::vector<status> parts = {status::FromText(L"one"), status(),
                                       status::FromText(L"three %d")};
    const status made = LmwError::compound(status::FromText(L"main"), parts);
    EXPECT_EQ(made.MessageId(), 20471U);
    EXPECT_EQ(made.Detail()->Arguments()[0], L"main");
    EXPECT_EQ(made.Detail()->Arguments()[1], L"\r\n  1. one\r\n  2. \r\n  3. three %d");
    EXPECT_EQ(made.as_wstring(), L"20471[main|\r\n  1. one\r\n  2. \r\n  3. three %d|||]");

    const status alone = LmwError::compound(status::FromText(L"main"), {});
    EXPECT_EQ(alone.Detail()->Arguments()[1], L"");
}

TEST(Errors, JoinKeepsBothTextsToTheLetter) {
    const status made = LmwError::join(status::FromText(L"50% done"), status::FromText(L"%s"));
    EXPECT_EQ(made.MessageId(), 0U);
    EXPECT_EQ(made.as_wstring(), L"50% done\n\n%s");
    EXPECT_EQ(LmwError::join(status(), status()).as_wstring(), L"\n\n");
}

TEST(Errors, InternalReadsTheLastErrorBeforeAnythingChangesIt) {
    const TestHost host;
    sys::SetLastError(2);
    const status failing = LmwError::internal(
        "broken \xF0\x9F\x98\x80 invariant, long enough to allocate", "grid.cpp", 12);
    EXPECT_EQ(failing.MessageId(), 20571U);
    EXPECT_EQ(failing.Detail()->Arguments()[1], lmw::diag::impl::SysCodeAsString_(2));
    EXPECT_EQ(failing.Detail()->SourceFile(), "grid.cpp");
    EXPECT_EQ(failing.Detail()->Line(), 12);

    sys::SetLastError(0);
    const status without = LmwError::internal("broken", nullptr, 1);
    EXPECT_EQ(without.Detail()->Arguments(), (std::array<std::wstring, 5>{L"broken"}));
    EXPECT_EQ(without.Detail()->SourceFile(), "");
}

TEST(RangeError, DescriptionFollowsTheKindsOfBothEnds) {
    constexpr auto kIn = bound_kind::inclusive;
    constexpr auto kEx = bound_kind::exclusive;
    constexpr auto kNo = bound_kind::none;
    const std::tuple<bound_kind, bound_kind, const wchar_t*> rows[] = {
        {kIn, kIn, L"20452[1|2|||]"}, {kIn, kEx, L"20451[1|2|||]"}, {kEx, kIn, L"20450[1|2|||]"},
        {kEx, kEx, L"20449[1|2|||]"}, {kIn, kNo, L"20551[1||||]"},  {kEx, kNo, L"20564[1||||]"},
        {kNo, kIn, L"20676[2||||]"},  {kNo, kEx, L"20692[2||||]"},  {kNo, kNo, L"no limit"},
    };
    TestHost host;
    host.SetText(21622, L"no limit");
    for (const auto& [low, high, expected] : rows) {
        EXPECT_EQ(range_error::Description(L"1", L"2", low, high), expected);
    }
}

TEST(RangeError, OutOfBoundsNamesTheValueAndTheRange) {
    const auto made = range_error::OutOfBounds(L"-1", L"0", L"100%", bound_kind::inclusive,
                                               bound_kind::exclusive);
    EXPECT_EQ(made.MessageId(), 24389U);
    EXPECT_EQ(
        made.as_wstring(),
        L"The value -1 is out of range. Allowed: greater than or equal to 0 and less than 100%.");
}

// No system of ours numbers an error like this.
constexpr unsigned kUnknownCode = 0xDEADBEEFU;

TEST(SystemError, CodesHaveTheSystemsTextsElseTheHostsMessages) {
    using lmw::diag::impl::CrtCodeAsString_;
    EXPECT_EQ(SysCodeAsString_(2), sys::SystemErrorText(2));
    EXPECT_GT(SysCodeAsString_(2).size(), 8U);
    EXPECT_EQ(CrtCodeAsString_(2), sys::RuntimeErrorText(2));
    lmw::test::TestHost host;
    host.SetText(27550, L"all well");
    host.SetText(27505, L"what is %d or %u?");
    EXPECT_EQ(SysCodeAsString_(0), L"all well");
    EXPECT_EQ(CrtCodeAsString_(0), L"all well");
    EXPECT_STREQ(LMWErrMsg(0), "all well");
    EXPECT_EQ(SysCodeAsString_(kUnknownCode), L"what is 3735928559 or ?") << "too large for %d";
    EXPECT_EQ(CrtCodeAsString_(-5), L"what is -5 or ?");
    EXPECT_EQ(CrtCodeAsString_(987654), L"what is 987654 or ?");
}

TEST(SystemError, NarrowTextEndsAtTheFirstLineEnd) {
    lmw::test::TestHost host;
    const std::pair<const wchar_t*, const char*> rows[] = {{L"one\r\ntwo", "one"},
                                                           {L"one\ntwo\r\n", "one"},
                                                           {L"one\r", "one"},
                                                           {L"\r\none", ""},
                                                           {L"whole", "whole"}};
    for (const auto& [text, expected] : rows) {
        host.SetText(27550, text);
        EXPECT_STREQ(LMWErrMsg(0), expected);
    }
    EXPECT_EQ(std::string(LMWErrMsg(2)).find_first_of("\r\n"), std::string::npos);
}

TEST(SystemError, NextNarrowTextOverwritesTheSharedBuffer) {
    const char* text = LMWErrMsg(0);
    const std::string first = text;
    EXPECT_EQ(LMWErrMsg(2), text);
    EXPECT_NE(text, first);
}

}  // namespace
