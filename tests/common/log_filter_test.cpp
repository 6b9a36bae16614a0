#include "common/log_filter.h"

#include "common/log_category.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
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
    // clang-format off
    const std::tuple<int, int, int, int, bool> rows[] = {
        {2, 8, 2, 8, true},    {2, 8, 1, 8, false},   {2, 8, 2, 16, false},  {2, 8, 2, 24, true},
        {2, 8, 2, 4, true},    {2, 8, 1, 4, false},   {2, 0, 4, 3, false},   {2, 0, 4, 5, true},
        {2, 8, 2, -1, true},   {2, 8, 1, -1, false},  // contains bit 4, which bypasses no level
        {2, -1, 2, 0, false},  {2, -1, 2, INT_MIN, true},  // 0 shares no bit with anything
        {-2, 3, -2, 1, true},  {-2, 3, -3, 1, false}, {INT_MIN, 3, INT_MIN, 1, true},
        {kNoLevel, -1, 4, -1, false},                 {kNoLevel, -1, kNoLevel, -1, true},
    };
    // clang-format on
    for (const auto& [min_level, mask, level, category, logged] : rows) {
        LogFilter::Set(min_level, mask);
        EXPECT_EQ(IsLogged(level, category), logged)
            << min_level << ' ' << mask << ' ' << level << ' ' << category;
        // What the macros ask first never stops a message that is to be logged.
        EXPECT_TRUE(impl::MayBeLogged_(level) || !logged);
        EXPECT_EQ(impl::MayBeLogged_(level), level >= min_level);
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

// Before the first test: a static initialiser registers.
const DeclareCategoryMask kDeclared("category.declared");

TEST(LogCategory, HasOneBitOfItsOwnFrom8OnForEachName) {
    const int a = MakeCategoryMask("category.a");
    const int b = MakeCategoryMask("category.b");
    EXPECT_NE(a, b);
    for (const int mask : {a, b, kDeclared.Mask()}) {
        EXPECT_GE(mask, 8);
        EXPECT_EQ(mask & (mask - 1), 0);
    }
    EXPECT_EQ(MakeCategoryMask("category.a"), a);
    EXPECT_NE(MakeCategoryMask("category.A"), a);
    EXPECT_EQ(MakeCategoryMask("category.declared"), kDeclared.Mask());
    EXPECT_EQ(kDeclared.Name(), "category.declared");
}

TEST(LogCategory, ListsJoinTheirBitsAndSkipEmptyPieces) {
    const int a = MakeCategoryMask("category.a");
    const int b = MakeCategoryMask("category.b");
    for (const char* list : {"category.a;category.b", "category.b;category.a",
                             ";category.a;;category.b;", "category.a;category.b;category.a"}) {
        EXPECT_EQ(MakeCategoryMask(list), a | b) << list;
    }
    const std::size_t registered = RegisteredCategories().size();
    EXPECT_EQ(MakeCategoryMask(""), 0);
    EXPECT_EQ(MakeCategoryMask(";;"), 0);
    EXPECT_EQ(RegisteredCategories().size(), registered);
}

TEST(LogCategory, NamesComeInTheOrderOfRegistration) {
    const int b = MakeCategoryMask("category.order2");
    const int a = MakeCategoryMask("category.order1");
    EXPECT_EQ(CategoryNames(a), "category.order1");
    EXPECT_EQ(CategoryNames(a | b), "category.order2;category.order1");
    EXPECT_EQ(CategoryNames(a | 3), "category.order1");
    EXPECT_EQ(CategoryNames(1 << 30), "");
}

TEST(LogCategory, AllIsTheOnlyMaskBelow8WithANameOfItsOwn) {
    EXPECT_EQ(CategoryNames(-1), "all");
    for (const int mask : {0, 1, 3, 4, 7, -2, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(CategoryNames(mask), "") << mask;
    }
    // On the way in "all" is a name like any other.
    EXPECT_EQ(CategoryNames(MakeCategoryMask("all")), "all");
    EXPECT_NE(MakeCategoryMask("all"), kAllCategories);
}

}  // namespace
