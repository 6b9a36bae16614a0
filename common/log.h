#pragma once

// What code that logs includes. Messages are formatted by PrintfText (common/printf_text.h) and
// only when the filter (common/log_filter.h) lets them pass; the sinks (common/event_sink.h) decide
// where they go.
//
//     const lmw::diag::DeclareCategoryMask kMesh("mesh");
//     ...
//     LMW_LOG(lmw::diag::kWarning, kMesh.Mask(), L"%d elements of %s are flat", count, name);

#include "common/export.h"
#include "common/log_category.h"
#include "common/log_filter.h"
#include "common/log_level.h"
#include "common/printf_text.h"

#include <array>
#include <span>
#include <string_view>

/// Logs a message: LMW_LOG(level, category, format, arguments...), the format wide or narrow, or
/// LMW_LOG(level, category, text) with a finished std::wstring or std::string.
/// A message below the minimum level costs one comparison: neither the category nor the arguments
/// are evaluated. One whose category is filtered costs a call and evaluates no argument.
#define LMW_LOG(level, category, ...)                                                             \
    do {                                                                                          \
        const int lmw_log_level = (level);                                                        \
        if (::lmw::diag::impl::MayBeLogged_(lmw_log_level)) {                                     \
            const int lmw_log_category = (category);                                              \
            if (::lmw::diag::IsLogged(lmw_log_level, lmw_log_category)) {                         \
                ::lmw::diag::LogMacroHandler(lmw_log_level, lmw_log_category, __FILE__, __LINE__, \
                                             static_cast<const char*>(__func__))(__VA_ARGS__);    \
            }                                                                                     \
        }                                                                                         \
    } while (false)

namespace lmw::diag {

/// The place of a logging call. Calling it logs one message without asking the filter; the macro
/// has done so. Never throws (without memory the message is lost) and leaves the thread's last
/// operating-system error as it was. The texts must outlive it. Any thread.
class LMW_API LogMacroHandler {
 public:
    LogMacroHandler(int level, int category, const char* file, int line,
                    const char* function) noexcept
        : level_(level), category_(category), file_(file), line_(line), function_(function) {}

    /// A message with placeholders. A narrow format is widened by sys::Widen.
    template <class... Arguments>
    void operator()(const wchar_t* format, const Arguments&... arguments) const noexcept {
        const std::array<PrintfArgument, sizeof...(Arguments)> packed = {arguments...};
        LogFormatted_(format, packed);
    }
    template <class... Arguments>
    void operator()(const char* format, const Arguments&... arguments) const noexcept {
        const std::array<PrintfArgument, sizeof...(Arguments)> packed = {arguments...};
        LogFormatted_(format, packed);
    }

    /// A finished text, which is never taken for a format: "100%d" stays "100%d".
    void operator()(std::wstring_view message) const noexcept;
    void operator()(std::string_view message) const noexcept;

 private:
    void LogFormatted_(const wchar_t* format,
                       std::span<const PrintfArgument> arguments) const noexcept;
    void LogFormatted_(const char* format,
                       std::span<const PrintfArgument> arguments) const noexcept;

    int level_;
    int category_;
    const char* file_;
    int line_;
    const char* function_;
};

/// Logs a message of level kInformation in kDefaultCategories, without a place. Asks the filter
/// first.
template <class... Arguments>
void logprintf(const char* format, const Arguments&... arguments) noexcept {
    if (impl::MayBeLogged_(kInformation) && IsLogged(kInformation, kDefaultCategories)) {
        LogMacroHandler(kInformation, kDefaultCategories, "", 0, "")(format, arguments...);
    }
}

}  // namespace lmw::diag
