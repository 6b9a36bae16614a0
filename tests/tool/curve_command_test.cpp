// lmw curve and lmw demo as a user meets them: command line in, text, files and exit code out.

#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

using lmw::test::ExpectRefusals;
using lmw::test::Packed;
using lmw::test::RunTool;
using lmw::test::TemporaryFolder;
using lmw::test::ToolResult;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kEmpty = std::numeric_limits<double>::infinity();  // an empty cell

// The rows of printed CSV below its header; expects the header and four cells in each row.
std::vector<std::vector<double>> Rows(const std::string& csv) {
    std::vector<std::vector<double>> rows;
    std::istringstream lines(csv);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, "x,value,derivative,integral");
    while (std::getline(lines, line)) {
        std::vector<double>& row = rows.emplace_back();
        std::istringstream cells(line + ",");
        for (std::string cell; std::getline(cells, cell, ',');) {
            row.push_back(cell.empty() ? kEmpty : std::stod(cell));
        }
        EXPECT_EQ(row.size(), 4U) << line;
    }
    return rows;
}

struct GoodCase {
    const char* points;
    const char* options;
    std::vector<std::vector<double>> rows;  // x, value, derivative, integral; worked out by hand
};

const char* const kThree = "0,1\n2,5\n6,3\n";

TEST(CurveCommand, PrintsValueDerivativeAndIntegralFromTheFirstPoint) {
    const std::vector<GoodCase> cases = {
        {kThree,
         "--tail-before 0 --tail-after Calc --at -1,0,1,4,7",
         {{-1, 1, 0, -1}, {0, 1, 2, 0}, {1, 3, 2, 2}, {4, 4, -0.5, 15}, {7, 2.5, -0.5, 24.75}}},
        {kThree,
         "--at -1,6,7",
         {{-1, kEmpty, kEmpty, kEmpty}, {6, 3, -0.5, 22}, {7, kEmpty, kEmpty, kEmpty}}},
        {kThree,
         "--tail-before None --tail-after Cycle --period 8 --at 7,9,10",
         {{7, 2, -1, 24.5}, {9, 3, 2, 28}, {10, 5, -0.5, 32}}},
        {"0,10\n1,20\n2,30\n",
         "--kind step --tail-before 2 --tail-after Cycle --period 3 --at -1,2.5,3,10",
         {{-1, 12, 0, -12}, {2.5, 30, 0, 45}, {3, 10, 0, 60}, {10, 20, 0, 190}}},
        // From the slope formula in another language, tension 50.
        {"0,0\n1,1\n3,2\n4,4\n",
         "--kind spline --at 0.5,2,3.5",
         {{0.5, 0.5470283190183483, 1.0523899713700298, 0.13740173312882253},
          {2, 1.4767766952966368, 0.37322330470336307, 1.7975641833674825},
          {3.5, 2.81875, 2.2375, 4.675127389741082}}},
        {kThree, "--kind spline --tension 0 --at 1,4", {{1, 3, 2, 2}, {4, 4, -0.5, 15}}},
        {"3,7\n", "--at -1,3,5", {{-1, 7, 0, -28}, {3, 7, 0, 0}, {5, 7, 0, 14}}},
        {kThree,
         "--points 3 --from 1 --to 4",
         {{1, 3, 2, 2}, {2.5, 4.75, -0.5, 8.4375}, {4, 4, -0.5, 15}}},
        {"1,0\n10000,9999\n",
         "--points 3 --log",
         {{1, 0, 1, 0}, {100, 99, 1, 4900.5}, {10000, 9999, 1, 49990000.5}}},
    };
    const TemporaryFolder folder;
    for (const GoodCase& row : cases) {
        SCOPED_TRACE(row.options);
        const ToolResult result =
            RunTool({"curve", folder.Write("p.csv", row.points)}, row.options);
        EXPECT_EQ(result.exit_code, 0);
        EXPECT_EQ(result.err, "");
        const std::vector<std::vector<double>> rows = Rows(result.out);
        ASSERT_EQ(rows.size(), row.rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            for (std::size_t j = 0; j < 4; ++j) {
                const double expected = row.rows[i][j];
                const double margin =
                    std::isinf(expected) ? 0.0 : 1e-13 * (1 + std::fabs(expected));
                EXPECT_TRUE(rows[i][j] == expected || std::fabs(rows[i][j] - expected) <= margin)
                    << "row " << i << ", cell " << j << ": " << rows[i][j];
            }
        }
    }
}

