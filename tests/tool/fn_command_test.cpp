// lmw fn as a user meets it.

#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using lmw::test::ExpectRefusals;
using lmw::test::Packed;
using lmw::test::RunTool;
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
    EXPECT_THAT(RunTool({"fn", "--kinds", "--json"}).out, HasSubstr("\n  \"FredlundXing\",\n"));
    EXPECT_THAT(Packed(RunTool({"fn", "Fn(a=1)", "--verify", "--json"}).out),
                R"({"kind":"Fn","attributes":[{"key":"a","value":"1"}]})");
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
    ExpectRefusals(
        "fn",
        {{nullptr, "Linear",
          "\"Linear\": The text of the function is malformed: a name followed by key=value pairs "
          "in parentheses was expected."},
         {nullptr, "Bezier(1)", "\"Bezier(1)\": \"Bezier\" is no kind (lmw fn --kinds lists them)"},
         {nullptr, "Const(Colour=1)",
          "Const has no attribute \"Colour\" (Type, Description, FullDescription, Value)"},
         {nullptr, "Const(x)",
          "\"Const(x)\": Value: \"x\" cannot be read as a floating-point number: it holds a "
          "character that does not belong there."},
         {nullptr, "Const()", "\"Const()\": The definition of the function is incomplete."},
         {nullptr, "VolWC(3)", "\"VolWC(3)\": The definition of the function is incomplete."},
         {nullptr, "VolWC(3) --with three=Const(1)",
          "--with: \"three=Const(1)\" is not a number above 0, an equals sign and a function"},
         {nullptr, "VolWC(3) --with 3=Const(",
          "\"Const(\": The text of the function is malformed: a name followed by key=value pairs "
          "in parentheses was expected."},
         {nullptr, "", "no function given, such as \"Linear(DataInit=0 1;2 3)\""}});
}

}  // namespace
