// What diagnostics make of a process' command line, environment, debugger, first use and end.

#include "tests/common/diag_child.h"
#include "tests/support/environment.h"
#include "tests/support/scratch_folder.h"
#include "tests/sys/child_process.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <string>
#include <vector>

namespace {

using namespace lmw::test;

// Runs the child with quoted arguments and returns all that it wrote, with LF as line end.
std::string OutputOf(const std::string& arguments) {
    const ScratchFolder folder;
    const std::string file = (folder.Path() / "output").string();
    // The first command does nothing; without it a shell might take the quotation marks of the
    // program's name for its own.
    const std::string command =
        "cd . && \"" LMW_CHILD_PROGRAM "\" " + arguments + " > \"" + file + "\" 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::string output = folder.Read("output");
    std::erase(output, '\r');
    return output;
}

class DiagProcess : public ::testing::Test {
 protected:
    DiagProcess() { Clean(); }
    ~DiagProcess() override { Clean(); }

    static void Clean() {
        for (const char* name : {"LMW_DIAG", "LOAMWORKS_DIAG_MODE"}) {
            RemoveEnvironmentVariable(name);
        }
    }
};

TEST_F(DiagProcess, StartsWithWhatTheCommandLineSays) {
    for (const auto& [arguments, settings] : {
             std::pair{"", "level=1 mask=3 names= safe=0"},
             {"level=warning \"category=io;mesh\"", "level=2 mask=24 names=io;mesh safe=0"},
             {"level=-2", "level=-2 mask=3 names= safe=0"},
             {"level=2147483647", "level=1 mask=3 names= safe=0"},
             {"level=a=b -level=3 --safemode", "level=1 mask=3 names= safe=0"},
             {"\"category=;\"", "level=1 mask=0 names= safe=0"},
             {"/SAFEMODE", "level=1 mask=3 names= safe=1"},
         }) {
        EXPECT_EQ(OutputOf(std::string(kPrintSettings) + " " + arguments),
                  std::string(settings) + " interactive=0 diagnostic=0 traps=0\n")
            << arguments;
    }
    EXPECT_EQ(OutputOf(std::string(kPrintSettings) + " -AssertInteractive"),
              "level=1 mask=3 names= safe=0 interactive=1 diagnostic=0 traps=0\n");
}

TEST_F(DiagProcess, AssertionsAreInteractiveUnderADebugger) {
    EXPECT_EQ(RunChild(kReportAssertInteractive), kNo);
    EXPECT_EQ(RunChildUnderDebugger(kReportAssertInteractive), kYes);
}

TEST_F(DiagProcess, ThreadsThatUseEverythingFirstAgree) {
    for (int run = 0; run < 3; ++run) {
        const std::string output =
            OutputOf(std::string(kRaceFirstUse) + " level=warning category=io");
        // The messages of the threads themselves come first.
        EXPECT_NE(output.find("agreed on level 2, 16 errors in io\n"), std::string::npos) << output;
        EXPECT_EQ(output.find("disagreed"), std::string::npos);
        EXPECT_EQ(output.find("filtered"), std::string::npos);
    }
}

TEST_F(DiagProcess, CategoriesBeyondThe28thAreVisibleAndTakeNobodysBit) {
    EXPECT_EQ(OutputOf(kExhaustCategories),
              "28 masks, bits 7ffffff8 in order, further 3, visible, known 1073741824, registered "
              "28, name category0\n");
}

TEST_F(DiagProcess, WarningsGoToStandardErrorUntilTheProcessEnds) {
    // Where the last two messages come from is not shown in the same words by every compiler.
    const std::string output =
        std::regex_replace(OutputOf(kLogUntilTheEnd), std::regex(R"( \(diag_child[^)]*\))"), "");
    EXPECT_EQ(output,
              "warning [io]: level 2 \xC3\xA4\\n (child.cpp:7, F)\n"
              "error [io]: level 3 \xC3\xA4\\n (child.cpp:7, F)\n"
              "critical [io]: level 4 \xC3\xA4\\n (child.cpp:7, F)\n"
              "error [late]: last static object destroyed\n"
              "error [late]: first static object destroyed\n");
}

}  // namespace
