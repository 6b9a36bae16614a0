#include "common/math/fpu.h"

#include "common/sys/floating_point.h"

#include "tests/support/environment.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>

namespace {

using namespace math::fpu;

// The compiler must neither fold nor drop the operations that raise the flags.
double Opaque(double value) {
    const volatile double hidden = value;
    return hidden;
}

class FloatingPointControl : public testing::Test {
 protected:
    void SetUp() override { Exception::Off(); }
    void TearDown() override { Exception::Off(); }
};

TEST_F(FloatingPointControl, OnIsExactClearsTheFlagsAndGivesWhatTrappedBefore) {
    EXPECT_EQ(Exception::ControlMask(), 0U);
    EXPECT_EQ(Exception::On(8), 0U);
    sys::SetFloatingPointFlags(4);
    EXPECT_EQ(Exception::On(Exception::DefaultExceptionMask()), 8U);
    EXPECT_EQ(Exception::Test(), 0U) << "the flags are cleared";
    EXPECT_EQ(Exception::On(1), 28U);
    EXPECT_EQ(Exception::ControlMask(), 1U) << "not added to the others";
    sys::SetFloatingPointFlags(2);
    EXPECT_EQ(Exception::Off(), 1U);
    EXPECT_EQ(Exception::ControlMask(), 0U);
    EXPECT_EQ(Exception::Test(), 0U);
}

TEST_F(FloatingPointControl, TestKeepsTheFlagsAndClearDoesNot) {
    volatile double sink = Opaque(1.0) / Opaque(0.0);
    static_cast<void>(sink);
    EXPECT_EQ(Exception::Test(), 8U);
    EXPECT_EQ(Exception::Clear(), 8U);
    EXPECT_EQ(Exception::Test(), 0U);
}

TEST_F(FloatingPointControl, SetsAreAskedAndNamedByBit) {
    using Ask = bool (Exception::*)() const noexcept;
    const std::tuple<unsigned, const char*, Ask> rows[] = {
        {1U, "inexact", &Exception::IsInExact},
        {2U, "underflow", &Exception::IsUnderflow},
        {4U, "overflow", &Exception::IsOverflow},
        {8U, "zero divide", &Exception::IsZeroDivide},
        {16U, "invalid", &Exception::IsInvalid}};
    for (const auto& [bits, name, asked] : rows) {
        EXPECT_TRUE((Exception(bits).*asked)()) << name;
        EXPECT_FALSE((Exception(31 & ~bits).*asked)()) << name;
        EXPECT_STREQ(str::as_cstring(Exception(bits)), name);
    }
    EXPECT_FALSE(Exception(3).IsError(28));
    EXPECT_TRUE(Exception(7).IsError(28));
    EXPECT_EQ(str::as_wstring(Exception(28)), L"overflow, zero divide, invalid");
    EXPECT_EQ(str::as_wstring(Exception()), L"");
}

TEST_F(FloatingPointControl, WithoutTheDiagnosticSwitchNothingIsTurnedOn) {
    lmw::test::RemoveEnvironmentVariable("LMW_DIAG");
    lmw::test::RemoveEnvironmentVariable("LOAMWORKS_DIAG_MODE");
    sys::SetFloatingPointFlags(1);
    {
        const ScopedEnableExceptionsInDiagnosticMode scope;
        EXPECT_EQ(Exception::ControlMask(), 0U);
    }
    EnableExceptionsInDiagnosticMode();
    EXPECT_EQ(Exception::ControlMask(), 0U);
    EXPECT_EQ(Exception::Test(), 1U) << "not even the flags";
}

TEST_F(FloatingPointControl, PrecisionActsWhereTheProcessorHasIt) {
    const int bits = sys::ExtendedPrecisionBits();
    const auto loses_bit = [](int exponent) {  // whether 1 + 2^exponent is 1
        volatile long double one = 1.0L;
        volatile long double sum = one + std::ldexp(static_cast<long double>(one), exponent);
        return sum == 1.0L;
    };
    {
        const PrecisionControl outer(PrecisionControl::Flag::k53Bits);
        if (bits == 0) {
            EXPECT_EQ(sys::ExtendedPrecisionBits(), 0);
        } else {
            EXPECT_TRUE(loses_bit(-60));
            EXPECT_FALSE(loses_bit(-50));
            {
                const PrecisionControl inner(PrecisionControl::Flag::k24Bits);
                EXPECT_TRUE(loses_bit(-50));
            }
            EXPECT_FALSE(loses_bit(-50));
        }
    }
    EXPECT_EQ(sys::ExtendedPrecisionBits(), bits);
    EXPECT_EQ(Opaque(1.0) + Opaque(0x1p-52), 1.0 + 0x1p-52);
}

}  // namespace
