// The system's network messages: a stand-in for the module that holds them lies beside this
// program, where the system looks first.

#include "common/sys/last_error.h"
#include "common/system_error.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using sys::SystemErrorText;

TEST(NetworkMessages, TheModuleIsAskedBeforeTheSystem) {
    for (const unsigned code : {2100U, 2221U, 2999U}) {
        EXPECT_EQ(SystemErrorText(code), L"Stand-in for " + std::to_wstring(code) + L"\r\n");
    }
}

TEST(NetworkMessages, TheModuleIsNotAskedForOtherCodes) {
    for (const unsigned code : {2099U, 3000U}) {
        EXPECT_EQ(SystemErrorText(code).find(L"Stand-in"), std::wstring::npos) << code;
    }
}

TEST(NetworkMessages, TheSystemIsAskedForWhatTheModuleLacks) {
    EXPECT_NE(SystemErrorText(ERROR_NOT_CONNECTED), L"");
}

TEST(NetworkMessages, InsertsStayAsTheyAreAndTheNarrowTextIsTheFirstLine) {
    EXPECT_EQ(lmw::diag::impl::SysCodeAsString_(2102), L"Stand-in for 2102 %1\r\nsecond line\r\n");
    EXPECT_STREQ(LMWErrMsg(2102), "Stand-in for 2102 %1");
}

}  // namespace