TEST(CurveCommand, ChoosesColumnsByHeaderOrNumberAndLeavesOutBlankValues) {
    const TemporaryFolder folder;
    const std::string file =
        folder.Write("a.csv", "# source\nh;theta;K\n\n 1 ; 0.4 ;9\n2;0.3;\n3;0.2;5\n");
    const ToolResult by_name = RunTool({"curve", file, "--y-column", "K", "--at", "2"});
    EXPECT_EQ(by_name.out, "x,value,derivative,integral\n2,7,-2,8\n");
    EXPECT_EQ(RunTool({"curve", file, "--y-column", "3", "--at", "2"}).out, by_name.out);
    EXPECT_EQ(RunTool({"curve", file, "--at", "2"}).out.substr(28, 5), "2,0.3");
}

TEST(CurveCommand, BadInputGivesOneLineExitCodeTwoAndNoFile) {
    ExpectRefusals(
        "curve",
        {{"", "", "p.csv: no points"},
         {"h,theta\n", "", "p.csv: no points"},
         {"1,\n2,\n", "", "p.csv: no points"},
         {"# c\nh,theta\n1,2\n3,4\n2,5\n", "", "p.csv, row 5: x must increase from row to row"},
         {"1,2\n3\n", "", "p.csv, row 2: column 2 is missing, the row has 1"},
         {"1,2\n,3\n", "", "p.csv, row 2: column 1 is empty"},
         {"1,2\n2,4O\n", "", "p.csv, row 2: \"4O\" is not a number"},
         {"1;0,2\n2;0,3\n", "", "p.csv, row 1: \"0,2\" is not a number"},
         {"1,2\n2,inf\n", "", "p.csv, row 2: \"inf\" is not a number"},
         {"1,2\n2,1e999\n", "", "p.csv, row 2: \"1e999\" is not a number"},
         {"1,1.7976931348623157e308\n", "", "row 1: \"1.7976931348623157e308\" is not a number"},
         {"1,2\n1,3\n", "--kind spline",
          "p.csv, row 2: x repeats, which a spline with tension cannot follow"},
         {"1,2\n\"2,3\n", "",
          "p.csv, row 2: a quote is not closed, or text follows a closing quote"},
         {"h,t\n1,2\n", "--y-column K", "p.csv: no column is called \"K\""},
         {"1,2\n", "--x-column 0", "p.csv: no column is called \"0\""},
         {kThree, "--tail-after calc",
          "--tail-after: \"calc\" is none of None, Calc, Cycle, and not a slope (a number)"},
         {kThree, "--tail-before inf",
          "--tail-before: \"inf\" is none of None, Calc, Cycle, and not a slope (a number)"},
         {kThree, "--kind cubic", "--kind: \"cubic\" is none of step, linear, spline"},
         {kThree, "--tension 5", "--tension: only a spline has it (--kind spline)"},
         {kThree, "--kind spline --tension 101",
          "--tension: \"101\" is not a whole number from 0 to 100"},
         {kThree, "--tail-after Cycle --period 0", "--period: a period must be above 0"},
         {"1,2\n1,3\n", "--tail-after Cycle",
          "p.csv: The value 0 is out of range. Allowed: greater than 0."},
         {kThree, "--at 1,,2", "--at: \"\" is not a number"},
         {kThree, "--points 1", "--points: \"1\" is not a whole number from 2 to 1000000"},
         {kThree, "--from 5 --to 1", "5 to 1 is no range of x: check --from and --to"},
         {kThree, "--log",
          "p.csv: x = 0 has no place on a logarithmic axis (begin above 0 by --from)"},
         {kThree, "--log --from -1", "--from: x = -1 has no place on a logarithmic axis"},
         {kThree, "--frm 1", "The following arguments were not expected: 1 --frm"},
         {kThree, "--at 1 --points 5", "--at excludes --points"}});
}

TEST(CurveCommand, AMissingFileFolderOrOutputFolderIsNamed) {
    const TemporaryFolder folder;
    const std::string missing = folder.Name("nö.csv");
    EXPECT_EQ(RunTool({"curve", missing}).err, "lmw: " + missing + ": no such file\n");
    EXPECT_EQ(RunTool({"curve", folder.Name("")}).err,
              "lmw: " + folder.Name("") + ": is a folder\n");
    const std::string points = folder.Write("points.csv", kThree);
    const std::string nowhere = folder.Name("none/p.svg");
    const ToolResult result =
        RunTool({"curve", points, "-o", folder.Name("t.csv"), "--svg", nowhere});
    EXPECT_EQ(result.err, "lmw: " + nowhere + ": cannot be written\n");
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(folder.Count(), 1U) << "the other output is not written either";
}

