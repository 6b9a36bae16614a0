#include "common/log_filter.h"

#include <gtest/gtest.h>

#include <climits>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace lmw::diag;
using namespace std::string_view_literals;

TEST(LogLevel, IsReadFromANameInAnyCaseOrAWholeNumberAndReadsBackFromItsText) {
    // clang-format off
    const std::vector<std::pair<std::wstring_view, int>> rows = {
        {L"verbose", 0}, {L"information", 1}, {L"WARNING", 2},            {L"Error", 3},
        {L"cRiTiCaL", 4}, {L"7", 7},          {L"-2", -2},                {L"+3", 3},
        {L"0010", 10},   {L"1000", 1000},     {L"-2147483648", INT_MIN},  {L"2147483646", INT_MAX - 1}};
    // clang-format on
    for (const auto& [text, level] : rows) {
        EXPECT_EQ(LevelByText(text), level);
        EXPECT_EQ(LevelByText(LevelText(level)), level);
    }
    EXPECT_EQ(LevelText(kWarning), L"warning");
    // The largest number is "none" itself.
    for (const std::wstring_view text :
         {L"2147483647"sv, L"2147483648"sv, L"99999999999999999999"sv, L"1x"sv, L"0x2"sv, L" 2"sv,
          L"2 "sv, L"1.0"sv, L"+-1"sv, L"-"sv, L""sv, L"warn"sv, L"warnings"sv, L"\u0662"sv,
          L"2\0"sv}) {
        EXPECT_EQ(LevelByText(text), kNoLevel) << text.size();
    }
}

// Every test leaves the filter as it found it.
class LogFilterTest : public ::testing::Test {
 protected:
    ~LogFilterTest() override { LogFilter::Set(level_, mask_); }

 private:
    int level_ = LogFilter::MinLevel();
    int mask_ = LogFilter::CategoryMask();
};

TEST_F(LogFilterTest, TestsTheLevelAlwaysAndTheMaskUnlessBit4IsSet) {
    struct Row {
        int min_level;
        int mask;
        int level;
        int category;
        bool logged;
    };
    // clang-format off
    const Row rows[] = {
        {2, 8, 2, 8, true},    {2, 8, 1, 8, false},   {2, 8, 2, 16, false},  {2, 8, 2, 24, true},
        {2, 8, 2, 4, true},    {2, 8, 1, 4, false},   {2, 0, 4, 3, false},   {2, 0, 4, 5, true},
        {2, 8, 2, -1, true},   {2, 8, 1, -1, false},  // contains bit 4, which bypasses no level
        {2, -1, 2, 0, false},  {2, -1, 2, INT_MIN, true},  // 0 shares no bit with anything
        {-2, 3, -2, 1, true},  {-2, 3, -3, 1, false}, {INT_MIN, 3, INT_MIN, 1, true},
        {kNoLevel, -1, 4, -1, false},                 {kNoLevel, -1, kNoLevel, -1, true},
    };
    // clang-format on
    for (const Row& row : rows) {
        LogFilter::Set(row.min_level, row.mask);
        EXPECT_EQ(IsLogged(row.level, row.category), row.logged)
            << row.min_level << ' ' << row.mask << ' ' << row.level << ' ' << row.category;
        // What the macros ask first never stops a message that is to be logged.
        EXPECT_TRUE(impl::MayBeLogged_(row.level) || !row.logged);
        EXPECT_EQ(impl::MayBeLogged_(row.level), row.level >= row.min_level);
    }
}

TEST_F(LogFilterTest, IsSetByTextsAndKeepsWhatATextDoesNotName) {
    LogFilter::Set(1, 3);
    LogFilter::Set(L"WARNING", L"");
    EXPECT_EQ(LogFilter::MinLevel(), 2);
    EXPECT_EQ(LogFilter::CategoryMask(), 3);
    LogFilter::Set(L"7", L"");
    LogFilter::Set(L"loud", L"");
    EXPECT_EQ(LogFilter::MinLevel(), 7);
    LogFilter::Set(L"-2", L"filter.a;filter.b");
    EXPECT_EQ(LogFilter::MinLevel(), -2);
    EXPECT_EQ(CategoryNames(LogFilter::CategoryMask()), "filter.a;filter.b");
    LogFilter::Set(L"", L";");  // not empty, and names nothing
    EXPECT_EQ(LogFilter::CategoryMask(), 0);
}

}  // namespace
