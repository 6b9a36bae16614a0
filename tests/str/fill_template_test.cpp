#include "common/str/fill_template.h"

#include "common/str/number_text.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using str::fmt::Escape;
using str::fmt::FillTemplate;

std::wstring Fill(const std::wstring& text, const std::vector<std::wstring>& arguments) {
    return FillTemplate(text, arguments);
}

TEST(FillTemplate, PutsTextsUnderWidthAndPrecision) {
    struct Row {
        const wchar_t* text;
        std::vector<std::wstring> arguments;
        const wchar_t* expected;
    };
    const wchar_t* const no_half_pairs = sizeof(wchar_t) == 2 ? L"[]" : L"[\U0001F600]";
    const std::vector<Row> rows = {
        {L"%s and %s", {L"a", L"b"}, L"a and b"},
        {L"%s and %s", {L"a"}, L"a and "},             // property 3
        {L"%s", {L"a", L"b"}, L"a"},                   // property 3
        {L"100%% of %s", {L"%s%n"}, L"100% of %s%n"},  // property 4
        {L"[%5s][%-5s][%.2s]", {L"abc", L"abc", L"abc"}, L"[  abc][abc  ][ab]"},
        {L"[%5.1s]", {L"abc"}, L"[    a]"},
        {L"[%3c][%-3b][%3p]", {L"x", L"yes", L"0"}, L"[  x][yes][  0]"},
        {L"[%.3b]", {L"true"}, L"[true]"},  // precision belongs to texts only
        {L"[%.1s]", {L"\U0001F600x"}, no_half_pairs},
        {L"%s%s%s%s%s%s", {L"1", L"2", L"3", L"4", L"5", L"6"}, L"12345"},
        {L"", {L"a"}, L""},
        {L"%s, %l", {L"a", L"b"}, L""},  // property 5
        {L"%", {}, L""},
        {L"50%s%", {L"!"}, L""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Fill(row.text, row.arguments), row.expected) << row.text;
    }
}

TEST(FillTemplate, FormatsNumbersAndInsertsOtherTextsAsTheyAre) {
    struct Row {
        const wchar_t* text;
        const wchar_t* argument;
        const wchar_t* expected;
    };
    const std::vector<Row> rows = {
        {L"%d", L"abc", L"abc"},
        {L"%5d", L"", L""},
        {L"%d", L"2147483648", L"2147483648"},
        {L"%5hd", L"40000", L"40000"},  // not a 16-bit number: inserted, not padded
        {L"%6hd", L"30000", L" 30000"},
        {L"%I64d", L"-9223372036854775808", L"-9223372036854775808"},
        {L"%x", L"-1", L"-1"},
        {L"%#X", L"255", L"0XFF"},
        {L"%#o", L"8", L"010"},
        {L"%+d", L"+7", L"+7"},
        {L"%d", L" 7", L" 7"},
        {L"%.3f", L"0.0005", L"0.001"},  // the double nearest to 0.0005 lies above it
        {L"%.2r", L"2.5", L"2.50"},
        {L"%08.2f", L"-3.14159", L"-0003.14"},
        {L"%05f", L"inf", L"  inf"},
        {L"%G", L"1e300", L"1E+300"},
        {L"%#g", L"100000", L"100000."},
        {L"%#g", L"1e6", L"1.00000e+06"},
        {L"%#.0f", L"3", L"3."},
        {L"%#.0e", L"3", L"3.e+00"},
        {L"%f", L"1,5", L"1,5"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Fill(row.text, {row.argument}), row.expected)
            << row.text << L" of " << row.argument;
    }
}

// The formats are the test's own, made of the pieces below.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

// The C library, in the C locale, is the oracle for everything the two have in common.
TEST(FillTemplate, AgreesWithTheCLibraryOnRandomNumbers) {
    lmw::test::PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    const std::string flags = "# +-0";
    for (int round = 0; round < 20000; ++round) {
        std::string spec = "%";
        if (random.Chance(0.6)) {
            spec += flags[static_cast<std::size_t>(random.Integer(0, 4))];
        }
        if (random.Chance(0.5)) {
            spec += std::to_string(random.Integer(1, 30));
        }
        if (random.Chance(0.5)) {
            spec += '.';
            spec += std::to_string(random.Integer(0, 20));
        }
        std::array<char, 512> expected{};
        std::wstring argument;
        // Flags that the C standard leaves undefined for a conversion are left out of the
        // comparison.
        const bool alternative = spec.size() > 1 && spec[1] == '#';
        if (random.Chance(0.5)) {
            spec += "efgG"[random.Integer(0, 3)];
            const double value = random.Chance(0.1) ? 0.0 : random.SignedLogUniform(1e-30, 1e30);
            argument = str::DoubleText(value);
            std::snprintf(expected.data(), expected.size(), spec.c_str(), value);
        } else {
            spec += (alternative ? "oxX" : "doxXui")[random.Integer(0, alternative ? 2 : 5)];
            const int value =
                random.Integer(0, 1) == 0 ? random.Integer(0, 20) : random.Integer(0, 2147483647);
            argument = std::to_wstring(value);
            const bool is_signed = spec.back() == 'd' || spec.back() == 'i';
            if (!is_signed && (spec[1] == '+' || spec[1] == ' ')) {
                continue;
            }
            std::snprintf(expected.data(), expected.size(), spec.c_str(), value);
        }
        const std::string narrow = expected.data();
        ASSERT_EQ(Fill(std::wstring(spec.begin(), spec.end()), {argument}),
                  std::wstring(narrow.begin(), narrow.end()))
            << spec;
    }
}

#pragma GCC diagnostic pop

TEST(FillTemplate, HostileTemplatesAndLongArgumentsAreHarmless) {
    EXPECT_EQ(Fill(L"%999999999999d", {L"1"}).size(), str::fmt::kMaxFieldWidth);
    EXPECT_EQ(Fill(L"%.999999999f", {L"1"}).size(), str::fmt::kMaxFieldWidth + 2);
    EXPECT_EQ(Fill(L"%n%n%*s%s", {L"a"}), L"sa");
    EXPECT_EQ(Fill(L"%d", {std::wstring(1'000'000, L'9')}).size(), 1'000'000U);
}

TEST(Escape, IsUndoneByFilling) {
    for (const std::wstring text : {L"", L"%", L"%%", L"100%", L"%s%d", L"a\U0001F600%"}) {
        EXPECT_EQ(Fill(Escape(text), {L"x"}), text);
    }
}

}  // namespace