TEST(CurveCommand, WritesFilesWithAnyNameAndReplacesThemWhole) {
    const TemporaryFolder folder;
    const std::string points = folder.Write("Böden 土 & more.csv", kThree);
    (void)folder.Write(
        "t.csv", "old and much longer than what replaces it, so that a rest would show up here");
    const ToolResult result = RunTool({"curve", points, "--at", "1", "-o", folder.Name("t.csv"),
                                       "--svg", folder.Name("Bild ☃.svg")});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_EQ(folder.Read("t.csv"), "x,value,derivative,integral\n1,3,2,2\n");
    EXPECT_THAT(folder.Read("Bild ☃.svg").value_or(""), HasSubstr(">Böden 土 &amp; more</text>"));
    EXPECT_EQ(folder.Count(), 3U) << "no temporary file stays";
}

TEST(CurveCommand, JsonHoldsTheSameNumbersAndNullForUndefined) {
    const TemporaryFolder folder;
    const std::string points = folder.Write("p.csv", kThree);
    const ToolResult result =
        RunTool({"curve", points, "--json", "--at", "1,9", "--tail-before", "Calc"});
    EXPECT_EQ(result.exit_code, 0);
    const std::string text = Packed(result.out);
    EXPECT_THAT(text,
                HasSubstr("\"curve\":\"linear\",\"tail_before\":\"Calc\",\"tail_after\":\"None\","
                          "\"period\":null,\"points\":3,\"first_x\":0,\"last_x\":6,"));
    EXPECT_THAT(text, EndsWith("\"rows\":[{\"x\":1,\"value\":3,\"derivative\":2,\"integral\":2},{"
                               "\"x\":9,\"value\":null,\"derivative\":null,\"integral\":null}]}"));
}

TEST(Program, HelpAndVersionSucceedAndAWrongCommandIsNamed) {
    const ToolResult help = RunTool({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_THAT(help.out, HasSubstr("\n  curve  "));
    EXPECT_THAT(help.out, HasSubstr("\n  demo  "));
    for (const char* const command : {"curve", "demo", "diag"}) {
        const ToolResult own = RunTool({command, "--help"});
        EXPECT_EQ(own.exit_code, 0);
        EXPECT_THAT(own.out, HasSubstr("Usage: lmw " + std::string(command)));
    }
    EXPECT_THAT(RunTool({"curve", "--help"}).out,
                HasSubstr("A cell is empty where the curve has no value."));
    EXPECT_EQ(RunTool({"--version"}).exit_code, 0);
    EXPECT_EQ(RunTool({}).err, "lmw: no command given (lmw --help lists them)\n");
    EXPECT_EQ(RunTool({"krumm"}).err, "lmw: \"krumm\" is no command (lmw --help lists them)\n");
    EXPECT_EQ(RunTool({"krumm"}).exit_code, 2);
}

TEST(DemoCommand, ReportsTheMeasuredSeriesAndWritesTablesAndPictures) {
    const TemporaryFolder folder;
    const ToolResult result = RunTool({"demo", folder.Name("deep/er"), "--data", LMW_EXAMPLE_DATA});
    ASSERT_EQ(result.exit_code, 0) << result.err;
    // The year's sums are sums of the typed months; the values at 300 and 15000 cm are measured
    // ones.
    for (const char* const fact :
         {"2012          1226.0", "2013           828.0", "2014          1232.8",
          "2015          1139.2", "0.0250", "0.0090", "0.5420", "0.4140"}) {
        EXPECT_THAT(result.out, HasSubstr(fact));
    }
    // Fits of the same points worked out with 40 digits in another language.
    for (const char* const fact :
         {"\n\"sand, Berlin\",0.315,2.28085,5.53094,0.959172,0.000558609,",
          "\n\"loess, Rosdorf\",0.38,23.7753,0.827871,0.548776,0.00226041,",
          "\n\"clay, Seelow\",0.557,102.102,0.9197,0.231755,0.00278714,"}) {
        EXPECT_THAT(folder.Read("deep/er/retention-fit-parameters.csv").value_or(""),
                    HasSubstr(fact));
    }
    for (const char* const file :
         {"retention.svg", "conductivity.svg", "precipitation.svg", "precipitation-sums.svg",
          "retention-clay-seelow.svg", "retention-fits.svg", "retention-sand-berlin-fit.svg"}) {
        EXPECT_THAT(folder.Read(std::string("deep/er/") + file).value_or(""), HasSubstr("</svg>"))
            << file;
    }
    const std::vector<std::vector<double>> rows =
        Rows(folder.Read("deep/er/precipitation.csv").value_or(""));
    ASSERT_EQ(rows.size(), 73U);
    EXPECT_EQ(rows[72][0], 36.0);
    EXPECT_NEAR(rows[72][3], 3 * 1232.8, 1e-9);
    EXPECT_EQ(RunTool({"demo", folder.Name("other"), "--data", folder.Name("deep")}).exit_code, 2);
    EXPECT_EQ(folder.Count(), 1U);
}

}  // namespace
