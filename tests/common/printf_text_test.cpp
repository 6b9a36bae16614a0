#include "common/printf_text.h"

#include "common/sys/text_encoding.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

namespace {

using lmw::diag::PrintfArgument;
using lmw::diag::PrintfText;

template <class... Arguments>
std::wstring Printed(std::wstring_view format, const Arguments&... arguments) {
    const std::array<PrintfArgument, sizeof...(Arguments)> packed = {arguments...};
    return PrintfText(format, packed);
}

TEST(PrintfText, TakesTextOfEitherKindForEveryTextConversion) {  // properties 1 and 2
    for (const wchar_t* format : {L"<%s>", L"<%S>", L"<%hs>", L"<%ls>", L"<%ws>"}) {
        EXPECT_EQ(Printed(format, L"wide"), L"<wide>");
        EXPECT_EQ(Printed(format, std::string("narrow")), L"<narrow>");
        EXPECT_EQ(Printed(format, std::string_view("narrow text").substr(0, 6)), L"<narrow>");
    }
    const std::wstring umlauts = L"B\u00F6schung";
    EXPECT_EQ(Printed(L"%s", sys::Narrow(umlauts)), umlauts);
}

TEST(PrintfText, ShowsWhatDoesNotFitItsConversionInItsNaturalForm) {
    EXPECT_EQ(Printed(L"%d|%x|%f|%c", L"text", "text", std::string("text"), L"text"),
              L"text|text|text|text");
    EXPECT_EQ(Printed(L"%s|%s|%s", -7, 3000000000U, std::int64_t{-5000000000}),
              L"-7|3000000000|-5000000000");
    EXPECT_EQ(Printed(L"%s|%d|%c", 0.1, 2.5, 2.5), L"0.1|2.5|2.5");
    EXPECT_EQ(Printed(L"%f|%.1f|%.0f", 3, -2, std::numeric_limits<std::uint64_t>::max()),
              L"3.000000|-2.0|18446744073709551616");
    EXPECT_EQ(Printed(L"%s%s", 'a', L'\u00E4'), L"a\u00E4");
    EXPECT_EQ(
        Printed(L"%s|%s", static_cast<const char*>(nullptr), static_cast<const wchar_t*>(nullptr)),
        L"(null)|(null)");
    EXPECT_EQ(Printed(L"[%s]", std::string_view()), L"[]");
}

// A length modifier that does not fit reads past the argument in a printf that trusts it.
TEST(PrintfText, IgnoresLengthModifiers) {
    const auto large = std::int64_t{1} << 40;
    for (const wchar_t* format : {L"%d", L"%hd", L"%hhd", L"%ld", L"%lld", L"%jd", L"%zd", L"%td",
                                  L"%I32d", L"%I64d", L"%Id", L"%wd"}) {
        EXPECT_EQ(Printed(format, large), L"1099511627776");
        EXPECT_EQ(Printed(format, std::int8_t{-3}), L"-3");
    }
    EXPECT_EQ(Printed(L"%Lf", 1.5L), L"1.500000");
}

TEST(PrintfText, ShowsTheTwosComplementOfANegativeIntegerInItsOwnSize) {  // property 3
    EXPECT_EQ(Printed(L"%x|%x|%x|%llx", std::int8_t{-1}, std::int16_t{-1}, std::int32_t{-1},
                      std::int64_t{-1}),
              L"ff|ffff|ffffffff|ffffffffffffffff");
    EXPECT_EQ(Printed(L"%u|%o", -1, std::int8_t{-1}), L"4294967295|377");
    EXPECT_EQ(Printed(L"%d|%d", std::numeric_limits<std::int64_t>::min(), 3000000000U),
              L"-9223372036854775808|3000000000");
}

TEST(PrintfText, KeepsPlaceholdersThatItCannotFill) {  // property 4
    EXPECT_EQ(Printed(L"%d and %5.2f"), L"%d and %5.2f");
    EXPECT_EQ(Printed(L"%d %d", 1), L"1 %d");
    EXPECT_EQ(Printed(L"%y %d", 1), L"%y 1");
    EXPECT_EQ(Printed(L"%*y %d", 1), L"%*y 1");
    EXPECT_EQ(Printed(L"100%"), L"100%");
    EXPECT_EQ(Printed(L"%-08.3l", 1), L"%-08.3l");
    EXPECT_EQ(Printed(L"%.", 1), L"%.");
    EXPECT_EQ(Printed(L"%d", 1, 2, L"more"), L"1");
    EXPECT_EQ(Printed(L"100%% %5% of %d", 3), L"100% % of 3");
    EXPECT_EQ(Printed(std::wstring_view(L"a\0%d", 4), 5), std::wstring(L"a\0005", 3));
    EXPECT_EQ(Printed(L"%s", L"%d %n %s"), L"%d %n %s");
}

TEST(PrintfText, CutsTextByPrecisionOnlyAndReadsNoFurther) {  // property 5
    const std::wstring text(1'000'000, L'x');
    EXPECT_EQ(Printed(L"%s%s", text, text).size(), 2'000'000U);
    EXPECT_EQ(Printed(L"%.5000s", text).size(), 5000U);
    const std::vector<char> unterminated = {'a', 'b', 'c'};
    EXPECT_EQ(Printed(L"%.3s|%.*s", unterminated.data(), 2, unterminated.data()), L"abc|ab");
    EXPECT_EQ(Printed(L"%.*s|%.s|%.0s", -1, L"abc", L"abc", L"abc"), L"abc||");
    EXPECT_EQ(Printed(L"%5s|%-5s|%*s|%*s", L"ab", L"ab", 4, "cd", -4, "cd"),
              L"   ab|ab   |  cd|cd  ");
}

TEST(PrintfText, BoundsWidthsAndPrecisionsOfNumbers) {
    EXPECT_EQ(Printed(L"%99999999999999999999d", 1).size(), 4096U);
    EXPECT_EQ(Printed(L"%.999999999d", 1).size(), 4096U);
    EXPECT_EQ(Printed(L"%.999999999f", 1.0).size(), 4098U);
    EXPECT_EQ(Printed(L"%*d", std::numeric_limits<std::int64_t>::min(), 1).size(), 4096U);
    EXPECT_EQ(Printed(L"%*d|%d", L"no width", 1, 2), L"1|2");
}

TEST(PrintfText, NeverWritesThroughAPointer) {  // property 6
    int count = -1;
    EXPECT_EQ(Printed(L"abc%n%d", &count, 5), L"abc5");
    EXPECT_EQ(count, -1);
}

TEST(PrintfText, ShowsPointersAlikeOnEveryPlatform) {
    EXPECT_EQ(Printed(L"%p|%p", reinterpret_cast<const void*>(std::uintptr_t{0xBEEF}), nullptr),
              L"0xbeef|0x0");
    EXPECT_EQ(Printed(L"%8p", reinterpret_cast<const void*>(std::uintptr_t{0xAB})), L"    0xab");
}

TEST(PrintfText, ShowsCharactersByTypeAndByNumber) {
    EXPECT_EQ(Printed(L"%c%C%lc%c", 'a', L'b', L'\u20AC', 100), L"ab\u20ACd");
    EXPECT_EQ(Printed(L"%3c|%-3c|", L'a', L'b'), L"  a|b  |");
    EXPECT_EQ(Printed(L"%c", 0x1F600), L"\U0001F600");
    EXPECT_EQ(Printed(L"%c%c", 0x110000, -1), L"\uFFFD\uFFFD");
    EXPECT_EQ(Printed(L"%d %d", 'a', L'\u20AC'), L"97 8364");
    EXPECT_EQ(Printed(L"%d %s", true, false), L"1 0");
}

TEST(PrintfText, ReplacesUndecodableNarrowText) {
    if (sys::Widen("\xFF") != L"\uFFFD") {
        GTEST_SKIP() << "every byte means something in this platform's encoding";
    }
    EXPECT_EQ(Printed(L"a%sb%c", "\xFF", '\xC3'), L"a\uFFFDb\uFFFD");
}

TEST(PrintfText, ShowsInfinitiesNansAndHexadecimalFloats) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Printed(L"%f|%+E|%05g|%G", infinity, infinity, -infinity, nan),
              L"inf|+INF| -inf|NAN");
    EXPECT_EQ(Printed(L"%a|%.1a|%A|%10a|%#.0a", 1.5, 1.5, 0.0, 1.0, 1.0),
              L"0x1.8p+0|0x1.8p+0|0X0P+0|    0x1p+0|0x1.p+0");
}

