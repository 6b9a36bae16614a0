#include "common/diag.h"

#include "common/detail/process_arguments.h"
#include "common/message_text.h"
#include "common/printf_text.h"
#include "common/sys/debugger.h"
#include "common/sys/text_encoding.h"

#include <array>
#include <atomic>

namespace lmw::diag {

namespace {

std::atomic<bool>& SafeMode() {
    static std::atomic<bool> safe_mode = lmw::detail::ProcessCmdLineArguments_().safe_mode;
    return safe_mode;
}

std::atomic<bool>& AssertInteractive() {
    static std::atomic<bool> interactive =
        lmw::detail::ProcessCmdLineArguments_().assert_interactive || sys::IsDebuggerAttached();
    return interactive;
}

}  // namespace

bool IsSafeMode() {
    return SafeMode().load(std::memory_order_relaxed);
}

void SetSafeMode(bool safe_mode) {
    SafeMode().store(safe_mode, std::memory_order_relaxed);
}

bool IsAssertInteractive() {
    return AssertInteractive().load(std::memory_order_relaxed);
}

void SetAssertInteractive(bool interactive) {
    AssertInteractive().store(interactive, std::memory_order_relaxed);
}

bool IsAssertEnabled() {
    return false;
}

std::wstring FormatContext(const char* function, int line, const char* file) {
    const std::array<PrintfArgument, 3> arguments = {function != nullptr ? function : "", line,
                                                     file != nullptr ? file : ""};
    return PrintfText(L"Function: %s\nLine: %s(%s)", arguments);
}

std::wstring to_wstring(const char* text) {
    return sys::Widen(text != nullptr ? text : "");
}

std::wstring to_wstring(int message_id) {
    return MessageText(static_cast<std::uint32_t>(message_id));
}

}  // namespace lmw::diag
