#include "common/system_error.h"

#include "common/sys/last_error.h"
#include "common/sys/text_encoding.h"

#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using lmw::diag::impl::SysCodeAsString_;

// No system of ours numbers an error like this.
constexpr unsigned kUnknownCode = 0xDEADBEEFU;

TEST(SystemError, CodesHaveTheSystemsTextsElseTheHostsMessages) {
    using lmw::diag::impl::CrtCodeAsString_;
    EXPECT_EQ(SysCodeAsString_(2), sys::SystemErrorText(2));
    EXPECT_GT(SysCodeAsString_(2).size(), 8U);
    EXPECT_EQ(CrtCodeAsString_(2), sys::RuntimeErrorText(2));
    lmw::test::TestHost host;
    host.SetText(27550, L"all well");
    host.SetText(27505, L"what is %d or %u?");
    EXPECT_EQ(SysCodeAsString_(0), L"all well");
    EXPECT_EQ(CrtCodeAsString_(0), L"all well");
    EXPECT_STREQ(LMWErrMsg(0), "all well");
    EXPECT_EQ(SysCodeAsString_(kUnknownCode), L"what is 3735928559 or ?") << "too large for %d";
    EXPECT_EQ(CrtCodeAsString_(-5), L"what is -5 or ?");
    EXPECT_EQ(CrtCodeAsString_(987654), L"what is 987654 or ?");
}

TEST(SystemError, NarrowTextEndsAtTheFirstLineEnd) {
    lmw::test::TestHost host;
    for (const auto& [text, expected] : {std::pair{L"one\r\ntwo", "one"},
                                         {L"one\ntwo\r\n", "one"},
                                         {L"one\r", "one"},
                                         {L"\r\none", ""},
                                         {L"whole", "whole"}}) {
        host.SetText(27550, text);
        EXPECT_STREQ(LMWErrMsg(0), expected);
    }
    EXPECT_EQ(std::string(LMWErrMsg(2)).find_first_of("\r\n"), std::string::npos);
}

TEST(SystemError, NextNarrowTextOverwritesTheSharedBuffer) {
    const char* text = LMWErrMsg(0);
    const std::string first = text;
    EXPECT_EQ(LMWErrMsg(2), text);
    EXPECT_NE(text, first);
}

}  // namespace
