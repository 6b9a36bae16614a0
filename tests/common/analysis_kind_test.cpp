#include "common/analysis_kind.h"

#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Row {
    std::int32_t value;
    const char* lookup_name;
    std::uint32_t message_id;
};
constexpr Row kRows[] = {{0, "solute", 21140}, {1, "tremor", 21141}, {2, "flow", 21142},
                         {3, "deform", 21145}, {4, "ridge", 21146},  {5, "heat", 21147},
                         {6, "gas", 21139}};

TEST(AnalysisKind, NamesAndDisplayTextsConvertBothWays) {
    const lmw::test::TestHost host;
    for (const Row& row : kRows) {
        const auto kind = static_cast<AnalysisKind>(row.value);
        EXPECT_EQ(LookupNameByKind(kind), row.lookup_name);
        EXPECT_EQ(KindByLookupName(row.lookup_name), kind);
        const std::wstring text = str::as_wstring(kind);
        EXPECT_EQ(text, std::to_wstring(row.message_id) + L"[%s|%s|%s|%s|%s]");
        AnalysisKind parsed = AnalysisKind::None;
        EXPECT_TRUE(str::from_wstring(text, parsed).Succeeded());
        EXPECT_EQ(parsed, kind);
    }
}

TEST(AnalysisKind, NoKindHasNoNames) {
    for (const std::int32_t value : {0x7FFFFFFF, 7, -1}) {
        EXPECT_EQ(LookupNameByKind(static_cast<AnalysisKind>(value)), "");
        EXPECT_EQ(str::as_wstring(static_cast<AnalysisKind>(value)), L"");
    }
    for (const char* name : {"", "Solute", "solut", "solute ", "gash", "a", "zzz"}) {
        EXPECT_EQ(static_cast<std::int32_t>(KindByLookupName(name)), 0x7FFFFFFF) << name;
    }
}

TEST(AnalysisKind, UnknownDisplayTextListsTheSevenAndLeavesTheKindAlone) {
    AnalysisKind kind = AnalysisKind::Heat;
    for (const std::wstring text : {L"", L"heat", L"Seepage"}) {
        const auto failure = str::from_wstring(text, kind);
        EXPECT_EQ(failure.MessageId(), 20220U);
        EXPECT_NE(failure.as_wstring().find(L"Slope stability"), std::wstring::npos);
        EXPECT_EQ(kind, AnalysisKind::Heat);
    }
}

}  // namespace
