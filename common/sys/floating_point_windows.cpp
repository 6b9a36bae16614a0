#include "common/sys/floating_point.h"

#include <float.h>
#include <xmmintrin.h>

#include <array>
#include <utility>

namespace sys {

namespace {

// The runtime's status and mask bits are the library's own numbering. It leaves the mask of the
// denormal exception (0x80000) alone.
constexpr unsigned kExceptionMaskBits = 0x0008001F;

}  // namespace

unsigned FloatingPointFlags() noexcept {
    return _statusfp() & kAllFloatingPointExceptions;
}

void ClearFloatingPointFlags() noexcept {
    _clearfp();
}

void SetFloatingPointFlags(unsigned flags) noexcept {
    // The runtime can only clear flags. The vector unit, which does all the computing, keeps them
    // in the low bits of its control register.
    constexpr std::array<std::pair<unsigned, unsigned>, 5> kBits = {{{kInvalid, 0x01},
                                                                     {kZeroDivide, 0x04},
                                                                     {kOverflow, 0x08},
                                                                     {kUnderflow, 0x10},
                                                                     {kInexact, 0x20}}};
    _clearfp();
    unsigned control = _mm_getcsr();
    for (const auto& [ours, theirs] : kBits) {
        control |= (flags & ours) != 0 ? theirs : 0U;
    }
    _mm_setcsr(control);
}

unsigned TrappingFloatingPointExceptions() noexcept {
    // A set bit of the control word masks its exception.
    return ~_controlfp(0, 0) & kExceptionMaskBits;
}

void SetTrappingFloatingPointExceptions(unsigned trapping) noexcept {
    _clearfp();
    const unsigned masked = kExceptionMaskBits & ~(trapping & kAllFloatingPointExceptions);
    unsigned control = 0;
    _controlfp_s(&control, masked, kExceptionMaskBits);
}

// The 64-bit runtime refuses to set the precision.
int ExtendedPrecisionBits() noexcept {
    return 0;
}

void SetExtendedPrecisionBits(int /*bits*/) noexcept {}

}  // namespace sys
