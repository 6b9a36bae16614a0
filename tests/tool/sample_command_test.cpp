// lmw sample as a user meets it: command line in, text, files and exit code out.

#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using lmw::test::RunTool;
using lmw::test::TemporaryFolder;
using lmw::test::ToolResult;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(SampleCommand, WritesTheNumbersOfTheSeedAndSummarisesThem) {
    const TemporaryFolder folder;
    const ToolResult run = RunTool({"sample", "--law", "uniform", "--to", "4294967296", "--seed",
                                    "0", "--count", "2", "-o", folder.Name("numbers.csv")});
    EXPECT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(folder.Read("numbers.csv"), "value\n3626764237\n1654615998\n");
    EXPECT_THAT(run.out, StartsWith("count,mean,standard_deviation,minimum,maximum\n"
                                    "2,2640690117.5,"));
    EXPECT_THAT(run.out, HasSubstr(",1654615998,3626764237\n"));
}

TEST(SampleCommand, GivesTheHistogramAsJson) {
    const ToolResult run = RunTool({"sample", "--law", "uniform", "--to", "4294967296", "--seed",
                                    "0", "--count", "2", "--bins", "2", "--json"});
    EXPECT_EQ(run.exit_code, 0) << run.err;
    std::string plain = run.out;
    std::erase_if(plain, [](char c) { return c == ' ' || c == '\n'; });
    EXPECT_THAT(plain, HasSubstr("\"edges\":[0,2147483648,4294967296]"));
    EXPECT_THAT(plain, HasSubstr("\"counts\":[0,1,1,0]"));
    EXPECT_THAT(plain, HasSubstr("\"seed\":0"));
}

TEST(SampleCommand, DrawsTheHistogramWithTheLaw) {
    const TemporaryFolder folder;
    const ToolResult run = RunTool({"sample", "--mean", "31", "--sigma", "2.5", "--svg",
                                    folder.Name("friction.svg"), "--x-title", "angle"});
    EXPECT_EQ(run.exit_code, 0) << run.err;
    const std::string picture = folder.Read("friction.svg").value_or("");
    EXPECT_THAT(picture, HasSubstr("normal, mean 31, sigma 2.5"));
    EXPECT_THAT(picture, HasSubstr("expected by the law"));
    EXPECT_THAT(picture, HasSubstr("angle"));
    EXPECT_THAT(picture, HasSubstr("1000 numbers of seed 7777777"));
}

TEST(SampleCommand, ReportsWhatIsWrongInOneLine) {
    struct Row {
        std::vector<std::string> arguments;
        const char* complaint;
    };
    const Row rows[] = {
        {{"--sigma", "0"}, "a standard deviation must be above 0"},
        {{"--law", "uniform", "--from", "2", "--to", "2"}, "2 to 2 is no range"},
        {{"--law", "uniform", "--mean", "2"}, "--mean and --sigma belong to --law normal"},
        {{"--to", "2"}, "--from and --to belong to --law uniform"},
        {{"--mean", "1", "--sigma", "1e-17"}, "cannot be told into 24 bins"},
        {{"--sigma", "1e308"}, "cannot be told into 24 bins"},
        {{"--count", "0"}, "--count"},
    };
    for (const Row& row : rows) {
        std::vector<std::string> arguments{"sample"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const ToolResult run = RunTool(arguments);
        EXPECT_EQ(run.exit_code, 2) << row.complaint;
        EXPECT_THAT(run.err, HasSubstr(row.complaint));
        EXPECT_THAT(run.out, IsEmpty());
    }
}

}  // namespace
