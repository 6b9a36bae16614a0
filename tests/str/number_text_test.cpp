#include "common/str/number_text.h"

#include "common/str/meta_convert.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberText, IsTheShortestText) {
    for (const auto& [value, text] : {std::pair{0.1, L"0.1"},
                                      {1e300, L"1e+300"},
                                      {-0.0, L"-0"},
                                      {123456.0, L"123456"},
                                      {1.7976931348623157e308, L"1.7976931348623157e+308"},
                                      {5e-324, L"5e-324"},
                                      {-kInfinity, L"-inf"}}) {
        EXPECT_EQ(str::DoubleText(value), text);
    }
}

TEST(NumberText, ReadsBackToTheSameBits) {  // property 2
    lmw::test::PropertyRandom random;
    for (int round = 0; round < 20000; ++round) {
        const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random.Engine()()));
        double parsed = 0.0;
        ASSERT_TRUE(str::ParseDouble(str::DoubleText(value), parsed).Succeeded());
        if (std::isnan(value)) {
            ASSERT_TRUE(std::isnan(parsed));
        } else {
            ASSERT_EQ(std::bit_cast<std::uint64_t>(parsed), std::bit_cast<std::uint64_t>(value));
        }
        ASSERT_TRUE(str::ParseDouble(str::DoubleNarrowText(value), parsed).Succeeded());
    }
}

TEST(NumberText, IsTheSameInEveryLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252", ""}) {
        std::setlocale(LC_ALL, locale);  // where it is not installed nothing changes
        double parsed = 0.0;
        EXPECT_EQ(str::DoubleText(1234.5), L"1234.5");
        EXPECT_TRUE(str::ParseDouble(L"1234.5", parsed).Succeeded());
        EXPECT_EQ(parsed, 1234.5);
        EXPECT_TRUE(str::ParseDouble(L"1234,5", parsed).Failed());
    }
    std::setlocale(LC_ALL, before.c_str());
}

constexpr std::uint32_t kInvalidChar = 20218;
constexpr std::uint32_t kOutOfRange = 20220;
constexpr std::uint32_t kOverflow = 20221;

TEST(NumberText, RefusesWhatIsNotANumberFromEndToEnd) {  // property 1
    struct Row {
        const wchar_t* text;
        std::uint32_t as_double;  // 0: accepted
        std::uint32_t as_int;
    };
    constexpr std::uint32_t kBad = kInvalidChar;
    // clang-format off
    const std::vector<Row> rows = {
        {L"", kBad, kBad},        {L" 1", kBad, kBad},      {L"1 ", kBad, kBad},
        {L"1x", kBad, kBad},      {L"+", kBad, kBad},       {L"+-1", kBad, kBad},
        {L"++1", kBad, kBad},     {L"0x10", kBad, kBad},    {L"\u0131", kBad, kBad},
        {L"\u0661", kBad, kBad},  // a digit, but not ASCII
        {L"1e5", 0, kBad},        {L"1.5", 0, kBad},        {L"0e999999999999", 0, kBad},
        {L"+12", 0, 0},           {L"-2147483648", 0, 0},
        {L"2147483648", 0, kOverflow},                      {L"-2147483649", 0, kOverflow},
        {L"1e309", kOverflow, kBad},                        {L"10000e305", kOverflow, kBad},
        {L"-1e99999999999999999999", kOverflow, kBad},
        {L"1e-400", kOutOfRange, kBad},                     {L"0.0001e-330", kOutOfRange, kBad},
        {L"1e-99999999999999999999", kOutOfRange, kBad},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(row.text)));
        double real = 4711.0;
        EXPECT_EQ(str::ParseDouble(std::wstring_view(row.text), real).MessageId(), row.as_double);
        EXPECT_EQ(real == 4711.0, row.as_double != 0);
        std::int32_t whole = 4711;
        EXPECT_EQ(str::ParseInt(row.text, whole).MessageId(), row.as_int);
        EXPECT_EQ(whole == 4711, row.as_int != 0);
    }
    const std::wstring many_digits = std::wstring(400, L'9') + L"e-5";
    const std::wstring many_zeros = L"0." + std::wstring(400, L'0') + L"1e5";
    double value = 1.0;
    EXPECT_EQ(str::ParseDouble(many_digits, value).MessageId(), kOverflow);
    EXPECT_EQ(str::ParseDouble(many_zeros, value).MessageId(), kOutOfRange);
    const gtl::status failure = str::ParseDouble("1.2.3", value);
    EXPECT_EQ(failure.Detail()->Arguments()[0], L"1.2.3");
    EXPECT_EQ(failure.Detail()->Arguments()[1], L"floating-point number");
}

TEST(NumberText, WholeNumbersCoverTheirTypesExactly) {
    std::uint64_t unsigned64 = 0;
    std::int64_t signed64 = 0;
    std::uint32_t unsigned32 = 0;
    EXPECT_TRUE(str::ParseUInt64(L"18446744073709551615", unsigned64).Succeeded());
    EXPECT_EQ(unsigned64, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(str::ParseUInt64(L"18446744073709551616", unsigned64).MessageId(), kOverflow);
    EXPECT_TRUE(str::ParseInt64(L"-9223372036854775808", signed64).Succeeded());
    EXPECT_EQ(signed64, std::numeric_limits<std::int64_t>::min());
    EXPECT_TRUE(str::ParseUInt(L"4294967295", unsigned32).Succeeded());
    EXPECT_EQ(unsigned32, 4294967295U);
    EXPECT_EQ(str::ParseUInt(L"-1", unsigned32).MessageId(), kInvalidChar);
}

template <class From, class To>
gtl::status Convert(const From& from, To& to) {
    return meta::MetaConvertSrcDestFmtString<From, To>::Convert(from, to,
                                                                meta::MetaFormatType::kKey, 0);
}

template <class Value>
void ExpectRoundTrip(Value value, const std::wstring& text) {
    std::wstring written;
    Value read{};
    EXPECT_TRUE(Convert(value, written).Succeeded());
    EXPECT_EQ(written, text);
    EXPECT_TRUE(Convert(text, read).Succeeded());
    EXPECT_EQ(read, value);
}

template <class Value>
void ExpectFailure(const std::wstring& text, Value untouched, std::uint32_t message_id) {
    Value value = untouched;
    EXPECT_EQ(Convert(text, value).MessageId(), message_id);
    EXPECT_EQ(value, untouched);
}

TEST(MetaConvert, ValuesRoundTripThroughTextAndFailuresLeaveThemAlone) {
    ExpectRoundTrip<int>(-2147483647 - 1, L"-2147483648");
    ExpectRoundTrip<double>(0.1 + 0.2, L"0.30000000000000004");
    ExpectRoundTrip<bool>(true, L"true");
    ExpectRoundTrip<bool>(false, L"false");
    bool from_number = false;
    EXPECT_TRUE(Convert(std::wstring(L"1"), from_number).Succeeded() && from_number);
    ExpectFailure<int>(L"12 ", 7, 20218U);
    ExpectFailure<int>(L"9999999999", 7, 20221U);
    ExpectFailure<double>(L"1.5.", 7.5, 20218U);
    ExpectFailure<bool>(L"TRUE", true, 20220U);
    ExpectFailure<bool>(L"", false, 20220U);
}

}  // namespace
