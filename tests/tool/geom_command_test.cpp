// lmw geom as a user meets it.

#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using lmw::test::ExpectRefusals;
using lmw::test::Packed;
using lmw::test::RunTool;
using lmw::test::TemporaryFolder;
using lmw::test::ToolResult;
using testing::HasSubstr;
using testing::StartsWith;

const char* const kCross = "line,x,y\n0,0,0\n0,4,4\n1,0,4\n1,4,0\n1,4,4\n";

TEST(GeomCommand, ListsEventsWithRowsAndSegments) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("cross.csv", kCross);
    for (const char* method : {"choose", "sweep"}) {
        const ToolResult result = RunTool({"geom", file, "--kind", "crossing", "--method", method});
        EXPECT_EQ(0, result.exit_code) << result.err;
        EXPECT_EQ("x,y,first_row,first_segment,second_row,second_segment\n2,2,0,0,1,1\n",
                  result.out);
    }
    EXPECT_EQ("POINT (2 2)\nPOINT (4 4)\nPOINT (4 0)\n",
              RunTool({"geom", file, "--format", "wkt"}).out);
    EXPECT_EQ("POINT (2 2)\nPOINT (4 4)\n",
              RunTool({"geom", file, "--kind", "intersection", "--format", "wkt", "--x-column", "x",
                       "--y-column", "3"})
                  .out.substr(0, 24));
}

TEST(GeomCommand, ReadsWktAndFindsSharedEdges) {
    const TemporaryFolder folder;
    const std::string file =
        folder.Write("two.wkt",
                     "MULTIPOLYGON (((0 0, 1 0, 1 1, 0 0)),\n ((1 0, 2 0, 1 1, 1 0)))\n"
                     "GEOMETRYCOLLECTION Z (POINT EMPTY, LINESTRING (5 5 1, 6 6 1))");
    const ToolResult result = RunTool({"geom", file, "--task", "edges"});
    EXPECT_EQ(0, result.exit_code) << result.err;
    EXPECT_THAT(result.out,
                StartsWith("edge,x0,y0,x1,y1,uses\n1,0,0,1,0,0:0\n2,1,0,1,1,0:1 1:2\n"));
    EXPECT_THAT(result.out, HasSubstr(",5,5,6,6,2:0\n"));
}

TEST(GeomCommand, DividesRows) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("line.csv", "0,0,0\n0,3,0\n0,3,2\n");
    EXPECT_EQ("row,x,y\n0,0,0\n0,1,0\n0,2,0\n0,3,0\n0,3,1\n0,3,2\n",
              RunTool({"geom", file, "--task", "divide", "--spacing", "1"}).out);
}

TEST(GeomCommand, PrintsJson) {
    const TemporaryFolder folder;
    const std::string cross = folder.Write("cross.csv", kCross);
    EXPECT_EQ(
        R"([{"x":2,"y":2,"first_row":0,"first_segment":0,"second_row":1,"second_segment":1}])",
        Packed(RunTool({"geom", cross, "--kind", "crossing", "--json"}).out));
    EXPECT_THAT(
        Packed(RunTool({"geom", cross, "--task", "edges", "--json"}).out),
        StartsWith(R"([{"edge":1,"x0":0,"y0":0,"x1":4,"y1":4,"uses":[{"row":0,"edge":0}]},)"));
    const std::string line = folder.Write("line.csv", "0,0,0\n0,2,0\n");
    EXPECT_EQ(R"([[{"x":0,"y":0},{"x":1,"y":0},{"x":2,"y":0}]])",
              Packed(RunTool({"geom", line, "--task", "divide", "--spacing", "1", "--json"}).out));
}

TEST(GeomCommand, DrawsThePictureAndWritesAllOrNothing) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("cross.csv", kCross);
    for (const char* overlay : {"cells", "tree"}) {
        const ToolResult result = RunTool({"geom", file, "--svg", folder.Name("out.svg"), "-o",
                                           folder.Name("out.csv"), "--draw", overlay});
        EXPECT_EQ(0, result.exit_code) << result.err;
        EXPECT_THAT(folder.Read("out.svg").value_or(""), HasSubstr("events: 3"));
        EXPECT_TRUE(folder.Read("out.csv").has_value());
    }
}

TEST(GeomCommand, ComplainsAboutBadInput) {
    const std::string deep = "POLYGON " + std::string(5000, '(');
    ExpectRefusals(
        "geom",
        {{"line,x,y\n0,0,zero\n", "", "p.csv, row 2: \"zero\" is not a number"},
         {kCross, "--task divide", "--spacing: dividing needs a spacing above 0"},
         {kCross, "--decimals 2.5", "--decimals: a whole number from -300 to 300 is needed"},
         {kCross, "--kind touch",
          "--kind: \"touch\" is none of intersection, coincident, crossing, collision"},
         {"CIRCLE (0 0)", "", "c.wkt, row 1: no geometry at \"CIRCLE (0 0)\"", "c.wkt"},
         {"POINT (0 0)\nLINESTRING (0 0, 1", "", "d.wkt, row 2: no pair of coordinates at \"1\"",
          "d.wkt"},
         {"LINESTRING (0 0, 1 1", "", "e.wkt, row 1: a closing parenthesis is missing at the end",
          "e.wkt"},
         {deep.c_str(), "",
          "f.wkt, row 1: too many parentheses at "
          "\"((((((((((((((((((((((((((((((((((((((((((((((((((((((((((((...\"",
          "f.wkt"},
         {"x,y\n", "", "p.csv: no points"},
         {"0,0,0\n0,9,0\n", "--task divide --spacing 1e-9",
          "p.csv: row 0 would get too many points of this spacing"},
         {"0,1,1\n0,1,1\n", "--task divide --spacing 1", "p.csv: row 0 cannot be divided"}});
}

}  // namespace
