#include "common/sys/floating_point.h"

#include <float.h>

namespace sys {

namespace {

// The runtime's status and mask bits are the library's own numbering; only the denormal exception
// (0x80000) has none there.
constexpr unsigned kExceptionMaskBits = 0x0008001F;

}  // namespace

unsigned FloatingPointFlags() noexcept {
    return _statusfp() & kAllFloatingPointExceptions;
}

void ClearFloatingPointFlags() noexcept {
    _clearfp();
}

unsigned TrappingFloatingPointExceptions() noexcept {
    // A set bit of the control word masks its exception.
    return ~_controlfp(0, 0) & kAllFloatingPointExceptions;
}

void SetTrappingFloatingPointExceptions(unsigned trapping) noexcept {
    _clearfp();
    const unsigned masked = kExceptionMaskBits & ~(trapping & kAllFloatingPointExceptions);
    unsigned control = 0;
    _controlfp_s(&control, masked, kExceptionMaskBits);
}

}  // namespace sys
