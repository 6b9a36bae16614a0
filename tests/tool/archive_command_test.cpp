// lmw archive as a user meets it.

#include "tests/tool/tool_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using lmw::test::RunTool;
using lmw::test::TemporaryFolder;
using lmw::test::ToolResult;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(ArchiveCommand, AProjectIsMadeReadAndChanged) {
    const TemporaryFolder folder;
    const std::string archive = folder.Name("Bö.lwz");
    const std::string a = folder.Write("a.csv", "1,2\n");
    const std::string b = folder.Write("b.csv", "3,4\n");
    ToolResult run = RunTool({"archive", "add", archive, a, b, "--below", "Stage/1"});
    EXPECT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(run.out, "2 entries added\n");
    EXPECT_EQ(RunTool({"archive", "comment", archive, "8.1"}).out, "8.1\n");
    EXPECT_EQ(RunTool({"archive", "comment", archive}).out, "8.1\n");
    EXPECT_THAT(RunTool({"archive", "info", archive}).out,
                StartsWith("version  8.1\ncomment  8.1\nentries  2\nsize     8 bytes\n"));
    EXPECT_THAT(RunTool({"archive", "info", archive, "--json"}).out, HasSubstr("\"entries\": 2"));
    EXPECT_THAT(RunTool({"archive", "list", archive, "*b.csv"}).out,
                EndsWith(" Stage\\1\\b.csv\n"));
    EXPECT_THAT(RunTool({"archive", "list", archive, "--json"}).out,
                HasSubstr("\"name\": \"Stage\\\\1\\\\a.csv\""));
    EXPECT_EQ(RunTool({"archive", "test", archive}).out, "2 of 2 entries are good\n");

    // Adding again is refused and changes nothing, replacing is not.
    static_cast<void>(folder.Write("a.csv", "new\n"));
    run = RunTool({"archive", "add", archive, a, "--below", "Stage/1"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_THAT(run.err, HasSubstr("Stage\\1\\a.csv"));
    EXPECT_EQ(RunTool({"archive", "add", archive, a, "--below", "Stage/1", "--replace"}).exit_code,
              0);
    EXPECT_EQ(RunTool({"archive", "delete", archive, "*b*"}).out, "1 entries deleted\n");
    run = RunTool({"archive", "extract", archive, folder.Name("out")});
    EXPECT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(folder.Read("out/Stage/1/a.csv"), "new\n");
    EXPECT_EQ(folder.Read("out/Stage/1/b.csv"), std::nullopt);
    run = RunTool({"archive", "extract", archive, folder.Name("small"), "--max-bytes", "3"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_EQ(folder.Read("small/Stage/1/a.csv"), std::nullopt);
}

TEST(ArchiveCommand, PasswordsAreNeededToRead) {
    const TemporaryFolder folder;
    const std::string archive = folder.Name("p.lwz");
    const std::string a = folder.Write("a", "secret");
    EXPECT_EQ(RunTool({"archive", "add", archive, a, "--password", "sesame"}).exit_code, 0);
    EXPECT_EQ(RunTool({"archive", "test", archive}).exit_code, 1);
    EXPECT_EQ(RunTool({"archive", "test", archive, "--password", "Sesame"}).exit_code, 1);
    EXPECT_EQ(RunTool({"archive", "test", archive, "--password", "sesame"}).exit_code, 0);
}

TEST(ArchiveCommand, DamageGivesOneAndBadUsageTwo) {
    const TemporaryFolder folder;
    const std::string archive = folder.Name("p.lwz");
    const std::string text(2000, 'x');
    EXPECT_EQ(RunTool({"archive", "add", archive, folder.Write("a", text)}).exit_code, 0);
    std::string bytes = folder.Read("p.lwz").value();
    bytes[36] = static_cast<char>(bytes[36] ^ 0x55);  // in the packed content
    static_cast<void>(folder.Write("p.lwz", bytes));
    ToolResult run = RunTool({"archive", "test", archive, "--json"});
    EXPECT_EQ(run.exit_code, 1);
    EXPECT_THAT(run.out, HasSubstr("\"name\": \"a\""));
    EXPECT_THAT(run.err, StartsWith("lmw: "));
    EXPECT_EQ(RunTool({"archive", "info", folder.Write("no", "no archive")}).exit_code, 1);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"archive"},
          {"archive", "info"},
          {"archive", "unknown", archive},
          {"archive", "info", folder.Name("missing")},
          {"archive", "delete", folder.Name("missing"), "*"},
          {"archive", "add", archive, folder.Name("missing")}}) {
        run = RunTool(arguments);
        EXPECT_EQ(run.exit_code, 2) << arguments.back();
        EXPECT_THAT(run.out, IsEmpty());
    }
    EXPECT_EQ(folder.Read("missing"), std::nullopt);
}

}  // namespace
