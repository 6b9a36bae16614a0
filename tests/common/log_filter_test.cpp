#include "common/log_filter.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace lmw::diag;

TEST(LogLevel, IsReadFromANameInAnyCaseOrAWholeNumber) {
    struct Row {
        const wchar_t* text;
        int level;
    };
    for (const auto& [text, level] :
         std::vector<Row>{{L"verbose", 0},
                          {L"information", 1},
                          {L"WARNING", 2},
                          {L"Error", 3},
                          {L"cRiTiCaL", 4},
                          {L"7", 7},
                          {L"-2", -2},
                          {L"+3", 3},
                          {L"0010", 10},
                          {L"-2147483648", std::numeric_limits<int>::min()},
                          {L"2147483646", 2147483646},
                          {L"2147483647", kNoLevel},  // is "none" itself
                          {L"2147483648", kNoLevel},
                          {L"99999999999999999999", kNoLevel},
                          {L"1x", kNoLevel},
                          {L"0x2", kNoLevel},
                          {L" 2", kNoLevel},
                          {L"2 ", kNoLevel},
                          {L"1.0", kNoLevel},
                          {L"+-1", kNoLevel},
                          {L"-", kNoLevel},
                          {L"", kNoLevel},
                          {L"warn", kNoLevel},
                          {L"warnings", kNoLevel},
                          {L"loud", kNoLevel},
                          {L"\u0662", kNoLevel}}) {
        EXPECT_EQ(LevelByText(text), level) << std::string(text, text + std::wstring(text).size());
    }
    EXPECT_EQ(LevelByText(std::wstring_view(L"2\0", 2)), kNoLevel);
}

TEST(LogLevel, TextReadsBackToTheLevel) {
    EXPECT_EQ(LevelText(kWarning), L"warning");
    for (const int level : {-3, -1, 0, 1, 2, 3, 4, 5, 1000}) {
        EXPECT_EQ(LevelByText(LevelText(level)), level);
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

TEST_F(LogFilterTest, StartsWithInformationInTheDefaultCategories) {
    EXPECT_EQ(LogFilter::MinLevel(), kInformation);
    EXPECT_EQ(LogFilter::CategoryMask(), 3);
    EXPECT_TRUE(IsLogged(1, 1));
    EXPECT_FALSE(IsLogged(0, 1));
    EXPECT_FALSE(IsLogged(3, 8));
    EXPECT_TRUE(IsLogged(3, 4));
}

TEST_F(LogFilterTest, TestsTheLevelAlwaysAndTheMaskUnlessBit4IsSet) {
    constexpr int kLowest = std::numeric_limits<int>::min();
    struct Row {
        int min_level;
        int mask;
        int level;
        int category;
        bool logged;
    };
    for (const Row& row : std::vector<Row>{{2, 8, 2, 8, true},
                                           {2, 8, 1, 8, false},
                                           {2, 8, 2, 16, false},
                                           {2, 8, 2, 24, true},
                                           {2, 8, 2, 4, true},
                                           {2, 8, 1, 4, false},
                                           {2, 8, 2, -1, true},   // contains bit 4
                                           {2, 8, 1, -1, false},  // which bypasses no level
                                           {2, 0, 4, 3, false},
                                           {2, 0, 4, 5, true},
                                           {2, -1, 2, 0, false},  // shares no bit with anything
                                           {2, -1, 2, kLowest, true},
                                           {-2, 3, -2, 1, true},  // levels are signed
                                           {-2, 3, -3, 1, false},
                                           {kLowest, 3, kLowest, 1, true},
                                           {kNoLevel, -1, 4, -1, false},
                                           {kNoLevel, -1, kNoLevel, -1, true}}) {
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
    for (const wchar_t* text : {L"loud", L"1x", L"0x2", L"2147483647", L"9999999999", L""}) {
        LogFilter::Set(text, L"");
        EXPECT_EQ(LogFilter::MinLevel(), 7);
    }
    LogFilter::Set(L"-2", L"filter.a;filter.b");
    EXPECT_EQ(LogFilter::MinLevel(), -2);
    EXPECT_EQ(CategoryNames(LogFilter::CategoryMask()), "filter.a;filter.b");
    LogFilter::Set(L"", L";");  // not empty, and names nothing
    EXPECT_EQ(LogFilter::CategoryMask(), 0);
}

}  // namespace
