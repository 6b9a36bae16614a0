#include "common/meta_enum.h"

#include "common/analysis_kind.h"

#include "tests/support/test_host.h"
#include "tests/support/threads.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using lmw::test::TestHost;
using meta::MetaEnumCommon;
using meta::MetaFormatType;

// Not sorted by value; -3 and "twice" stand twice.
constexpr MetaEnumCommon::XRef kRows[] = {
    {7, "seven", 99, 701, 702}, {-3, "minus", 0, 0, 302}, {0, "zero", 0, 1, 0},
    {5, "twice", 0, 0, 0},      {-3, "again", 0, 0, 0},   {6, "twice", 0, 0, 0},
};

class MetaEnum : public testing::Test {
 protected:
    MetaEnum() {
        host_.SetText(701, L"Seven");
        host_.SetText(702, L"Number seven");
        host_.SetText(302, L"Minus three");
        host_.SetText(1, L"Nil");
    }

    std::wstring TextOf(std::int32_t value, MetaFormatType format) const {
        std::wstring text;
        EXPECT_TRUE(MetaEnumCommon::ConvertTo(text, table_, format, value, 0).Succeeded());
        return text;
    }

    TestHost host_;
    MetaEnumCommon::Table table_{kRows, 2};
};

TEST_F(MetaEnum, ValuesHaveTheTextsOfTheirFirstRowElseOfTheDefaultRow) {
    struct Row {
        std::int32_t value;
        int row;
        const wchar_t* key;
        const wchar_t* second;
        const wchar_t* first;
    };
    const Row rows[] = {
        {7, 0, L"seven", L"Number seven", L"Seven"},
        {-3, 1, L"minus", L"Minus three", L"Minus three"},
        {5, 3, L"twice", L"twice", L"twice"},
        {6, 5, L"twice", L"twice", L"twice"},
        {-4, 2, L"zero", L"Nil", L"Nil"},    // by design: the default row
        {4711, 2, L"zero", L"Nil", L"Nil"},  // beyond the largest value too
    };
    for (const Row& row : rows) {
        EXPECT_EQ(MetaEnumCommon::FindEntry(table_, &row.value), &kRows[row.row]) << row.value;
        EXPECT_EQ(TextOf(row.value, MetaFormatType::kKey), row.key);
        EXPECT_EQ(TextOf(row.value, MetaFormatType::kSecondDisplay), row.second);
        EXPECT_EQ(TextOf(row.value, MetaFormatType::kDisplay), row.first);
        EXPECT_EQ(TextOf(row.value, static_cast<MetaFormatType>(-1)), row.first);
    }
    EXPECT_EQ(MetaEnumCommon::FindEntry(table_, nullptr), &kRows[2]);
}

TEST_F(MetaEnum, TextsReadBackAndFailuresNameTheAllowedTexts) {
    std::int32_t value = 42;
    const auto read = [&](MetaFormatType format, const wchar_t* text) {
        return MetaEnumCommon::ConvertFrom(value, table_, format, text, 0);
    };
    EXPECT_TRUE(read(MetaFormatType::kKey, L"twice").Succeeded());
    EXPECT_EQ(value, 5);
    EXPECT_TRUE(read(MetaFormatType::kSecondDisplay, L"Number seven").Succeeded());
    EXPECT_EQ(value, 7);
    const auto failure = read(MetaFormatType::kDisplay, L"seven");
    EXPECT_EQ(value, 7);
    EXPECT_EQ(failure.MessageId(), 20220U);
    EXPECT_EQ(failure.Detail()->Arguments()[0], L"seven");
    EXPECT_EQ(failure.Detail()->Arguments()[1], L"Seven, Minus three, Nil, twice, again, twice");
}

TEST_F(MetaEnum, NumbersConvertWithAll64Bits) {
    std::int64_t number = 0;
    EXPECT_TRUE(MetaEnumCommon::ConvertTo(number, table_, -3, 0).Succeeded());
    EXPECT_EQ(number, -3);
    EXPECT_TRUE(MetaEnumCommon::ConvertTo(number, table_, 4711, 0).Succeeded());
    EXPECT_EQ(number, 0);

    std::int32_t value = 42;
    EXPECT_TRUE(MetaEnumCommon::ConvertFrom(value, table_, std::int64_t{-3}, 0).Succeeded());
    EXPECT_EQ(value, -3);
    const auto failure = MetaEnumCommon::ConvertFrom(value, table_, (std::int64_t{1} << 32) + 7, 0);
    EXPECT_EQ(failure.MessageId(), 20220U);
    EXPECT_EQ(failure.Detail()->Arguments()[0], L"4294967303");
    EXPECT_EQ(value, -3);
}

TEST(MetaEnumTable, ServesManyThreadsFromItsFirstUse) {
    for (int round = 0; round < 20; ++round) {
        const MetaEnumCommon::Table table(kRows, 0);
        lmw::test::InThreads(4, [&](std::size_t) { EXPECT_EQ(table.Find(6), &kRows[5]); });
    }
}

TEST(AnalysisKind, NamesAndDisplayTextsConvertBothWays) {
    const TestHost host;
    std::int32_t value = 0;
    const std::pair<const char*, int> rows[] = {
        {"solute", 21140}, {"tremor", 21141}, {"flow", 21142}, {"deform", 21145},
        {"ridge", 21146},  {"heat", 21147},   {"gas", 21139}};
    for (const auto& [name, message_id] : rows) {
        const auto kind = static_cast<AnalysisKind>(value++);
        EXPECT_EQ(LookupNameByKind(kind), name);
        EXPECT_EQ(KindByLookupName(name), kind);
        const std::wstring text = str::as_wstring(kind);
        EXPECT_EQ(text, std::to_wstring(message_id) + L"[%s|%s|%s|%s|%s]");
        AnalysisKind parsed = AnalysisKind::None;
        EXPECT_TRUE(str::from_wstring(text, parsed).Succeeded());
        EXPECT_EQ(parsed, kind);
        EXPECT_EQ(str::from_wstring(std::wstring(L"Seepage"), parsed).MessageId(), 20220U);
        EXPECT_EQ(parsed, kind) << "left alone";
    }
}

TEST(AnalysisKind, NoKindHasNoNames) {
    for (const std::int32_t value : {0x7FFFFFFF, 7, -1}) {
        EXPECT_EQ(LookupNameByKind(static_cast<AnalysisKind>(value)), "");
        EXPECT_EQ(str::as_wstring(static_cast<AnalysisKind>(value)), L"");
    }
    for (const char* name : {"", "Solute", "solut", "solute ", "gash", "a", "zzz"}) {
        EXPECT_EQ(KindByLookupName(name), AnalysisKind::None) << name;
    }
}

}  // namespace
