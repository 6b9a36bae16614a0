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

ToolResult Archive(const std::string& verb, const std::string& archive,
                   std::vector<std::string> rest = {}) {
    rest.insert(rest.begin(), {"archive", verb, archive});
    return RunTool(rest);
}

TEST(ArchiveCommand, AProjectIsMadeReadAndChanged) {
    const TemporaryFolder folder;
    const std::string name = folder.Name("Bö.lwz");
    const std::string a = folder.Write("a.csv", "1,2\n");
    const std::string b = folder.Write("b.csv", "3,4\n");
    EXPECT_EQ(Archive("add", name, {a, b, "--below", "Stage/1"}).out, "2 entries added\n");
    EXPECT_EQ(Archive("comment", name, {"8.1"}).out, "8.1\n");
    EXPECT_EQ(Archive("comment", name).out, "8.1\n");
    EXPECT_THAT(Archive("info", name).out,
                StartsWith("version  8.1\ncomment  8.1\nentries  2\nsize     8 bytes\n"));
    EXPECT_THAT(Archive("info", name, {"--json"}).out, HasSubstr("\"entries\": 2"));
    EXPECT_THAT(Archive("list", name, {"*b.csv"}).out, EndsWith(" Stage\\1\\b.csv\n"));
    EXPECT_THAT(Archive("list", name, {"--json"}).out,
                HasSubstr("\"name\": \"Stage\\\\1\\\\a.csv\""));
    EXPECT_EQ(Archive("test", name).out, "2 of 2 entries are good\n");

    // Adding again is refused and changes nothing, replacing is not.
    static_cast<void>(folder.Write("a.csv", "new\n"));
    const ToolResult refused = Archive("add", name, {a, "--below", "Stage/1"});
    EXPECT_EQ(refused.exit_code, 2);
    EXPECT_THAT(refused.err, HasSubstr("Stage\\1\\a.csv"));
    EXPECT_EQ(Archive("add", folder.Name("twice.lwz"), {a, a}).exit_code, 2);
    EXPECT_EQ(folder.Read("twice.lwz"), std::nullopt);
    EXPECT_EQ(Archive("add", name, {a, "--below", "Stage/1", "--replace"}).exit_code, 0);
    EXPECT_EQ(Archive("delete", name, {"*b*"}).out, "1 entries deleted\n");
    EXPECT_EQ(Archive("extract", name, {folder.Name("out")}).exit_code, 0);
    EXPECT_EQ(folder.Read("out/Stage/1/a.csv"), "new\n");
    EXPECT_EQ(folder.Read("out/Stage/1/b.csv"), std::nullopt);
    EXPECT_EQ(Archive("extract", name, {folder.Name("small"), "--max-bytes", "3"}).exit_code, 2);
    EXPECT_EQ(folder.Read("small/Stage/1/a.csv"), std::nullopt);
}

TEST(ArchiveCommand, PasswordsAreNeededToRead) {
    const TemporaryFolder folder;
    const std::string name = folder.Name("p.lwz");
    const std::string a = folder.Write("a", "secret");
    EXPECT_EQ(Archive("add", name, {a, "--password", "sesame"}).exit_code, 0);
    EXPECT_EQ(Archive("test", name).exit_code, 1);
    EXPECT_EQ(Archive("test", name, {"--password", "Sesame"}).exit_code, 1);
    EXPECT_EQ(Archive("test", name, {"--password", "sesame"}).exit_code, 0);
}

TEST(ArchiveCommand, DamageThatATestFindsGivesOneAndAllElseTwo) {
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
    EXPECT_EQ(RunTool({"archive", "info", folder.Write("no", "no archive")}).exit_code, 2);
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"archive"},
          {"archive", "info"},
          {"archive", "unknown", archive},
          {"archive", "info", folder.Name("missing")},
          {"archive", "delete", folder.Name("missing"), "*"},
          {"archive", "add", archive, archive, "--below", "../up"},
          {"archive", "add", archive, folder.Name("missing")}}) {
        run = RunTool(arguments);
        EXPECT_EQ(run.exit_code, 2) << arguments.back();
        EXPECT_THAT(run.out, IsEmpty());
    }
    EXPECT_EQ(folder.Read("missing"), std::nullopt);
}

}  // namespace
