#include "common/sys/floating_point.h"

#if defined(__x86_64__) || defined(__i386__)
#include <fpu_control.h>
#include <xmmintrin.h>
#define LMW_EXTENDED_UNIT 1
#else
#define LMW_EXTENDED_UNIT 0
#endif

#include <array>
#include <cfenv>
#include <utility>

namespace sys {

namespace {

constexpr std::array<std::pair<unsigned, int>, 5> kBits = {{{kInexact, FE_INEXACT},
                                                            {kUnderflow, FE_UNDERFLOW},
                                                            {kOverflow, FE_OVERFLOW},
                                                            {kZeroDivide, FE_DIVBYZERO},
                                                            {kInvalid, FE_INVALID}}};

unsigned FromPlatform(int exceptions) {
    unsigned result = 0;
    for (const auto& [ours, theirs] : kBits) {
        result |= (exceptions & theirs) != 0 ? ours : 0U;
    }
    return result;
}

int ToPlatform(unsigned exceptions) {
    int result = 0;
    for (const auto& [ours, theirs] : kBits) {
        result |= (exceptions & ours) != 0 ? theirs : 0;
    }
    return result;
}

}  // namespace

unsigned FloatingPointFlags() noexcept {
    return FromPlatform(std::fetestexcept(FE_ALL_EXCEPT));
}

void ClearFloatingPointFlags() noexcept {
    std::feclearexcept(FE_ALL_EXCEPT);
}

void SetFloatingPointFlags(unsigned flags) noexcept {
    std::feclearexcept(FE_ALL_EXCEPT);
    // Raising an overflow would raise the inexact flag as well; storing the flags does not.
    const auto stored = static_cast<std::fexcept_t>(ToPlatform(flags));
    std::fesetexceptflag(&stored, FE_ALL_EXCEPT);
}

unsigned TrappingFloatingPointExceptions() noexcept {
    unsigned trapping = FromPlatform(fegetexcept());
#if LMW_EXTENDED_UNIT
    constexpr unsigned kDenormalIsMasked = 0x100;
    trapping |= (_mm_getcsr() & kDenormalIsMasked) == 0 ? kDenormal : 0U;
#endif
    return trapping;
}

void SetTrappingFloatingPointExceptions(unsigned trapping) noexcept {
    std::feclearexcept(FE_ALL_EXCEPT);
    const int exceptions = ToPlatform(trapping);
    fedisableexcept(FE_ALL_EXCEPT & ~exceptions);
    feenableexcept(exceptions);
}

#if LMW_EXTENDED_UNIT

int ExtendedPrecisionBits() noexcept {
    fpu_control_t control = 0;
    _FPU_GETCW(control);
    switch (control & _FPU_EXTENDED) {  // the widest has all bits of the field set
        case _FPU_SINGLE:
            return 24;
        case _FPU_DOUBLE:
            return 53;
        default:
            return 64;
    }
}

void SetExtendedPrecisionBits(int bits) noexcept {
    if (bits != 24 && bits != 53 && bits != 64) {
        return;
    }
    const unsigned precision = bits == 24 ? _FPU_SINGLE : bits == 53 ? _FPU_DOUBLE : _FPU_EXTENDED;
    fpu_control_t control = 0;
    _FPU_GETCW(control);
    control = static_cast<fpu_control_t>((control & ~unsigned{_FPU_EXTENDED}) | precision);
    _FPU_SETCW(control);
}

#else

int ExtendedPrecisionBits() noexcept {
    return 0;
}

void SetExtendedPrecisionBits(int /*bits*/) noexcept {}

#endif

}  // namespace sys
