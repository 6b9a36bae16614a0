#include "common/sys/text_encoding.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using sys::Narrow;
using sys::Widen;

TEST(TextEncoding, NarrowTextIsUtf8) {
    EXPECT_EQ(Narrow(L"\xE4\U0001F600"), "\xC3\xA4\xF0\x9F\x98\x80");
    EXPECT_EQ(Widen("\xC3\xA4\xF0\x9F\x98\x80\xC3"), L"\xE4\U0001F600\xFFFD");
}

TEST(TextEncoding, WideValuesThatAreNoCharactersBecomeReplacements) {
    const std::wstring wide = {L'a', wchar_t{0xD83D}, wchar_t{0xDE00}, wchar_t{0x110000}, L'z'};
    EXPECT_EQ(Narrow(wide), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz");
}

}  // namespace
