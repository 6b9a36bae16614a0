#include "common/sys/command_line.h"
#include "common/sys/debugger.h"
#include "common/sys/environment.h"

#include "tests/support/environment.h"
#include "tests/sys/child_process.h"

#include <gtest/gtest.h>

#include <string>

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

}  // namespace
