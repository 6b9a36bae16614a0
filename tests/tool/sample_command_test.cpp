// lmw sample as a user meets it: command line in, text, files and exit code out.

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

TEST(SampleCommand, WritesTheNumbersOfTheSeedAndSummarisesThem) {
    const TemporaryFolder folder;
    const std::string options = "--law uniform --to 4294967296 --seed 0 --count 2";
    ToolResult run = RunTool({"sample", "-o", folder.Name("numbers.csv")}, options);
    EXPECT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(folder.Read("numbers.csv"), "value\n3626764237\n1654615998\n");
    EXPECT_THAT(run.out, StartsWith("count,mean,standard_deviation,minimum,maximum\n"
                                    "2,2640690117.5,"));
    EXPECT_THAT(run.out, HasSubstr(",1654615998,3626764237\n"));
    run = RunTool({"sample", "--bins", "2", "--json"}, options);
    EXPECT_EQ(run.exit_code, 0) << run.err;
    for (const char* const part :
         {"\"edges\":[0,2147483648,4294967296]", "\"counts\":[0,1,1,0]", "\"seed\":0"}) {
        EXPECT_THAT(Packed(run.out), HasSubstr(part));
    }
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
    ExpectRefusals(
        "sample",
        {{nullptr, "--sigma 0", "--sigma: a standard deviation must be above 0"},
         {nullptr, "--law uniform --from 2 --to 2", "2 to 2 is no range: check --from and --to"},
         {nullptr, "--law uniform --mean 2", "--mean and --sigma belong to --law normal"},
         {nullptr, "--to 2", "--from and --to belong to --law uniform"},
         {nullptr, "--mean 1 --sigma 1e-17", "--bins: the numbers cannot be told into 24 bins"},
         {nullptr, "--sigma 1e308", "--bins: the numbers cannot be told into 24 bins"},
         {nullptr, "--count 0", "--count: \"0\" is not a whole number from 1 to 10000000"}});
}

}  // namespace
