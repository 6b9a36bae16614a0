#include "common/sys/text_encoding.h"

#include "common/sys/utf8.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <tuple>

namespace {

using namespace sys;

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

std::wstring Units(std::initializer_list<unsigned> codes) {
    std::wstring text;
    for (const unsigned code : codes) {
        text += static_cast<wchar_t>(code);
    }
    return text;
}

TEST(Utf8, EveryCharacterComesBack) {
    for (unsigned c = 0; c <= 0x10FFFF; c += c < 0x3000 ? 1 : 61) {
        if (c >= 0xD800 && c <= 0xDFFF) {
            continue;
        }
        const std::wstring text = sizeof(wchar_t) == 2 && c >= 0x10000
                                      ? Units({'a', 0xD7C0 + (c >> 10), 0xDC00 + (c & 0x3FF)})
                                      : Units({'a', c});
        const std::string bytes = Utf8FromWide(text, LoosePairs::kReplace);
        ASSERT_TRUE(IsUtf8(bytes)) << c;
        ASSERT_EQ(WideFromUtf8(bytes), text) << c;
    }
    EXPECT_EQ(Utf8FromWide(L"\x7F\x80\x7FF\x800\xFFFF\U00010000\U0010FFFF", LoosePairs::kReplace),
              "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf8, PairsAreJoinedOrReplacedAndLoneHalvesReplaced) {
    const std::string replaced = "\xEF\xBF\xBD";
    const std::string joined = "\xF0\x9F\x98\x80";
    const std::wstring pair = Units({0xD83D, 0xDE00});
    EXPECT_EQ(Utf8FromWide(pair, LoosePairs::kJoin), joined);
    EXPECT_EQ(Utf8FromWide(pair, LoosePairs::kReplace),
              sizeof(wchar_t) == 2 ? joined : replaced + replaced);
    for (const LoosePairs pairs : {LoosePairs::kJoin, LoosePairs::kReplace}) {
        EXPECT_EQ(Utf8FromWide(Units({0xD83D, 'x', 0xDE00, 0xDE00, 0xD83D}), pairs),
                  replaced + "x" + replaced + replaced + replaced);
    }
    if (sizeof(wchar_t) > 2) {
        EXPECT_EQ(Utf8FromWide(Units({0x110000, 0xFFFFFFFF}), LoosePairs::kJoin),
                  replaced + replaced);
    }
}

TEST(Utf8, IllFormedSequencesEndBeforeTheByteThatCannotBelong) {
    const std::tuple<const char*, std::string, std::wstring> rows[] = {
        {"lone continuation bytes", "a\xBF\x80z", L"a\xFFFD\xFFFDz"},
        {"lead byte at the end", "a\xC3", L"a\xFFFD"},
        {"lead byte before ASCII", "\xC3(", L"\xFFFD("},
        {"two of three bytes", "\xE2\x82(\xE2\x82", L"\xFFFD(\xFFFD"},
        {"three of four bytes before a lead byte", "\xF0\x9F\x98\xC3\xA4", L"\xFFFD\xE4"},
        {"overlong form of two bytes", "\xC0\x80", L"\xFFFD\xFFFD"},
        {"overlong form of three bytes", "\xE0\x80\x80", L"\xFFFD\xFFFD\xFFFD"},
        {"overlong form of four bytes", "\xF0\x80\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"surrogate", "\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD"},
        {"above the last character", "\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"bytes that never occur", "\xF5\xFE\xFF", L"\xFFFD\xFFFD\xFFFD"},
    };
    for (const auto& [reason, bytes, wide] : rows) {
        SCOPED_TRACE(reason);
        EXPECT_FALSE(IsUtf8(bytes));
        EXPECT_EQ(WideFromUtf8(bytes), wide);
    }
}

}  // namespace
