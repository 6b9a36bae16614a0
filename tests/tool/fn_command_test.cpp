// lmw fn as a user meets it.

#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using lmw::test::RunTool;
using lmw::test::ToolResult;
using testing::HasSubstr;

TEST(FnCommand, ListsTheAttributes) {
    EXPECT_EQ(RunTool({"fn", "ConstPressure(20)"}).out,
              "ConstPressure\n"
              "   0  Type              WString    ConstPressure\n"
              "   1  Description       WString\n"
              "   2  FullDescription   WString\n"
              "   4  ConstPressure     Double     20\n");
    EXPECT_THAT(RunTool({"fn", "Linear(DataInit=0 1;2 3)"}).out,
                HasSubstr("   6  NumPoints         UInt       2  (cannot be set)\n"));
    EXPECT_THAT(RunTool({"fn", "--kinds"}).out, HasSubstr("\nFredlundXing\n"));
}

TEST(FnCommand, EvaluatesAlsoThroughReferences) {
    const std::string rows = "x,value,derivative\n0.5,1.5,1\n9,,\n";
    const std::string linear = "Linear(DataInit=0 1;2 3,SlopeAfter=None)";
    EXPECT_EQ(RunTool({"fn", linear, "--at", "0.5,9"}).out, rows);
    EXPECT_EQ(RunTool({"fn", "VolWC(2)", "--with", "1=" + linear, "--with", "2=HydMod(1)", "--at",
                       "0.5,9"})
                  .out,
              rows);
    const std::string json = RunTool({"fn", linear, "--at", "9", "--json"}).out;
    EXPECT_THAT(json, HasSubstr("\"value\": null"));
    EXPECT_THAT(json, HasSubstr("\"text\": \"Linear(InputParam=,"));
}

TEST(FnCommand, TakesATextApart) {
    EXPECT_EQ(RunTool({"fn", "Fn(a=1,b=g(c=2,d=3),5)", "--verify"}).out,
              "Fn\n"
              "  a                 1\n"
              "  b                 g(c=2,d=3)\n"
              "  Value             5\n");
}

TEST(FnCommand, SaysWhatIsWrong) {
    struct Row {
        std::vector<std::string> arguments;
        const char* reason;
    };
    const Row rows[] = {
        {{"Linear"}, "\"Linear\": The text of the function is malformed"},
        {{"Bezier(1)"}, "\"Bezier\" is no kind (lmw fn --kinds lists them)"},
        {{"Const(Colour=1)"},
         "Const has no attribute \"Colour\" (Type, Description, FullDescription, Value)"},
        {{"Const(x)"}, "Value: \"x\" cannot be read"},
        {{"Const()"}, "definition of the function is incomplete"},
        {{"VolWC(3)"}, "definition of the function is incomplete"},
        {{"VolWC(3)", "--with", "three=Const(1)"}, "\"three=Const(1)\" is not a number"},
        {{"VolWC(3)", "--with", "3=Const("}, "\"Const(\": The text"},
        {{}, "no function given"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.reason);
        std::vector<std::string> arguments = {"fn"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_THAT(result.err, HasSubstr(row.reason));
        EXPECT_EQ(result.out, "");
    }
}

}  // namespace
