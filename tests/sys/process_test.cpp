#include "common/sys/command_line.h"
#include "common/sys/debugger.h"
#include "common/sys/disk_file.h"
#include "common/sys/environment.h"
#include "common/sys/last_error.h"

#include "tests/support/environment.h"
#include "tests/support/scratch_folder.h"
#include "tests/sys/child_process.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <string>
#include <thread>

namespace {

using namespace lmw::test;

TEST(CommandLine, StartsWithTheProgramAndKeepsEmptyQuotedAndNonAsciiArguments) {
    const std::vector<std::wstring> arguments = sys::CommandLine();
    ASSERT_FALSE(arguments.empty());
    EXPECT_NE(arguments.front().find(L"sys_test"), std::wstring::npos);
    EXPECT_EQ(RunChildWithArguments(), kYes);
}

TEST(Debugger, IsSeenWhileItIsAttached) {
    EXPECT_EQ(RunChild(kReportDebugger), kNo);
    EXPECT_EQ(RunChildUnderDebugger(kReportDebugger), kYes);
}

// One platform tells an empty value from an absent variable by the last error only, so each is
// asked after the other.
TEST(Environment, AVariableIsDefinedWhateverItsValue) {
    const char* const name = "LMW_TEST_ENVIRONMENT_SWITCH";
    RemoveEnvironmentVariable(name);
    for (const char* value : {"1", "0", "", ""}) {
        EXPECT_FALSE(sys::IsEnvironmentVariableDefined(name));
        DefineEnvironmentVariable(name, value);
        EXPECT_FALSE(sys::IsEnvironmentVariableDefined("LMW_TEST_ABSENT"));
        EXPECT_TRUE(sys::IsEnvironmentVariableDefined(name)) << value;
        RemoveEnvironmentVariable(name);
    }
}

TEST(LastError, BelongsToItsThread) {
    sys::SetLastError(5);
    unsigned other_at_start = 5;
    unsigned other = 0;
    std::thread([&] {
        other_at_start = sys::LastError();
        sys::SetLastError(13);
        other = sys::LastError();
    }).join();
    EXPECT_EQ(other_at_start, 0U);
    EXPECT_EQ(other, 13U);

    sys::SetLastError(6);
    EXPECT_EQ(sys::LastError(), 6U);
    EXPECT_EQ(sys::LastError(), 6U) << "asking changes nothing";
}

// The texts themselves are the system's and differ with its version and language.
TEST(ErrorText, IsEmptyForUnknownCodesOnly) {
    EXPECT_NE(sys::SystemErrorText(2), L"");
    EXPECT_NE(sys::SystemErrorText(5), sys::SystemErrorText(2));
    for (const unsigned unknown : {2998U, 987654321U, UINT_MAX}) {  // 2998: of an absent module
        EXPECT_EQ(sys::SystemErrorText(unknown), L"") << unknown;
    }
    EXPECT_NE(sys::RuntimeErrorText(ENOENT), L"");
    EXPECT_NE(sys::RuntimeErrorText(ENOENT), sys::RuntimeErrorText(EACCES));
    for (const int unknown : {-1, 4711, INT_MAX, INT_MIN}) {
        EXPECT_EQ(sys::RuntimeErrorText(unknown), L"") << unknown;
    }
}

TEST(ReplacementFile, ReplacesOnlyWhereItMay) {
    const ScratchFolder folder;
    const auto put = [&](const std::string& content, sys::Existing existing) {
        sys::ReplacementFile file;
        EXPECT_EQ(file.Create(folder / "file"), 0U);
        EXPECT_EQ(file.File().WriteAt(0, content.data(), content.size()), 0U);
        const bool done = file.Commit(existing) == 0;
        EXPECT_EQ(file.IsInPlace(), done);
        return done;
    };
    EXPECT_TRUE(put("first", sys::Existing::kKeep));
    EXPECT_FALSE(put("second", sys::Existing::kKeep));
    EXPECT_EQ(folder.Read("file"), "first");
    EXPECT_TRUE(put("third", sys::Existing::kReplace));
    EXPECT_EQ(folder.Read("file"), "third");
    EXPECT_EQ(folder.Files().size(), 1U);
}

}  // namespace
