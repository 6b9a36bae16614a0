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
    /// An operand below the normal range. Not among the five that are set here: it traps only where
    /// something else in the process has said so.
    kDenormal = 0x80000,
};

/// The flags raised on this thread since they were last cleared.
LMW_API unsigned FloatingPointFlags() noexcept;

/// Clears the flags of this thread.
LMW_API void ClearFloatingPointFlags() noexcept;

/// Makes exactly `flags` the flags raised on this thread, without trapping: none of them may be
/// among the exceptions that trap.
LMW_API void SetFloatingPointFlags(unsigned flags) noexcept;

/// The exceptions that trap on this thread, kDenormal included.
LMW_API unsigned TrappingFloatingPointExceptions() noexcept;

/// Makes exactly the exceptions of `trapping` trap on this thread and masks the others. Flags that
/// are already raised are cleared first, since a raised flag that becomes unmasked would trap at
/// once.
/// kDenormal stays as it is.
LMW_API void SetTrappingFloatingPointExceptions(unsigned trapping) noexcept;

/// To how many bits the extended unit of the processor rounds its results: 24, 53 or 64. 0 where
/// there is none or the platform does not let programs set it, as 64-bit Windows. Only `long
/// double` is computed there; the vector unit, which does all else, always rounds to the type.
LMW_API int ExtendedPrecisionBits() noexcept;

/// Sets it for this thread to 24, 53 or 64; does nothing for other numbers and where there is
/// nothing to set.
LMW_API void SetExtendedPrecisionBits(int bits) noexcept;

}  // namespace sys
