#include "common/sys/text_encoding.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using sys::Narrow;
using sys::Widen;
using namespace std::string_literals;

TEST(TextEncoding, AsciiAndNulAreThemselvesOnEveryPlatform) {
    std::string narrow;
    std::wstring wide;
    for (int c = 0; c < 128; ++c) {
        narrow += static_cast<char>(c);
        wide += static_cast<wchar_t>(c);
    }
    EXPECT_EQ(Narrow(wide), narrow);
    EXPECT_EQ(Widen(narrow), wide);
    EXPECT_EQ(Narrow(L""), "");
    EXPECT_EQ(Widen(""), L"");
}

TEST(TextEncoding, TextsLongerThanTheSystemCanCountAreConvertedWhole) {
    // A character of several units stands across every likely border between two pieces.
    const std::wstring accented = L"\u00E4";
    const std::string accented_narrow = Narrow(accented);
    const std::size_t border = std::size_t{1} << 24U;
    std::wstring wide(border - 1, L'x');
    std::string narrow(border - 1, 'x');
    wide += accented + L"y";
    narrow += accented_narrow + "y";
    EXPECT_TRUE(Narrow(wide) == narrow);
    EXPECT_TRUE(Widen(narrow) == wide);

    std::wstring pair(border - 1, L'x');
    pair += L"\U0001F600y";
    EXPECT_TRUE(Narrow(pair) == std::string(border - 1, 'x') + Narrow(L"\U0001F600") + "y");
}

}  // namespace
