#include "common/math/tail_type.h"

#include "common/math/tolerance.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using math::algorithm::Tolerance;
using math::fn::TailType;

TEST(TailType, StoresReservedDoublesAndReadsItsOwnText) {
    struct Row {
        TailType tail;
        double value;
        const wchar_t* text;
    };
    const Row rows[] = {
        {TailType(), 0.0, L"0"},
        {TailType::None(), 1.7976931348623157e308, L"None"},
        {TailType::Calc(), 1.1e308, L"Calc"},
        {TailType::Cycle(), -1.7976931348623157e308, L"Cycle"},
        {TailType::Slope(-2.5), -2.5, L"-2.5"},
        {TailType::Slope(1.1e308), 1.1e308, L"Calc"},  // a slope of a reserved value is that tail
        {TailType::Slope(-1.1e308), -1.1e308, L"-1.1e+308"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.tail.value, row.value);
        EXPECT_EQ(str::as_wstring(row.tail), row.text);
        TailType read = TailType::Slope(77.0);
        EXPECT_TRUE(str::from_wstring(row.text, read).Succeeded());
        EXPECT_EQ(read, row.tail);
    }
    EXPECT_EQ(TailType(), TailType::Slope(0.0));
    EXPECT_NE(TailType::Calc(), TailType::Slope(std::nextafter(1.1e308, 0.0)));
}

TEST(TailType, ReadsWordsOnlyInTheirOwnCaseAndElseNumbers) {
    for (const wchar_t* text : {L"none", L"CALC", L"cycle", L"Calc ", L"", L"1.5x"}) {
        TailType tail = TailType::Slope(77.0);
        EXPECT_TRUE(str::from_wstring(text, tail).Failed()) << text;
        EXPECT_EQ(tail, TailType::Slope(77.0)) << "untouched on failure";
    }
    TailType tail;
    EXPECT_TRUE(str::from_wstring(L"1.7976931348623157e308", tail).Succeeded());
    EXPECT_EQ(tail, TailType::None());
}

TEST(Tolerance, ComparesFifteenDigitsOfTheLargestMagnitude) {
    const Tolerance<double> plain;
    EXPECT_TRUE(plain.Equal(0.1 + 0.2, 0.3));
    EXPECT_TRUE(plain.Equal(1000.1 + 0.2, 1000.3));
    EXPECT_FALSE(plain.Equal(1.0, 1.00000000000001));
    EXPECT_FALSE(plain.Equal(1e-20, 2e-20));
    EXPECT_TRUE(Tolerance<double>(-1.0).Equal(1e-20, 2e-20)) << "beneath the reference's digits";
    EXPECT_TRUE(Tolerance<double>(1.0, 3).Equal(1.0, 1.0009));
    EXPECT_TRUE(plain.GreaterOrEqual(0.3, 0.1 + 0.2));
    EXPECT_FALSE(plain.GreaterOrEqual(0.3, 0.4));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(plain.Equal(nan, nan));
    EXPECT_FALSE(plain.GreaterOrEqual(nan, 0.0));
}

}  // namespace
