// lmw params as a user meets it.

#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using lmw::test::RunTool;
using lmw::test::ToolResult;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

TEST(ParamsCommand, ListsEveryParameterUnderItsCategory) {
    const ToolResult all = RunTool({"params"});
    EXPECT_EQ(all.exit_code, 0);
    EXPECT_THAT(all.out, StartsWith("General\n"));
    EXPECT_THAT(all.out, HasSubstr("\n\nSampling\n"));
    // 643 parameters, 41 headings, 40 blank lines between them.
    EXPECT_EQ(std::count(all.out.begin(), all.out.end(), '\n'), 643 + 41 + 40);
}

TEST(ParamsCommand, FiltersByNameMeaningAndCategory) {
    const ToolResult by_name = RunTool({"params", "POREPRESSURE"});
    EXPECT_THAT(by_name.out, HasSubstr("263  PorePressure "));
    EXPECT_THAT(by_name.out, Not(HasSubstr("Porosity")));
    EXPECT_THAT(RunTool({"params", "newmark"}).out, HasSubstr("PermanentSlideDisplacement"));
    EXPECT_EQ(RunTool({"params", "porosity", "--category", "SoilState"}).out,
              "SoilState\n"
              "   36  Porosity                      Scalar                >= 0 and <= 1      "
              "Volume of the pores per total volume\n");
}

TEST(ParamsCommand, PrintsTheWholeRowAsCsvAndJson) {
    EXPECT_EQ(RunTool({"params", "gradient of the gas pressure", "--csv"}).out,
              "value,name,category,kind,quantity_class,unit_kind,si_unit,lower,lower_kind,upper,"
              "upper_kind,graph_method,components,meaning\n"
              "487,GasPressureGradient,GasPressures,Composed,Pressure,PressureGradient,Pa/m,0,"
              "inclusive,0,none,FromComponents,GasPressureGradientX GasPressureGradientY "
              "GasPressureGradientZ,Gradient of the gas pressure; as one number its magnitude\n");
    const std::string json = RunTool({"params", "gradient of the gas pressure", "--json"}).out;
    EXPECT_THAT(json, HasSubstr("\"value\": 487"));
    EXPECT_THAT(json, HasSubstr("\"GasPressureGradientZ\""));
    EXPECT_THAT(json, HasSubstr("\"lower_kind\": \"inclusive\""));
}

TEST(ParamsCommand, SaysWhatItDoesNotFind) {
    const ToolResult nothing = RunTool({"params", "unobtainium"});
    EXPECT_EQ(nothing.exit_code, 2);
    EXPECT_EQ(nothing.err, "lmw: no parameter has \"unobtainium\" in its name or meaning here\n");
    EXPECT_THAT(nothing.out, IsEmpty());
    const ToolResult no_category = RunTool({"params", "--category", "Weather"});
    EXPECT_EQ(no_category.exit_code, 2);
    EXPECT_THAT(no_category.err, HasSubstr("Weather"));
    EXPECT_EQ(RunTool({"params", "--csv", "--json"}).exit_code, 2);
}

}  // namespace
