#include "common/errors.h"

#include "common/convert_error.h"
#include "common/message_text.h"
#include "common/range_error.h"
#include "common/sys/last_error.h"
#include "common/system_error.h"

#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using gtl::status;
using Convert = gtl::Convert_error_status;
using File = LmwError::File;
using lmw::test::TestHost;

struct FactoryRow {
    const char* name;
    status made;
    std::uint32_t message_id;
    std::vector<std::wstring> arguments;
};

std::vector<FactoryRow> AllFactories() {
    return {
        {"Undefined", LmwError::Undefined(), 24181, {}},
        {"dll_load", LmwError::dll_load(L"a", L"b"), 20503, {L"a", L"b"}},
        {"err_sysserv", LmwError::err_sysserv(L"a", L"b"), 20755, {L"a", L"b"}},
        {"err_sysserv", LmwError::err_sysserv(L"a", L"b", L"c"), 20755, {L"a", L"b", L"c"}},
        {"mngsrv", LmwError::mngsrv(), 20706, {}},
        {"syntax", LmwError::syntax(L"a"), 20754, {L"a"}},
        {"syntax", LmwError::syntax("a"), 20754, {L"a"}},
        {"unexpected_exception", LmwError::unexpected_exception(L"a"), 20654, {L"a"}},
        {"unexpected_exception", LmwError::unexpected_exception("a"), 20654, {L"a"}},
        {"copy", File::copy(L"a", L"b", L"c"), 20516, {L"a", L"b", L"c"}},
        {"create_dir", File::create_dir(L"a", L"b"), 20517, {L"a", L"b"}},
        {"del", File::del(L"a", L"b"), 20518, {L"a", L"b"}},
        {"file_not_found", File::file_not_found(L"a"), 20524, {L"a"}},
        {"file_path_too_long",
         File::file_path_too_long(L"a", 18446744073709551615U),
         20527,
         {L"a", L"18446744073709551615"}},
        {"find", File::find(L"a", L"b"), 20519, {L"a", L"b"}},
        {"get_temp_path", File::get_temp_path(L"a"), 20520, {L"a"}},
        {"invalid_path", File::invalid_path(L"a"), 20521, {L"a"}},
        {"open", File::open(L"a", L"b"), 20526, {L"a", L"b"}},
        {"read", File::read(L"a", L"b"), 20536, {L"a", L"b"}},
        {"rename", File::rename(L"a", L"b", L"c"), 20538, {L"a", L"b", L"c"}},
        {"save_over_readonly", File::save_over_readonly(L"a"), 20539, {L"a"}},
        {"set_attrib", File::set_attrib(L"a", L"b"), 20540, {L"a", L"b"}},
        {"shell_missing_association",
         File::shell_missing_association(L"a", L"b"),
         20514,
         {L"a", L"b"}},
        {"unknown_file_type", File::unknown_file_type(L"a"), 20758, {L"a"}},
        {"write", File::write(L"a", L"b"), 20541, {L"a", L"b"}},
        {"InvalidCharStatus", Convert::InvalidCharStatus(L"a", L"b"), 20218, {L"a", L"b"}},
        {"NotSupportedStatus", Convert::NotSupportedStatus(L"a", L"b"), 20219, {L"a", L"b"}},
        {"OutOfRangeStatus", Convert::OutOfRangeStatus(L"a", L"b"), 20220, {L"a", L"b"}},
        {"OverflowStatus", Convert::OverflowStatus(L"a", L"b"), 20221, {L"a", L"b"}},
        {"RangeStatusFormat", gtl::RangeStatusFormat(), 24389, {}},
        {"ValueIsRequired", gtl::impl::range_error::ValueIsRequired(), 20914, {}},
    };
}

TEST(Errors, FactoriesGiveTheirMessageAndArguments) {
    for (FactoryRow& row : AllFactories()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.made.MessageId(), row.message_id);
        row.arguments.resize(status::kMaxArguments);
        EXPECT_TRUE(std::equal(row.arguments.begin(), row.arguments.end(),
                               row.made.Detail()->Arguments().begin()));
    }
}

TEST(Errors, DefaultHostHasATextWithEveryArgumentInOrder) {
    for (const FactoryRow& row : AllFactories()) {
        SCOPED_TRACE(row.name);
        EXPECT_GT(row.made.as_wstring().size(), 8U);
        std::wstring text = App::Default().MessageText(row.message_id);
        std::size_t placeholders = 0;
        for (std::size_t at = text.find(L"%s"); at != std::wstring::npos;
             at = text.find(L"%s", at + 2)) {
            ++placeholders;
        }
        // A template may have a place for an argument that only some overloads give.
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

}  // namespace
