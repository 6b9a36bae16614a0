#include "common/sys/text_encoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using sys::Narrow;
using sys::Widen;

TEST(TextEncoding, NarrowTextIsUtf8) {
    struct Row {
        std::string narrow;
        std::wstring wide;
    };
    // The first and last character of each length, and the neighbours of the surrogates.
    const std::vector<Row> rows = {
        {"\x7F", L"\x7F"},
        {"\xC2\x80", L"\x80"},
        {"\xDF\xBF", L"\x7FF"},
        {"\xE0\xA0\x80", L"\x800"},
        {"\xED\x9F\xBF", L"\xD7FF"},
        {"\xEE\x80\x80", L"\xE000"},
        {"\xEF\xBF\xBF", L"\xFFFF"},
        {"\xF0\x90\x80\x80", L"\x10000"},
        {"\xF0\x9F\x98\x80", L"\x1F600"},
        {"\xF4\x8F\xBF\xBF", L"\x10FFFF"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.narrow);
        EXPECT_EQ(Narrow(row.wide), row.narrow);
        EXPECT_EQ(Widen(row.narrow), row.wide);
    }
}

TEST(TextEncoding, IllFormedBytesBecomeOneReplacementForEachSequence) {
    struct Row {
        std::string reason;
        std::string narrow;
        std::wstring wide;
    };
    const std::vector<Row> rows = {
        {"lone continuation byte", "a\x80z", L"a\xFFFDz"},
        {"two of them", "a\xBF\x80z", L"a\xFFFD\xFFFDz"},
        {"lead byte at the end", "a\xC3", L"a\xFFFD"},
        {"lead byte before ASCII", "\xC3(", L"\xFFFD("},
        {"two of three bytes at the end", "\xE2\x82", L"\xFFFD"},
        {"two of three bytes before ASCII", "\xE2\x82(", L"\xFFFD("},
        {"three of four bytes before a lead byte", "\xF0\x9F\x98\xC3\xA4", L"\xFFFD\xE4"},
        {"overlong form of two bytes", "\xC0\x80", L"\xFFFD\xFFFD"},
        {"overlong form of three bytes", "\xE0\x80\x80", L"\xFFFD\xFFFD\xFFFD"},
        {"overlong form of four bytes", "\xF0\x80\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"surrogate", "\xED\xA0\x80", L"\xFFFD\xFFFD\xFFFD"},
        {"above the last character", "\xF4\x90\x80\x80", L"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"bytes that never occur", "\xF5\xFE\xFF", L"\xFFFD\xFFFD\xFFFD"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_EQ(Widen(row.narrow), row.wide);
    }
}

TEST(TextEncoding, WideValuesThatAreNoCharactersBecomeReplacements) {
    const std::wstring wide = {L'a', wchar_t{0xD83D}, wchar_t{0xDE00}, wchar_t{0x110000}, L'z'};
    EXPECT_EQ(Narrow(wide), "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz");
}

}  // namespace
