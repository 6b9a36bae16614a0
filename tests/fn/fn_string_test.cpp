#include "common/fn/fn_string.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace fn::string;

struct ParseRow {
    const wchar_t* text;
    const wchar_t* name;
    AttributePairs attributes;
    const wchar_t* serialized;  // null: the text itself
};

const ParseRow kParsed[] = {
    {L"Fn(a=1,b=g(c=2,d=3))", L"Fn", {{L"a", L"1"}, {L"b", L"g(c=2,d=3)"}}, nullptr},
    {L"Fn(5)", L"Fn", {{L"Value", L"5"}}, L"Fn(Value=5)"},
    {L"Fn()", L"Fn", {}, nullptr},
    {L"()", L"", {}, nullptr},
    {L"Fn(,)", L"Fn", {{L"Value", L""}, {L"Value", L""}}, L"Fn(Value=,Value=)"},
    {L" Fn ( a = 1 , b)",
     L" Fn ",
     {{L" a ", L" 1 "}, {L"Value", L" b"}},
     L" Fn ( a = 1 ,Value= b)"},
    {L"Fn(a=1) and more", L"Fn", {{L"a", L"1"}}, L"Fn(a=1)"},
    {L"Fn(a=b=c,=d)", L"Fn", {{L"a", L"b=c"}, {L"", L"d"}}, nullptr},
    {L"Fn(a=1,a=2)", L"Fn", {{L"a", L"1"}, {L"a", L"2"}}, nullptr},
    // By design: the first "=" cuts, also within a group.
    {L"Fn(g(c=2,d=3))", L"Fn", {{L"g(c", L"2,d=3)"}}, L"Fn(g\\(c=2\\,d=3\\))"},
    // Escapes count outside groups and are kept within them.
    {L"Fn(a=1\\,2,b=\\(,c=\\\\)", L"Fn", {{L"a", L"1,2"}, {L"b", L"("}, {L"c", L"\\"}}, nullptr},
    {L"Fn(a=g(b=1\\,2\\)))", L"Fn", {{L"a", L"g(b=1\\,2\\))"}}, nullptr},
    {L"Fn(a=\\n)", L"Fn", {{L"a", L"n"}}, L"Fn(a=n)"},
    {L"Fn(a\\=b)", L"Fn", {{L"a", L"b"}}, L"Fn(a=b)"},
    {L"Fn(a=\\)", L"Fn", {{L"a", L"\\"}}, L"Fn(a=\\\\)"},
    // Parentheses that are not balanced hold nothing together.
    {L"Fn(a=(1,b=2)", L"Fn", {{L"a", L"(1"}, {L"b", L"2"}}, L"Fn(a=\\(1,b=2)"},
    {L"Fn(a=1),b=2)", L"Fn", {{L"a", L"1)"}, {L"b", L"2"}}, L"Fn(a=1\\),b=2)"},
    {L"Fn(a=((1,2),b=3)", L"Fn", {{L"a", L"((1,2)"}, {L"b", L"3"}}, L"Fn(a=\\((1,2),b=3)"},
};

TEST(FunctionText, IsTakenApartAndPutTogetherAgain) {
    for (const ParseRow& row : kParsed) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.text)));
        std::wstring name = L"before";
        AttributePairs attributes = {{L"before", L""}};
        ASSERT_TRUE(Parse(row.text, name, attributes).Succeeded());
        EXPECT_EQ(name, row.name);
        EXPECT_EQ(attributes, row.attributes);
        EXPECT_EQ(Serialize(name, attributes),
                  row.serialized != nullptr ? row.serialized : row.text);
    }
}

TEST(FunctionText, WithoutParenthesesInOrderIsMalformed) {
    for (const wchar_t* text : {L"", L"Fn", L"Fn)", L"Fn(", L")Fn("}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        std::wstring name = L"before";
        AttributePairs attributes = {{L"before", L""}};
        EXPECT_EQ(Parse(text, name, attributes).MessageId(), 20547U);
        EXPECT_TRUE(attributes.empty());
        EXPECT_EQ(name, L"before");
        EXPECT_EQ(Verify(text).MessageId(), 20547U);
        EXPECT_EQ(GetFunctionAttributeValue(text, L"before"), L"");
        EXPECT_EQ(RemoveFunctionAttribute(text, L"a"), text);
        EXPECT_EQ(InsertFunctionAttributeBefore(text, L"a", L"b", L"1"), text);
    }
}

// Any name without "(", any keys without "=", any values: texts full of what the form treats
// specially.
TEST(FunctionText, EverythingSerializedParsesBack) {
    lmw::test::PropertyRandom random;
    for (int round = 0; round < 20000; ++round) {
        const std::wstring name = random.Text(std::wstring(L"ab)\\,= "), 4);
        AttributePairs attributes;
        for (int k = random.Integer(0, 3); k > 0; --k) {
            attributes.emplace_back(random.Text(std::wstring(L"ab((()))\\\\,"), 6),
                                    random.Text(std::wstring(L"ab((()))\\\\,="), 14));
        }
        if (!attributes.empty() && random.Chance(0.3)) {  // nesting
            attributes.back().second = Serialize(random.Text(std::wstring(L"gh"), 2), attributes);
        }
        const std::wstring serialized = Serialize(name, attributes);
        std::wstring read_name;
        AttributePairs read;
        ASSERT_TRUE(Parse(serialized, read_name, read).Succeeded());
        ASSERT_EQ(read_name, name) << testing::PrintToString(serialized);
        ASSERT_EQ(read, attributes) << testing::PrintToString(serialized);
    }
}

// A scan for each parenthesis' partner would take minutes.
TEST(FunctionText, OfAMillionOpenParenthesesTakesLinearTime) {
    const std::wstring open(1000000, L'(');
    std::wstring name;
    AttributePairs attributes;
    ASSERT_TRUE(Parse(L"Fn(a=" + open + L")", name, attributes).Succeeded());
    ASSERT_EQ(attributes.size(), 1U);
    EXPECT_EQ(attributes[0].second.size(), open.size());
    EXPECT_EQ(Serialize(name, attributes).size(), 2 * open.size() + 6);
}

TEST(FunctionText, MayBeAValueOfWhatItReplaces) {
    std::wstring name;
    AttributePairs attributes = {{L"a", L"Inner(b=2)"}};
    ASSERT_TRUE(Parse(attributes[0].second, name, attributes).Succeeded());
    EXPECT_EQ(name, L"Inner");
    EXPECT_EQ(attributes, (AttributePairs{{L"b", L"2"}}));
}

TEST(FunctionText, IsEditedByKey) {
    const std::wstring text = L"Fn(a=1,b=2,a=g(x=3,y=4)) rest";
    EXPECT_EQ(GetFunctionAttributeValue(text, L"a"), L"1");
    EXPECT_EQ(GetFunctionAttributeValue(text, L"A"), L"");
    EXPECT_EQ(RemoveFunctionAttribute(text, L"a"), L"Fn(b=2)");
    EXPECT_EQ(RemoveFunctionAttribute(text, L"c"), L"Fn(a=1,b=2,a=g(x=3,y=4))");
    EXPECT_EQ(InsertFunctionAttributeBefore(text, L"a", L"n", L"x,y"),
              L"Fn(n=x\\,y,a=1,b=2,a=g(x=3,y=4))");
    EXPECT_EQ(InsertFunctionAttributeBefore(L"Fn()", L"a", L"n", L"0"), L"Fn(n=0)");
    EXPECT_EQ(InsertFunctionAttributeBefore(L"Fn(a=1)", L"c", L"n", L"0"), L"Fn(a=1,n=0)");
}

}  // namespace
