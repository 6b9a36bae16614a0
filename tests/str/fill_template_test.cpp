#include "common/str/fill_template.h"

#include "common/str/number_text.h"
#include "common/str/tokenize.h"

#include "tests/support/property_random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>
#include <tuple>
#include <vector>

namespace {

using str::fmt::arg_type;
using str::fmt::Escape;
using str::fmt::FillTemplate;
using str::fmt::tokenize;

std::wstring Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

struct Tokens {
    std::string text;
    unsigned literals = 0;
    std::vector<std::string> specs;
    std::vector<int> types;

    bool operator==(const Tokens&) const = default;
};

void PrintTo(const Tokens& tokens, std::ostream* out) {
    *out << "\"" << tokens.text << "\" " << tokens.literals << " "
         << testing::PrintToString(tokens.specs) << testing::PrintToString(tokens.types);
}

constexpr int kUntouched = -1;

template <class String>
Tokens TokenizeAs(String text, unsigned max_count) {
    std::vector<String> specs(max_count);
    std::vector<arg_type> types(max_count, static_cast<arg_type>(kUntouched));
    Tokens tokens;
    tokens.literals = tokenize(text, max_count, specs.data(), types.data());
    tokens.text.assign(text.begin(), text.end());
    for (unsigned k = 0; k < max_count && types[k] != static_cast<arg_type>(kUntouched); ++k) {
        tokens.specs.emplace_back(specs[k].begin(), specs[k].end());
        tokens.types.push_back(static_cast<int>(types[k]));
    }
    return tokens;
}

TEST(Tokenize, CutsClassifiesAndCountsInBothCharacterTypes) {
    const std::tuple<const char*, unsigned, Tokens> rows[] = {
        {"", 5, {"", 0, {}, {}}},
        {"100%% done", 5, {"100%% done", 9, {}, {}}},
        {"%s and %d", 5, {"%s and %s", 5, {"%s", "%d"}, {2, 5}}},
        {"%.2r", 5, {"%s", 0, {"%.2f"}, {10}}},
        {"%-+d", 5, {"d", 1, {}, {}}},          // the second flag is an unrecognised conversion
        {"%00d", 5, {"%s", 0, {"%00d"}, {5}}},  // the second 0 is a width
        {"%*d", 5, {"d", 1, {}, {}}},           // "*" is no width
        {"%lld", 5, {"d", 1, {}, {}}},          // one modifier only
        {"%l%s", 5, {"s", 1, {}, {}}},          // "%" is no conversion after a modifier
        {"%I6d", 5, {"d", 1, {}, {}}},          // half of "64" is a conversion
        {"%s %s", 1, {"%s ", 1, {"%s"}, {2}}},  // beyond the maximum
        {"%d%E%d", 1, {"%s", 0, {"%d"}, {5}}},
        {"%s", 0, {"", 0, {}, {}}},
        {"%lf%E%F%a%n|", 5, {"|", 1, {}, {}}},
        {"%lr%wd%hf%lp%hb|", 5, {"|", 1, {}, {}}},
        {"abc%", 5, {"abc%", 3, {}, {}}},  // unfinished: stays, is not counted
        {"a%-5.2", 5, {"a%-5.2", 1, {}, {}}},
        {"a%I64", 5, {"a%I64", 1, {}, {}}},
        {"a%l", 5, {"a%l", 1, {}, {}}},
        {"%%%d%%", 5, {"%%%s%%", 2, {"%d"}, {5}}},
        {"%#10.4gx", 5, {"%sx", 1, {"%#10.4g"}, {10}}},
        {"%.s", 5, {"%s", 0, {"%.s"}, {2}}},
    };
    for (const auto& [text, max_count, expected] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(TokenizeAs<std::string>(text, max_count), expected);
        EXPECT_EQ(TokenizeAs<std::wstring>(Wide(text), max_count), expected);
    }
}

TEST(Tokenize, ClassifiesEveryModifierWithEveryConversion) {
    // Conversion letters that are recognised after each modifier, with their types; all other
    // letters are removed.
    const std::pair<std::string, std::vector<std::pair<std::string, int>>> rows[] = {
        // clang-format off
        {"", {{"c", 0}, {"C", 1}, {"s", 2}, {"S", 3}, {"di", 5}, {"Xoux", 8},
             {"Gefgr", 10}, {"p", 11}, {"b", 12}}},
        // clang-format on
        {"h", {{"cC", 0}, {"sS", 2}, {"di", 4}, {"Xoux", 7}}},
        {"l", {{"cC", 1}, {"sS", 3}, {"di", 6}, {"Xoux", 9}}},
        {"w", {{"cC", 1}, {"sS", 3}}},
        {"I", {{"di", 5}, {"Xoux", 8}}},
        {"I32", {{"di", 5}, {"Xoux", 8}}},
        {"I64", {{"di", 6}, {"Xoux", 9}}},
    };
    for (const auto& [modifier, conversions] : rows) {
        for (char conversion = 'A'; conversion <= 'z'; ++conversion) {
            if (modifier.empty() && std::string("hlwI").find(conversion) != std::string::npos) {
                continue;  // a modifier, not a conversion
            }
            int type = kUntouched;
            for (const auto& [letters, its_type] : conversions) {
                type = letters.find(conversion) != std::string::npos ? its_type : type;
            }
            const std::string stored = "%" + modifier + (conversion == 'r' ? 'f' : conversion);
            const Tokens expected =
                type == kUntouched ? Tokens{"<>", 2, {}, {}} : Tokens{"<%s>", 2, {stored}, {type}};
            const std::string text = "<%" + modifier + conversion + ">";
            EXPECT_EQ(TokenizeAs<std::string>(text, 5), expected) << text;
        }
    }
}

TEST(Tokenize, KeepsTextsOutsideTheBasicPlane) {
    std::wstring text = L"\U0001F600%d\U0001F600";
    const std::size_t length = text.size();
    std::array<std::wstring, 1> specs;
    std::array<arg_type, 1> types{};
    EXPECT_EQ(tokenize(text, 1, specs.data(), types.data()), length - 2);
    EXPECT_EQ(text, L"\U0001F600%s\U0001F600");
}

// Property 4 of the header, and that a second run finds exactly the "%s" that the first one left.
TEST(Tokenize, LiteralCountIsWhatPrintingLeavesOnRandomTemplates) {
    lmw::test::PropertyRandom random;
    const std::string alphabet = "%%%%dsrlhwI3264.0- +#xEb";
    for (int round = 0; round < 20000; ++round) {
        std::string text = random.Text(alphabet, 12);
        text += '.';  // no unfinished placeholder, unless this one is its precision
        const Tokens once = TokenizeAs<std::string>(text, 5);
        const Tokens twice = TokenizeAs<std::string>(once.text, 5);
        ASSERT_EQ(twice.text, once.text) << text;
        ASSERT_EQ(twice.literals, once.literals) << text;
        ASSERT_EQ(twice.specs, std::vector<std::string>(once.specs.size(), "%s")) << text;
        ASSERT_EQ(TokenizeAs<std::wstring>(Wide(text), 5), once) << text;
    }
}

std::wstring Fill(const std::wstring& text, const std::vector<std::wstring>& arguments) {
    return FillTemplate(text, arguments);
}

TEST(FillTemplate, PutsTextsUnderWidthAndPrecision) {
    const wchar_t* const no_half_pairs = sizeof(wchar_t) == 2 ? L"[]" : L"[\U0001F600]";
    const std::tuple<const wchar_t*, std::vector<std::wstring>, const wchar_t*> rows[] = {
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
    for (const auto& [text, arguments, expected] : rows) {
        EXPECT_EQ(Fill(text, arguments), expected) << text;
    }
}

TEST(FillTemplate, FormatsNumbersAndInsertsOtherTextsAsTheyAre) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*> rows[] = {
        {L"%d", L"abc", L"abc"},
        {L"%5d", L"", L""},
        {L"%5hd", L"40000", L"40000"},  // not a 16-bit number: inserted, not padded
        {L"%6hd", L"30000", L" 30000"},
        {L"%I64d", L"-9223372036854775808", L"-9223372036854775808"},
        {L"%x", L"-1", L"-1"},
        {L"%+d", L"+7", L"+7"},
        {L"%d", L" 7", L" 7"},
        {L"%.3f", L"0.0005", L"0.001"},  // the double nearest to 0.0005 lies above it
        {L"%.2r", L"2.5", L"2.50"},
        {L"%08.2f", L"-3.14159", L"-0003.14"},
        {L"%05f", L"inf", L"  inf"},
        {L"%#g", L"100000", L"100000."},
        {L"%#g", L"1e6", L"1.00000e+06"},
        {L"%#.0f", L"3", L"3."},
        {L"%#.0e", L"3", L"3.e+00"},
        {L"%f", L"1,5", L"1,5"},
    };
    for (const auto& [text, argument, expected] : rows) {
        EXPECT_EQ(Fill(text, {argument}), expected) << text << L" of " << argument;
    }
}

// The formats are the test's own, made of the pieces below.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

// The C library, in the C locale, is the oracle for everything the two have in common.
TEST(FillTemplate, AgreesWithTheCLibraryOnRandomNumbers) {
    lmw::test::PropertyRandom random;
    const std::string flags = "# +-0";
    for (int round = 0; round < 20000; ++round) {
        std::string spec = "%";
        if (random.Chance(0.6)) {
            spec += random.Pick(flags);
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
