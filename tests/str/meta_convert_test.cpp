#include "common/str/meta_convert.h"

#include <gtest/gtest.h>

#include <string>

namespace {

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
    EXPECT_TRUE(Convert(std::wstring(L"1"), from_number).Succeeded());
    EXPECT_TRUE(from_number);
    ExpectFailure<int>(L"12 ", 7, 20218U);
    ExpectFailure<int>(L"9999999999", 7, 20221U);
    ExpectFailure<double>(L"1.5.", 7.5, 20218U);
    ExpectFailure<bool>(L"TRUE", true, 20220U);
    ExpectFailure<bool>(L"", false, 20220U);
}

}  // namespace
