#include "common/log.h"

#include "common/detail/last_error_keeper.h"
#include "common/event_sink.h"
#include "common/sys/text_encoding.h"

#include <string>

namespace lmw::diag {

namespace {

// Without memory a message is lost; the code that logs it goes on.
template <class Log>
void Guarded(const Log& log) noexcept {
    const lmw::detail::LastErrorKeeper keeper;
    try {
        log();
    } catch (...) {  // NOLINT(bugprone-empty-catch): there is nowhere to report it
    }
}

}  // namespace

void LogMacroHandler::operator()(std::wstring_view message) const noexcept {
    Guarded([&] {
        EventSinks::Log(level_, category_, std::wstring(message), file_, line_, function_);
    });
}

void LogMacroHandler::operator()(std::string_view message) const noexcept {
    Guarded(
        [&] { EventSinks::Log(level_, category_, sys::Widen(message), file_, line_, function_); });
}

void LogMacroHandler::LogFormatted_(const wchar_t* format,
                                    std::span<const PrintfArgument> arguments) const noexcept {
    Guarded([&] {
        const std::wstring message = PrintfText(format != nullptr ? format : L"", arguments);
        EventSinks::Log(level_, category_, message, file_, line_, function_);
    });
}

void LogMacroHandler::LogFormatted_(const char* format,
                                    std::span<const PrintfArgument> arguments) const noexcept {
    Guarded([&] {
        const std::wstring wide = sys::Widen(format != nullptr ? format : "");
        EventSinks::Log(level_, category_, PrintfText(wide, arguments), file_, line_, function_);
    });
}

}  // namespace lmw::diag
