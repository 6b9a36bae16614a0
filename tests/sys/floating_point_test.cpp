#include "common/sys/floating_point.h"

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <functional>
#include <limits>
#include <string>
#include <thread>

namespace {

using namespace sys;

// The compiler must neither fold nor drop the operations that raise the flags.
double Opaque(double value) {
    const volatile double hidden = value;
    return hidden;
}

void Discard(double value) {
    volatile double sink = value;
    static_cast<void>(sink);
}

struct Row {
    const char* name;
    FloatingPointException exception;
    unsigned raised;  // overflow and underflow are inexact as well
    std::function<void()> operation;
};

std::vector<Row> Exceptions() {
    return {
        {"inexact", kInexact, kInexact, [] { Discard(Opaque(1.0) / Opaque(3.0)); }},
        {"underflow", kUnderflow, kUnderflow | kInexact,
         [] { Discard(Opaque(1e-300) * Opaque(1e-300)); }},
        {"overflow", kOverflow, kOverflow | kInexact,
         [] { Discard(Opaque(1e300) * Opaque(1e300)); }},
        {"zero divide", kZeroDivide, kZeroDivide, [] { Discard(Opaque(1.0) / Opaque(0.0)); }},
        {"invalid", kInvalid, kInvalid, [] { Discard(Opaque(0.0) / Opaque(0.0)); }},
    };
}

class FloatingPoint : public testing::Test {
 protected:
    void SetUp() override { SetTrappingFloatingPointExceptions(0); }
    void TearDown() override { SetTrappingFloatingPointExceptions(0); }
};
using FloatingPointDeathTest = FloatingPoint;

TEST_F(FloatingPoint, EachExceptionRaisesItsOwnFlagUntilItIsCleared) {
    for (const Row& row : Exceptions()) {
        SCOPED_TRACE(row.name);
        ClearFloatingPointFlags();
        EXPECT_EQ(FloatingPointFlags(), 0U);
        row.operation();
        EXPECT_EQ(FloatingPointFlags(), row.raised);
        Discard(Opaque(1.0) + Opaque(1.0));
        EXPECT_EQ(FloatingPointFlags(), row.raised);
    }
    ClearFloatingPointFlags();
    EXPECT_EQ(FloatingPointFlags(), 0U);
}

TEST_F(FloatingPoint, EverySetOfFlagsAndOfTrapsIsTakenExactly) {
    for (unsigned set = 0; set <= kAllFloatingPointExceptions; ++set) {
        Discard(Opaque(1e300) * Opaque(1e300));
        SetFloatingPointFlags(set);
        ASSERT_EQ(FloatingPointFlags(), set);
        SetTrappingFloatingPointExceptions(set);
        const unsigned trapping = TrappingFloatingPointExceptions();
        SetTrappingFloatingPointExceptions(0);
        ASSERT_EQ(trapping, set);
    }
    SetTrappingFloatingPointExceptions(kInvalid);
    SetFloatingPointFlags(kOverflow | kZeroDivide);
    Discard(Opaque(1.0) + Opaque(1.0));
    EXPECT_EQ(FloatingPointFlags(), kOverflow | kZeroDivide) << "none of them traps";
    EXPECT_EQ(TrappingFloatingPointExceptions(), kInvalid);
}

TEST_F(FloatingPoint, DenormalIsReportedAndLeftAsItIs) {
    const unsigned control = _mm_getcsr();
    _mm_setcsr(control & ~0x100U);  // something else lets it trap
    SetTrappingFloatingPointExceptions(kInvalid);
    const unsigned with_denormal = TrappingFloatingPointExceptions();
    SetTrappingFloatingPointExceptions(0);
    const unsigned alone = TrappingFloatingPointExceptions();
    _mm_setcsr(control);
    EXPECT_EQ(with_denormal, kInvalid | kDenormal);
    EXPECT_EQ(alone, kDenormal);
    EXPECT_EQ(TrappingFloatingPointExceptions(), 0U);
}

TEST_F(FloatingPoint, MaskedExceptionsAndFlagsRaisedEarlierDoNotTrap) {
    for (const Row& row : Exceptions()) {
        SCOPED_TRACE(row.name);
        row.operation();
        SetTrappingFloatingPointExceptions(row.raised);
        Discard(Opaque(1.0) + Opaque(1.0));  // would trap if the flag were still raised
        SetTrappingFloatingPointExceptions(kAllFloatingPointExceptions & ~row.raised);
        row.operation();
        SetTrappingFloatingPointExceptions(0);
    }
}

TEST_F(FloatingPointDeathTest, AnUnmaskedExceptionTraps) {
    for (const Row& row : Exceptions()) {
        SCOPED_TRACE(row.name);
        EXPECT_DEATH(
            {
                SetTrappingFloatingPointExceptions(row.exception);
                row.operation();
            },
            "");
    }
}

TEST_F(FloatingPoint, EachThreadHasItsOwnControlAndFlags) {
    std::thread([] {
        SetTrappingFloatingPointExceptions(kInvalid);
        Discard(Opaque(1.0) / Opaque(0.0));
    }).join();
    EXPECT_EQ(TrappingFloatingPointExceptions(), 0U);
    EXPECT_EQ(FloatingPointFlags() & kZeroDivide, 0U);
}

}  // namespace
