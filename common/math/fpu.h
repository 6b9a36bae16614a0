#pragma once

// The floating-point control under which functions are evaluated: the flags and traps of the
// calling thread, and scopes that switch traps on in diagnostic mode. Code that only has to hold
// back exceptions for a while needs no more than common/sys/floating_point.h.
// Surprising: On is exact, not additive: what is not in its mask no longer traps.

#include "common/export.h"

#include <cstdint>
#include <string>

namespace math::fpu {

/// A set of floating-point exceptions of one thread. It converts to its bits: inexact 1, underflow
/// 2, overflow 4, zero divide 8, invalid 16, and denormal 0x80000, which only ControlMask reports.
/// Default: none. Threads: flags and traps belong to the calling thread.
class LMW_API Exception {
 public:
    constexpr Exception() noexcept = default;
    explicit constexpr Exception(unsigned bits) noexcept : bits_(bits) {}

    [[nodiscard]] constexpr unsigned Bits() const noexcept { return bits_; }
    // NOLINTNEXTLINE(google-explicit-constructor): the set is used as its bits, as On takes them.
    constexpr operator unsigned() const noexcept { return bits_; }

    /// The flags raised since they were last cleared.
    [[nodiscard]] static Exception Test() noexcept;
    /// The flags raised; then clears them.
    static Exception Clear() noexcept;

    /// The exceptions that trap.
    [[nodiscard]] static Exception ControlMask() noexcept;
    /// Clears the flags, makes exactly the exceptions of `mask` trap, and returns what ControlMask
    /// said before. Denormal stays as it is.
    static Exception On(unsigned mask) noexcept;
    /// On with the empty set.
    static Exception Off() noexcept;

    /// Overflow, zero divide and invalid: 28.
    [[nodiscard]] static constexpr unsigned DefaultExceptionMask() noexcept { return 28; }

    /// Whether any exception of `mask` is in the set.
    [[nodiscard]] constexpr bool IsError(unsigned mask) const noexcept {
        return (bits_ & mask) != 0;
    }
    [[nodiscard]] constexpr bool IsInExact() const noexcept { return IsError(1); }
    [[nodiscard]] constexpr bool IsUnderflow() const noexcept { return IsError(2); }
    [[nodiscard]] constexpr bool IsOverflow() const noexcept { return IsError(4); }
    [[nodiscard]] constexpr bool IsZeroDivide() const noexcept { return IsError(8); }
    [[nodiscard]] constexpr bool IsInvalid() const noexcept { return IsError(16); }

 private:
    std::uint32_t bits_ = 0;
};

/// While it lives, and if lmw::feature::IsDiagnosticFpuTrapsEnabled, exactly the default exceptions
/// trap on this thread; afterwards those that did before. Both ends clear the flags. Without the
/// switch it does nothing. Scopes nest.
class LMW_API ScopedEnableExceptionsInDiagnosticMode {
 public:
    ScopedEnableExceptionsInDiagnosticMode() noexcept;
    ~ScopedEnableExceptionsInDiagnosticMode();
    ScopedEnableExceptionsInDiagnosticMode(const ScopedEnableExceptionsInDiagnosticMode&) = delete;
    ScopedEnableExceptionsInDiagnosticMode& operator=(
        const ScopedEnableExceptionsInDiagnosticMode&) = delete;

 private:
    Exception previous_;
};

/// Makes the default exceptions trap if lmw::feature::IsDiagnosticFpuTrapsEnabled and nothing traps
/// on this thread so far; else does nothing.
LMW_API void EnableExceptionsInDiagnosticMode() noexcept;

/// While it lives, the processor's extended unit rounds this thread's results to the bits asked
/// for; afterwards as before. Only `long double` is computed there. Does nothing where there is no
/// such unit or the platform does not let programs set it, as on 64-bit Windows. Scopes nest.
class LMW_API PrecisionControl {
 public:
    enum class Flag : std::uint8_t { k24Bits = 24, k53Bits = 53, k64Bits = 64 };

    explicit PrecisionControl(Flag wanted) noexcept;
    ~PrecisionControl();
    PrecisionControl(const PrecisionControl&) = delete;
    PrecisionControl& operator=(const PrecisionControl&) = delete;

 private:
    int previous_bits_;
};

}  // namespace math::fpu

namespace str {

/// The names of the exceptions in the set, such as "overflow, zero divide"; empty for none.
LMW_API std::wstring as_wstring(const math::fpu::Exception& exceptions);

/// The same in narrow form. By design: the pointer is into one process-wide buffer that the next
/// call on any thread overwrites, so copy the text at once. It always stays readable.
LMW_API const char* as_cstring(const math::fpu::Exception& exceptions);

}  // namespace str
