#include "common/sys/last_error.h"
#include "common/system_error.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// Puts the folder of the stand-in "netmsg.dll" before the system's folders.
class NetworkMessages : public testing::Test {
 protected:
    void SetUp() override { ASSERT_NE(SetDllDirectoryW(LMW_NETMSG_FOLDER), FALSE); }
    void TearDown() override { SetDllDirectoryW(nullptr); }
};

TEST_F(NetworkMessages, TheModuleIsAskedBeforeTheSystem) {
    for (const unsigned code : {2100U, 2221U, 2999U}) {
        EXPECT_EQ(sys::SystemErrorText(code), L"Stand-in for " + std::to_wstring(code) + L"\r\n");
    }
}

TEST_F(NetworkMessages, TheModuleIsNotAskedForOtherCodes) {
    for (const unsigned code : {2099U, 3000U}) {
        EXPECT_EQ(sys::SystemErrorText(code).find(L"Stand-in"), std::wstring::npos) << code;
    }
}

TEST_F(NetworkMessages, TheSystemIsAskedForWhatTheModuleLacks) {
    constexpr unsigned kUserNameIsInvalid = 2202;  // in the system's own table
    EXPECT_NE(sys::SystemErrorText(kUserNameIsInvalid), L"");
    EXPECT_EQ(sys::SystemErrorText(kUserNameIsInvalid).find(L"Stand-in"), std::wstring::npos);
}

TEST_F(NetworkMessages, InsertsStayAsTheyAreAndTheNarrowTextIsTheFirstLine) {
    EXPECT_EQ(lmw::diag::impl::SysCodeAsString_(2102), L"Stand-in for 2102 %1\r\nsecond line\r\n");
    EXPECT_STREQ(LMWErrMsg(2102), "Stand-in for 2102 %1");
}

TEST(SystemErrorText, WithoutAModuleTheSystemAloneIsAsked) {
    EXPECT_EQ(sys::SystemErrorText(2221).find(L"Stand-in"), std::wstring::npos);
    EXPECT_EQ(sys::SystemErrorText(987654321), L"");
}

}  // namespace