// The runtimes differ here, so these are literal: an octal number with "#" begins with a zero.
TEST(PrintfText, GivesAZeroItsDigitsByPrecisionAndFlag) {
    EXPECT_EQ(Printed(L"[%.0d][%.0x][%#.0x][%.0o][%#.0o][%#o][%#x]", 0, 0, 0, 0, 0, 0, 0),
              L"[][][][][0][0][0]");
}

// The C runtime's own narrow formatting is the oracle for numbers, whose format the test makes.
TEST(PrintfText, AgreesWithTheRuntimeOnNumbers) {
    // Through a pointer, since the compiler would complain about a format it cannot see.
    int (*const print)(char*, std::size_t, const char*, ...) = std::snprintf;
    lmw::test::PropertyRandom random;
    for (int round = 0; round < 20000; ++round) {
        std::string spec = "%";
        for (const char flag : {'-', '+', ' ', '#', '0'}) {
            if (random.Chance(0.25)) {
                spec += flag;
            }
        }
        spec += random.Chance(0.5) ? "" : std::to_string(random.Integer(1, 30));
        if (random.Chance(0.5)) {
            spec += '.';
            spec += std::to_string(random.Integer(0, 19));
        }
        std::array<char, 512> expected{};
        std::wstring actual;
        // The runtimes differ on flags that mean nothing for a conversion, which is undefined.
        if (random.Chance(0.5)) {
            const char conversion = "diuxXo"[random.Integer(0, 5)];
            const bool is_signed = conversion == 'd' || conversion == 'i';
            const int value = random.Chance(0.125)
                                  ? 0
                                  : random.Integer(std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()) >>
                                        random.Integer(0, 31);
            const bool no_prefix = is_signed || conversion == 'u' || value == 0;
            std::erase_if(spec, [&](char c) {
                return (no_prefix && c == '#') || (!is_signed && (c == '+' || c == ' '));
            });
            spec += conversion;
            print(expected.data(), expected.size(), spec.c_str(), value);
            actual = Printed(sys::Widen(spec), value);
        } else {
            spec += "feEgGF"[random.Integer(0, 5)];
            const double value = random.Chance(0.125) ? 0.0 : random.SignedLogUniform();
            print(expected.data(), expected.size(), spec.c_str(), value);
            actual = Printed(sys::Widen(spec), value);
        }
        ASSERT_EQ(actual, sys::Widen(expected.data())) << spec << " in round " << round;
    }
}

}  // namespace
