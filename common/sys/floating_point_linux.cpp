#include "common/sys/floating_point.h"

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
    return FromPlatform(fegetexcept());
}

void SetTrappingFloatingPointExceptions(unsigned trapping) noexcept {
    std::feclearexcept(FE_ALL_EXCEPT);
    const int exceptions = ToPlatform(trapping);
    fedisableexcept(FE_ALL_EXCEPT & ~exceptions);
    feenableexcept(exceptions);
}

}  // namespace sys
