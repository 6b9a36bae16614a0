#pragma once

// The floating-point exception flags and masks of the calling thread, in one numbering on every
// platform. Callers outside the library's lower rooms use the floating-point control of the
// function objects, which is built on this.

#include "common/export.h"

namespace sys {

/// A set of floating-point exceptions, as bits.
enum FloatingPointException : unsigned {
    kInexact = 1,
    kUnderflow = 2,
    kOverflow = 4,
    kZeroDivide = 8,
    kInvalid = 16,
    kAllFloatingPointExceptions = 31,
};

/// The flags raised on this thread since they were last cleared.
LMW_API unsigned FloatingPointFlags() noexcept;

/// Clears the flags of this thread.
LMW_API void ClearFloatingPointFlags() noexcept;

/// Makes exactly `flags` the flags raised on this thread, without trapping: none of them may be
/// among the exceptions that trap.
LMW_API void SetFloatingPointFlags(unsigned flags) noexcept;

/// The exceptions that trap on this thread.
LMW_API unsigned TrappingFloatingPointExceptions() noexcept;

/// Makes exactly the exceptions of `trapping` trap on this thread and masks the others. Flags that
/// are already raised are cleared first, since a raised flag that becomes unmasked would trap at
/// once.
LMW_API void SetTrappingFloatingPointExceptions(unsigned trapping) noexcept;

}  // namespace sys
