#include "common/str/meta_convert.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using meta::MetaConvertSrcDestFmtString;
using meta::MetaFormatType;

template <class Value>
void ExpectRoundTrip(Value value, const std::wstring& text) {
    std::wstring written;
    EXPECT_TRUE((MetaConvertSrcDestFmtString<Value, std::wstring>::Convert(value, written,
                                                                           MetaFormatType::kKey, 0)
                     .Succeeded()));
    EXPECT_EQ(written, text);
    Value read{};
    EXPECT_TRUE((MetaConvertSrcDestFmtString<std::wstring, Value>::Convert(text, read,
                                                                           MetaFormatType::kKey, 0)
                     .Succeeded()));
    EXPECT_EQ(read, value);
}

TEST(MetaConvert, ValuesRoundTripThroughText) {
    ExpectRoundTrip<int>(-2147483647 - 1, L"-2147483648");
    ExpectRoundTrip<double>(0.1 + 0.2, L"0.30000000000000004");
    ExpectRoundTrip<bool>(true, L"true");
    ExpectRoundTrip<bool>(false, L"false");
}

template <class Value>
std::uint32_t FailureOf(const std::wstring& text, Value untouched) {
    Value value = untouched;
    const auto failure = MetaConvertSrcDestFmtString<std::wstring, Value>::Convert(
        text, value, MetaFormatType::kDisplay, 0);
    EXPECT_EQ(value, untouched);
    return failure.MessageId();
}

TEST(MetaConvert, FailuresLeaveTheValueAlone) {
    EXPECT_EQ(FailureOf<int>(L"12 ", 7), 20218U);
    EXPECT_EQ(FailureOf<int>(L"9999999999", 7), 20221U);
    EXPECT_EQ(FailureOf<double>(L"1.5.", 7.5), 20218U);
    EXPECT_EQ(FailureOf<bool>(L"TRUE", true), 20220U);
    EXPECT_EQ(FailureOf<bool>(L"", false), 20220U);

    bool value = false;
    EXPECT_TRUE((MetaConvertSrcDestFmtString<std::wstring, bool>::Convert(L"1", value,
                                                                          MetaFormatType::kKey, 0)
                     .Succeeded()));
    EXPECT_TRUE(value);
}

}  // namespace
