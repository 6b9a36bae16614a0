#include "common/errors.h"

#include "common/convert_error.h"
#include "common/message_text.h"
#include "common/range_error.h"
#include "common/sys/last_error.h"
#include "common/system_error.h"

#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace {

using gtl::status;
using Convert = gtl::Convert_error_status;
using File = LmwError::File;
using gtl::bound_kind;
using gtl::impl::range_error;
using lmw::test::TestHost;

struct FactoryRow {
    status made;
    std::uint32_t message_id;
    std::vector<std::wstring> arguments;
};

std::vector<FactoryRow> AllFactories() {
    const std::vector<std::wstring> a = {L"a"};
    const std::vector<std::wstring> ab = {L"a", L"b"};
    const std::vector<std::wstring> abc = {L"a", L"b", L"c"};
    return {
        {LmwError::Undefined(), 24181, {}},
        {LmwError::dll_load(L"a", L"b"), 20503, ab},
        {LmwError::err_sysserv(L"a", L"b"), 20755, ab},
        {LmwError::err_sysserv(L"a", L"b", L"c"), 20755, abc},
        {LmwError::mngsrv(), 20706, {}},
        {LmwError::syntax(L"a"), 20754, a},
        {LmwError::syntax("a"), 20754, a},
        {LmwError::unexpected_exception(L"a"), 20654, a},
        {LmwError::unexpected_exception("a"), 20654, a},
        {File::copy(L"a", L"b", L"c"), 20516, abc},
        {File::create_dir(L"a", L"b"), 20517, ab},
        {File::del(L"a", L"b"), 20518, ab},
        {File::file_not_found(L"a"), 20524, a},
        {File::file_path_too_long(L"a", ~0ULL), 20527, {L"a", L"18446744073709551615"}},
        {File::find(L"a", L"b"), 20519, ab},
        {File::get_temp_path(L"a"), 20520, a},
        {File::invalid_path(L"a"), 20521, a},
        {File::open(L"a", L"b"), 20526, ab},
        {File::read(L"a", L"b"), 20536, ab},
        {File::rename(L"a", L"b", L"c"), 20538, abc},
        {File::save_over_readonly(L"a"), 20539, a},
        {File::set_attrib(L"a", L"b"), 20540, ab},
        {File::shell_missing_association(L"a", L"b"), 20514, ab},
        {File::unknown_file_type(L"a"), 20758, a},
        {File::write(L"a", L"b"), 20541, ab},
        {Convert::InvalidCharStatus(L"a", L"b"), 20218, ab},
        {Convert::NotSupportedStatus(L"a", L"b"), 20219, ab},
        {Convert::OutOfRangeStatus(L"a", L"b"), 20220, ab},
        {Convert::OverflowStatus(L"a", L"b"), 20221, ab},
        {gtl::RangeStatusFormat(), 24389, {}},
        {range_error::ValueIsRequired(), 20914, {}},
    };
}

TEST(Errors, FactoriesGiveTheirMessageItsTextAndArguments) {
    for (const FactoryRow& row : AllFactories()) {
        SCOPED_TRACE(row.message_id);
        EXPECT_EQ(row.made.MessageId(), row.message_id);
        EXPECT_GT(row.made.as_wstring().size(), 8U);
        auto arguments = row.arguments;
        arguments.resize(status::kMaxArguments);
        EXPECT_TRUE(
            std::equal(arguments.begin(), arguments.end(), row.made.Detail()->Arguments().begin()));
        // A template may have a place for an argument that only some overloads give.
        std::size_t placeholders = 0;
        const std::wstring text = App::Default().MessageText(row.message_id);
        for (std::size_t at = text.find(L"%s"); at < text.size(); at = text.find(L"%s", at + 2)) {
            ++placeholders;
        }
        EXPECT_GE(placeholders, row.arguments.size());
    }
    for (const std::uint32_t plain :
         {20898U, 21652U, 21622U, 27550U, 20549U, 21638U, 20547U, 21139U, 21147U}) {
        EXPECT_FALSE(App::Default().MessageText(plain).empty()) << plain;
        EXPECT_EQ(App::Default().MessageText(plain).find(L'%'), std::wstring::npos) << plain;
    }
    EXPECT_EQ(App::Default().MessageText(1), L"");
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
    struct Row {
        bound_kind lo;
        bound_kind hi;
        const wchar_t* expected;
    };
    const std::vector<Row> rows = {
        {kIn, kIn, L"20452[1|2|||]"}, {kIn, kEx, L"20451[1|2|||]"}, {kEx, kIn, L"20450[1|2|||]"},
        {kEx, kEx, L"20449[1|2|||]"}, {kIn, kNo, L"20551[1||||]"},  {kEx, kNo, L"20564[1||||]"},
        {kNo, kIn, L"20676[2||||]"},  {kNo, kEx, L"20692[2||||]"},  {kNo, kNo, L"no limit"},
    };
    TestHost host;
    host.SetText(21622, L"no limit");
    for (const Row& row : rows) {
        EXPECT_EQ(range_error::Description(L"1", L"2", row.lo, row.hi), row.expected);
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

}  // namespace
