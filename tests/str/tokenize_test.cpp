#include "common/str/tokenize.h"

#include "tests/support/property_random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace {

using str::fmt::arg_type;
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

struct Row {
    std::string text;
    unsigned max_count;
    Tokens expected;
};

TEST(Tokenize, CutsClassifiesAndCountsInBothCharacterTypes) {
    const std::vector<Row> rows = {
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
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(TokenizeAs<std::string>(row.text, row.max_count), row.expected);
        EXPECT_EQ(TokenizeAs<std::wstring>(Wide(row.text), row.max_count), row.expected);
    }
}

TEST(Tokenize, ClassifiesEveryModifierWithEveryConversion) {
    // Conversion letters that are recognised after each modifier, with their types; all other
    // letters are removed.
    struct Recognised {
        const char* modifier;
        std::vector<std::pair<std::string, int>> conversions;
    };
    const std::vector<Recognised> rows = {
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
    for (const Recognised& row : rows) {
        for (char conversion = 'A'; conversion <= 'z'; ++conversion) {
            const std::string modifier = row.modifier;
            if (modifier.empty() && std::string("hlwI").find(conversion) != std::string::npos) {
                continue;  // a modifier, not a conversion
            }
            int type = kUntouched;
            for (const auto& [letters, its_type] : row.conversions) {
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
    SCOPED_TRACE(random.Trace());
    const std::string alphabet = "%%%%dsrlhwI3264.0- +#xEb";
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (int length = random.Integer(0, 12); length > 0; --length) {
            text += alphabet[static_cast<std::size_t>(
                random.Integer(0, static_cast<int>(alphabet.size()) - 1))];
        }
        text += '.';  // no unfinished placeholder, unless this one is its precision
        const Tokens once = TokenizeAs<std::string>(text, 5);
        const Tokens twice = TokenizeAs<std::string>(once.text, 5);
        ASSERT_EQ(twice.text, once.text) << text;
        ASSERT_EQ(twice.literals, once.literals) << text;
        ASSERT_EQ(twice.specs, std::vector<std::string>(once.specs.size(), "%s")) << text;
        ASSERT_EQ(TokenizeAs<std::wstring>(Wide(text), 5), once) << text;
    }
}

}  // namespace
