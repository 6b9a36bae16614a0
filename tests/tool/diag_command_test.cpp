#include "common/app/feature.h"
#include "common/log_category.h"
#include "common/log_filter.h"

#include "tests/support/environment.h"
#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using lmw::test::Packed;
using lmw::test::RunTool;
using lmw::test::ToolResult;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(DiagCommand, ShowsSettingsCategoriesSwitchesAndModulesInForce) {
    const int level = lmw::diag::LogFilter::MinLevel();
    const int mask = lmw::diag::LogFilter::CategoryMask();
    lmw::test::DefineEnvironmentVariable("LMW_USE_RULER", "");
    lmw::feature::SetNewSolverEnabled(AnalysisKind::Heat, false);
    lmw::diag::LogFilter::Set(L"error", L"tool.shown");
    lmw::diag::MakeCategoryMask("tool.hidden");

    const ToolResult result = RunTool({"diag"});
    const ToolResult json = RunTool({"diag", "--json"});

    lmw::test::RemoveEnvironmentVariable("LMW_USE_RULER");
    lmw::feature::SetNewSolverEnabled(AnalysisKind::Heat, true);
    lmw::diag::LogFilter::Set(level, mask);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    for (const char* line :
         {"minimum level +error +level=", "category mask +.+ +category=tool.shown\n",
          "tool.shown +.+ +logged\n", "tool.hidden +.+\n", "ruler +on +LMW_USE_RULER\n",
          "Qt +off +LMW_USE_QT\n", "new reinforcement +on ", "flow +lmwflow +new solver\n",
          "heat +lmwheat +old solver\n"}) {
        EXPECT_THAT(result.out, ContainsRegex(line));
    }
    for (const char* part :
         {R"("settings":[{"name":"minimumlevel","value":"error","note":"level="},)",
          R"("modules":[{"name":)", R"("value":"lmwheat","note":"oldsolver"})"}) {
        EXPECT_THAT(Packed(json.out), HasSubstr(part));
    }
}

TEST(DiagCommand, ListsTheMessagesForTranslators) {
    const ToolResult csv = RunTool({"diag", "--messages"});
    EXPECT_THAT(csv.out, HasSubstr("\n20526,\"The file \"\"%s\"\" could not be opened. %s\"\n"))
        << csv.err;
    const ToolResult json = RunTool({"diag", "--messages", "--json"});
    EXPECT_THAT(Packed(json.out), HasSubstr(R"({"number":20452,"text":"between%sand%s"},)"));
}

TEST(Arguments, OfDiagnosticsAreSkippedWhereverTheyStandAndOthersAreNot) {
    const ToolResult plain = RunTool({"diag"});
    EXPECT_EQ(RunTool({"level=warning", "diag", "Category=io;mesh", "-safemode"}).out, plain.out);
    for (const char* argument : {"level=a=b", "levels=3", "-level=3", "--safemode", "level"}) {
        const ToolResult result = RunTool({"diag", argument});
        EXPECT_EQ(result.exit_code, 2) << argument;
        EXPECT_THAT(result.out, Not(ContainsRegex("."))) << argument;
    }
    EXPECT_EQ(RunTool({"level=warning"}).err, "lmw: no command given (lmw --help lists them)\n");
}

}  // namespace
