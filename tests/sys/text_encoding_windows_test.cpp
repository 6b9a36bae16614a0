#include "common/sys/text_encoding.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using sys::Narrow;
using sys::Widen;

constexpr UINT kWestern = 1252;

TEST(TextEncoding, NarrowTextIsInTheActiveCodePage) {
    if (GetACP() != kWestern) {
        GTEST_SKIP() << "expects code page 1252, the active one is " << GetACP();
    }
    EXPECT_EQ(Narrow(L"\u00E4 \u20AC \u2026"), "\xE4 \x80 \x85");
    EXPECT_EQ(Widen("\xE4 \x80 \x85"), L"\u00E4 \u20AC \u2026");
    EXPECT_EQ(Widen("\xC3\xA4"), L"\u00C3\u00A4") << "it is no UTF-8";
}

TEST(TextEncoding, WhatTheCodePageLacksBecomesAQuestionMarkNotALookAlike) {
    if (GetACP() != kWestern) {
        GTEST_SKIP() << "expects code page 1252, the active one is " << GetACP();
    }
    EXPECT_EQ(Narrow(L"[\u221E]"), "[?]") << "not the digit eight";
    EXPECT_EQ(Narrow(L"[\u0101]"), "[?]") << "not the letter without its accent";
    EXPECT_EQ(Narrow(L"[\U0001F600]"), "[??]") << "one for each half";
    EXPECT_EQ(Narrow(L"[\xD83D]"), "[?]") << "a lone surrogate";
}

}  // namespace
