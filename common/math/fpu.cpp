#include "common/math/fpu.h"

#include "common/app/feature.h"
#include "common/detail/shared_text_buffer.h"
#include "common/sys/floating_point.h"

#include <array>
#include <utility>

namespace math::fpu {

Exception Exception::Test() noexcept {
    return Exception(sys::FloatingPointFlags());
}

Exception Exception::Clear() noexcept {
    const Exception flags = Test();
    sys::ClearFloatingPointFlags();
    return flags;
}

Exception Exception::ControlMask() noexcept {
    return Exception(sys::TrappingFloatingPointExceptions());
}

Exception Exception::On(unsigned mask) noexcept {
    const Exception previous = ControlMask();
    sys::SetTrappingFloatingPointExceptions(mask);
    return previous;
}

Exception Exception::Off() noexcept {
    return On(0);
}

ScopedEnableExceptionsInDiagnosticMode::ScopedEnableExceptionsInDiagnosticMode() noexcept {
    if (lmw::feature::IsDiagnosticFpuTrapsEnabled()) {
        previous_ = Exception::On(Exception::DefaultExceptionMask());
    }
}

ScopedEnableExceptionsInDiagnosticMode::~ScopedEnableExceptionsInDiagnosticMode() {
    if (lmw::feature::IsDiagnosticFpuTrapsEnabled()) {
        Exception::On(previous_);
    }
}

void EnableExceptionsInDiagnosticMode() noexcept {
    if (lmw::feature::IsDiagnosticFpuTrapsEnabled() && Exception::ControlMask() == 0U) {
        Exception::On(Exception::DefaultExceptionMask());
    }
}

PrecisionControl::PrecisionControl(Flag wanted) noexcept
    : previous_bits_(sys::ExtendedPrecisionBits()) {
    sys::SetExtendedPrecisionBits(static_cast<int>(wanted));
}

PrecisionControl::~PrecisionControl() {
    sys::SetExtendedPrecisionBits(previous_bits_);
}

}  // namespace math::fpu

namespace str {

namespace {

std::string NamesOf(const math::fpu::Exception& exceptions) {
    constexpr std::array<std::pair<unsigned, const char*>, 6> kNames = {
        {{sys::kInexact, "inexact"},
         {sys::kUnderflow, "underflow"},
         {sys::kOverflow, "overflow"},
         {sys::kZeroDivide, "zero divide"},
         {sys::kInvalid, "invalid"},
         {sys::kDenormal, "denormal"}}};
    std::string names;
    for (const auto& [bit, name] : kNames) {
        if (exceptions.IsError(bit)) {
            names += (names.empty() ? "" : ", ") + std::string(name);
        }
    }
    return names;
}

}  // namespace

std::wstring as_wstring(const math::fpu::Exception& exceptions) {
    const std::string names = NamesOf(exceptions);
    return {names.begin(), names.end()};
}

const char* as_cstring(const math::fpu::Exception& exceptions) {
    static auto* const buffer = new lmw::detail::SharedTextBuffer;  // never destroyed
    return buffer->Store(NamesOf(exceptions));
}

}  // namespace str
