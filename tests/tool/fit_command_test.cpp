// lmw fit as a user meets it: command line in, report, files and exit code out.

#include "common/fn/evaluate.h"
#include "common/fn/fred_xing.h"
#include "common/fn/kinds.h"

#include "tests/support/property_random.h"
#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using lmw::test::Exact;
using lmw::test::ExpectRefusals;
using lmw::test::RunTool;
using lmw::test::TemporaryFolder;
using lmw::test::ToolResult;
using testing::HasSubstr;
using testing::Not;

// The number that follows "name": in JSON, or name, in CSV.
double NumberAfter(const std::string& text, const std::string& name) {
    const std::size_t at = text.find(name);
    return std::stod(at == std::string::npos ? "nan" : text.substr(at + name.size()));
}

// Points of a known curve in kPa, in no order, one of them at no suction and one not measured.
std::string KnownPoints(double unit, double sign) {
    const math::fn::flow::FredXing curve(12.0, 1.8, 0.6, 0.42, 1e6);
    std::string text = "# known\nsuction,other,theta\n";
    for (const double suction : {30.0, 1.0, 0.0, 3000.0, 5.0, 12.0, 100.0, 800.0}) {
        text += Exact(sign * suction / unit) + ",x," + Exact(curve(-suction)) + "\n";
    }
    return text + Exact(sign * 7.0 / unit) + ",x,\n";
}

TEST(FitCommand, FindsAKnownCurveInEveryUnit) {
    const TemporaryFolder folder;
    struct Row {
        const char* options;
        double kilopascals;  // in one unit
        double sign;
    };
    for (const Row& row : {Row{"", 1.0, 1.0}, Row{"--unit cm", 0.0980665, 1.0},
                           Row{"--unit psi --x pressure", 6.894757293168361, -1.0}}) {
        const std::string file = folder.Write("k.csv", KnownPoints(row.kilopascals, row.sign));
        const ToolResult result =
            RunTool({"fit", file, "--y-column", "theta", "--json"}, row.options);
        SCOPED_TRACE(result.err + result.out);
        ASSERT_EQ(result.exit_code, 0);
        EXPECT_EQ(NumberAfter(result.out, "\"code\": "), 0.0);
        EXPECT_EQ(NumberAfter(result.out, "\"points\": "), 8.0);
        EXPECT_NEAR(NumberAfter(result.out, "\"a\": ") * row.kilopascals, 12.0, 1e-6);
        EXPECT_NEAR(NumberAfter(result.out, "\"n\": "), 1.8, 1e-7);
        EXPECT_NEAR(NumberAfter(result.out, "\"m\": "), 0.6, 1e-7);
        EXPECT_EQ(NumberAfter(result.out, "\"saturated_water_content\": "), 0.42);
        // The definition is a function that gives the same water contents.
        const std::size_t from = result.out.find("FredlundXing(");
        ASSERT_NE(from, std::string::npos);
        const std::string text = result.out.substr(from, result.out.find('"', from) - from);
        IFn function;
        ASSERT_TRUE(lmw::fn::Create({text.begin(), text.end()}, function).Succeeded()) << text;
        const double pressure = -100.0 / row.kilopascals;
        EXPECT_NEAR(lmw::fn::impl::SafeCalculate(*function, &pressure, nullptr),
                    math::fn::flow::FredXing(12.0, 1.8, 0.6, 0.42, 1e6)(-100.0), 1e-9);
    }
}

TEST(FitCommand, ReportsAndWritesParametersResidualsAndPicture) {
    const TemporaryFolder folder;
    const ToolResult result = RunTool(
        {"fit", std::string(LMW_EXAMPLE_DATA) + "/retention-clay-seelow.csv", "--unit", "cm", "-o",
         folder.Name("p.csv"), "--residuals", folder.Name("r.csv"), "--svg", folder.Name("p.svg")});
    ASSERT_EQ(result.exit_code, 0) << result.err;
    // Worked out with 40 digits in another language; a = 102.10164 kPa.
    for (const char* const fact :
         {"13 points of ", "converged after ", "1041.15 ± ", "0.9197 ± ", "0.231755 ± ",
          "0.557 (the largest measured)", "0.00278714", "0.00731106 at a suction of 5000 cm"}) {
        EXPECT_THAT(result.out, HasSubstr(fact));
    }
    const std::string parameters = folder.Read("p.csv").value_or("");
    EXPECT_NEAR(NumberAfter(parameters, "\na,"), 1041.1469952857556, 1e-4);
    EXPECT_NEAR(NumberAfter(parameters, "\nm,"), 0.2317548091353329, 1e-8);
    EXPECT_THAT(parameters, HasSubstr("\nsaturated water content,0.557,,\n"));
    const std::string residuals = folder.Read("r.csv").value_or("");
    EXPECT_EQ(std::count(residuals.begin(), residuals.end(), '\n'), 14);
    EXPECT_THAT(residuals, HasSubstr("\n0,0.557,0.557,0\n"));
    const std::string picture = folder.Read("p.svg").value_or("");
    EXPECT_THAT(picture, HasSubstr("n = 0.9197, m = 0.231755"));
    EXPECT_THAT(picture, HasSubstr("Points without suction have no place here: 1."));
    EXPECT_EQ(folder.Count(), 3U);
}

TEST(FitCommand, SaysWhenThePointsDoNotDetermineTheCurve) {
    const TemporaryFolder folder;
    const std::string level = folder.Write("l.csv", "1,0.4\n10,0.4\n100,0.4\n1000,0.4\n");
    const ToolResult result = RunTool({"fit", level, "--svg", folder.Name("l.svg")});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("stopped at a bound after "));
    EXPECT_THAT(result.out, Not(HasSubstr("±"))) << "no standard errors there";
    EXPECT_THAT(folder.Read("l.svg").value_or(""), HasSubstr("The fit stopped at a bound"));
}

TEST(FitCommand, BadInputGivesOneLineExitCodeTwoAndNoFile) {
    const char* const good = "1,0.4\n10,0.3\n100,0.2\n";
    const char* const too_few = "p.csv: a fit needs at least three points with suction";
    const char* const no_water = "p.csv: the saturated water content must be above 0";
    ExpectRefusals("fit",
                   {{"h,theta\n", "", "p.csv: no points"},
                    {"0,0.4\n1,0.3\n10,0.2\n", "", too_few},
                    {"1,0.4\n-5,0.3\n", "",
                     "p.csv, row 2: a suction below 0 (are these pressures? --x pressure)"},
                    {good, "--x pressure", too_few},
                    {"1,0\n2,0\n3,0\n", "", no_water},
                    {good, "--saturated -1", no_water},
                    {good, "--unit bar", "--unit: \"bar\" is none of kPa, Pa, psf, psi, m, cm, ft"},
                    {"1,0.4\n2,x\n", "", "p.csv, row 2: \"x\" is not a number"}});
}

}  // namespace
