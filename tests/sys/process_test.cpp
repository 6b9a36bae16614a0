#include "common/sys/command_line.h"
#include "common/sys/debugger.h"
#include "common/sys/environment.h"

#include "tests/support/environment.h"
#include "tests/sys/child_process.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace lmw::test;

TEST(CommandLine, StartsWithTheProgramItself) {
    const std::vector<std::wstring> arguments = sys::CommandLine();
    ASSERT_FALSE(arguments.empty());
    EXPECT_NE(arguments.front().find(L"sys_test"), std::wstring::npos);
}

TEST(CommandLine, KeepsEmptyQuotedAndNonAsciiArguments) {
    EXPECT_EQ(RunChildWithArguments(), kYes);
}

TEST(Debugger, IsSeenWhileItIsAttached) {
    EXPECT_EQ(RunChild(kReportDebugger), kNo);
    EXPECT_EQ(RunChildUnderDebugger(kReportDebugger), kYes);
}

TEST(Environment, AVariableIsDefinedWhateverItsValue) {
    const std::string name = "LMW_TEST_ENVIRONMENT_SWITCH";
    RemoveEnvironmentVariable(name);
    EXPECT_FALSE(sys::IsEnvironmentVariableDefined(name.c_str()));
    for (const char* value : {"1", "0", ""}) {
        SCOPED_TRACE(value);
        DefineEnvironmentVariable(name, value);
        EXPECT_TRUE(sys::IsEnvironmentVariableDefined(name.c_str()));
    }
    RemoveEnvironmentVariable(name);
    EXPECT_FALSE(sys::IsEnvironmentVariableDefined(name.c_str()));
}

TEST(Environment, AnAbsentVariableIsAbsentAfterAnEarlierError) {
    // The platform tells an empty value from an absent variable by the last error only.
    DefineEnvironmentVariable("LMW_TEST_EMPTY", "");
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(sys::IsEnvironmentVariableDefined("LMW_TEST_ABSENT"));
        EXPECT_TRUE(sys::IsEnvironmentVariableDefined("LMW_TEST_EMPTY"));
    }
    RemoveEnvironmentVariable("LMW_TEST_EMPTY");
}

}  // namespace
