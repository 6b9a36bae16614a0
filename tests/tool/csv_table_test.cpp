// The helpers that commands share: CSV tables, text, JSON, whole files.

#include "tools/lmw/csv_table.h"

#include "common/undefined.h"

#include "tests/tool/tool_run.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/text.h"
#include "tools/lmw/whole_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace lmw::tool;
using lmw::test::TemporaryFolder;
using testing::ElementsAre;

TEST(CsvTable, SkipsByteOrderMarkCommentsAndBlankLinesButCountsThem) {
    const CsvTable table =
        CsvTable::FromText("a.csv", "\xEF\xBB\xBF# one\r\n\r\n#two\r\nx,y\r\n1,2\r\n\r\n 3 ,x");
    EXPECT_THAT(table.Comments(), ElementsAre("one", "two"));
    EXPECT_THAT(table.Header(), ElementsAre("x", "y"));
    ASSERT_EQ(table.NumberOfRows(), 2U);
    EXPECT_EQ(table.Number(0, 1), 2.0);
    EXPECT_EQ(table.Number(1, 0), 3.0);
    EXPECT_STREQ(table.At(1, "bad").what(), "a.csv, row 7: bad");
}

TEST(CsvTable, QuotedCellsHoldSeparatorsAndQuotes) {
    const CsvTable table =
        CsvTable::FromText("a", "\"suction, kPa\",\"a \"\"b\"\"\" ,c\n1,\"2\",\"\"\n");
    EXPECT_THAT(table.Header(), ElementsAre("suction, kPa", "a \"b\"", "c"));
    EXPECT_EQ(table.Number(0, 1), 2.0);
    EXPECT_EQ(table.Text(0, 2), "");
    EXPECT_EQ(table.Column("suction, kPa"), 0U);
    EXPECT_THROW((void)CsvTable::FromText("a", "\"1\"2,3\n"), Failure);
}

TEST(CsvTable, TheFirstRowDecidesSeparatorAndHeader) {
    const CsvTable tabs = CsvTable::FromText("a", "x\ty z\n1\t2\n");
    EXPECT_THAT(tabs.Header(), ElementsAre("x", "y z"));
    EXPECT_EQ(tabs.Number(0, 1), 2.0);
    // A number that is mistyped does not turn the row into a header.
    const CsvTable mistyped = CsvTable::FromText("a", "1O,2\n3,4\n");
    EXPECT_THAT(mistyped.Header(), ElementsAre());
    EXPECT_EQ(mistyped.NumberOfRows(), 2U);
    EXPECT_THROW((void)CsvTable::FromText("a", std::string_view("1,2\0\n", 5)), Failure);
}

TEST(CsvText, WritesWhatReadsBackToTheSameNumbers) {
    CsvText csv;
    csv.Cell("a, \"b\"").Cell("c").EndRow();
    const double numbers[] = {0.1, -0.0, 1e300, 5e-324, 1.0 / 3.0};
    for (const double number : numbers) {
        csv.Cell(number)
            .Cell(lmw::kUndefined)
            .Cell(std::numeric_limits<double>::quiet_NaN())
            .EndRow();
    }
    const CsvTable table = CsvTable::FromText("a", csv.Text());
    EXPECT_THAT(table.Header(), ElementsAre("a, \"b\"", "c"));
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        EXPECT_EQ(table.Number(i, 0), numbers[i]);
        EXPECT_EQ(table.Text(i, 1), "");
        EXPECT_EQ(table.Text(i, 2), "");
    }
}

TEST(JsonText, NestsEscapesAndWritesNullForWhatIsNoNumber) {
    JsonText json;
    json.BeginObject().Key("a\"\\\n").Value("\x01ü\xFF").Key("n").BeginArray();
    json.Value(0.5).Value(lmw::kUndefined).Value(std::numeric_limits<double>::infinity()).Count(7);
    json.BeginArray().End().End().End();
    EXPECT_EQ(
        json.Text(),
        "{\n  \"a\\\"\\\\\\u000a\": \"\\u0001ü\uFFFD\",\n  \"n\": [\n    0.5,\n    null,\n    "
        "null,\n    7,\n    []\n  ]\n}\n");
}

TEST(Text, IllFormedBytesBecomeReplacementCharacters) {
    struct Row {
        std::string_view bytes;
        std::string_view read;
    };
    // Overlong, surrogate, beyond the last plane, cut short, stray continuation.
    for (const Row& row :
         {Row{"\xC0\xAF", "\uFFFD\uFFFD"}, Row{"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
          Row{"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}, Row{"a\xE5\x9C", "a\uFFFD\uFFFD"},
          Row{"\x80z", "\uFFFDz"}, Row{"ö土\xF0\x9F\x8C\xB1", "ö土\xF0\x9F\x8C\xB1"}}) {
        EXPECT_EQ(OneLine(row.bytes), row.read);
    }
    EXPECT_EQ(OneLine("a\nb\tc\x1B[\xC2\x9B\xC2\xA0\r\n"), "a b c [ \xC2\xA0");
    EXPECT_EQ(Quoted(std::string(70, 'x')), '"' + std::string(60, 'x') + "...\"");
}

TEST(WholeFiles, AllOrNoneAreReplaced) {
    const TemporaryFolder folder;
    const std::string first = folder.Write("a", "old");
    EXPECT_THROW(WriteFiles({{first, "new"}, {folder.Name("none/b"), "new"}}), Failure);
    EXPECT_THROW(WriteFiles({{first, "1"}, {folder.Name("./a"), "2"}}), Failure);
    EXPECT_THROW(WriteFiles({{folder.Name("c"), "1"}, {folder.Name("./c"), "2"}}), Failure);
    EXPECT_THROW(WriteFiles({{folder.Name("./a"), "result"}}, first), Failure);
    EXPECT_EQ(folder.Read("a"), "old");
    EXPECT_EQ(folder.Count(), 1U);
    WriteFiles({{first, std::string("n\0\r\n", 4)}, {folder.Name("b"), ""}});
    EXPECT_EQ(folder.Read("a"), std::string("n\0\r\n", 4));
    EXPECT_EQ(folder.Read("b"), "");
    EXPECT_EQ(ReadWholeFile(folder.Name("b")), "");
    EXPECT_THROW(MakeFolder(first), Failure);
}

}  // namespace
