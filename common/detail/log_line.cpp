#include "common/detail/log_line.h"

#include "common/log_category.h"
#include "common/log_level.h"
#include "common/printf_text.h"
#include "common/sys/text_encoding.h"

#include <array>
#include <string_view>

namespace lmw::detail {

namespace {

void AppendEscaped(std::wstring& line, std::wstring_view text) {
    constexpr std::wstring_view kDigits = L"0123456789abcdef";
    for (const wchar_t c : text) {
        const auto code = static_cast<char32_t>(c);
        // The second range is that of the control characters of eight-bit terminals.
        const bool control = code < 0x20 || (code >= 0x7F && code < 0xA0);
        if (!control) {
            line += c;
        } else if (c == L'\n') {
            line += L"\\n";
        } else if (c == L'\r') {
            line += L"\\r";
        } else if (c == L'\t') {
            line += L"\\t";
        } else {
            line += {L'\\', L'x', kDigits[code / 16], kDigits[code % 16]};
        }
    }
}

}  // namespace

std::wstring LogLine(const LogRecord& record) {
    std::wstring line = diag::LevelText(record.level);
    const std::string categories = diag::CategoryNames(record.category);
    if (!categories.empty()) {
        line += L" [";
        AppendEscaped(line, sys::Widen(categories));
        line += L"]";
    }
    line += L": ";
    AppendEscaped(line, record.message);
    std::string_view file = record.file;
    file = file.substr(file.find_last_of("/\\") + 1);  // npos + 1 is 0
    std::wstring place;
    if (!file.empty()) {
        place = sys::Widen(file) + L":" + std::to_wstring(record.line);
    }
    if (*record.function != '\0') {
        place += place.empty() ? L"" : L", ";
        place += sys::Widen(record.function);
    }
    if (!place.empty()) {
        line += L" (";
        AppendEscaped(line, place);
        line += L")";
    }
    return line;
}

std::wstring TimeStamp(std::chrono::system_clock::time_point time) {
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(floor<milliseconds>(time - day));
    const std::array<diag::PrintfArgument, 7> fields = {
        static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()),
        static_cast<unsigned>(date.day()),
        static_cast<long long>(clock.hours().count()),
        static_cast<long long>(clock.minutes().count()),
        static_cast<long long>(clock.seconds().count()),
        static_cast<long long>(clock.subseconds().count())};
    return diag::PrintfText(L"%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", fields);
}

}  // namespace lmw::detail
