#include "common/log_level.h"

#include "common/detail/ascii_case.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <system_error>

namespace lmw::diag {

namespace {

// By level.
constexpr std::array<std::wstring_view, 5> kLevelNames = {L"verbose", L"information", L"warning",
                                                          L"error", L"critical"};

}  // namespace

int LevelByText(std::wstring_view text) {
    for (std::size_t level = 0; level < kLevelNames.size(); ++level) {
        if (lmw::detail::EqualIgnoringAsciiCase(text, kLevelNames[level])) {
            return static_cast<int>(level);
        }
    }
    std::string digits;
    for (const wchar_t c : text) {
        // "?" belongs to no number.
        digits += c > L'\0' && c < L'\x7F' ? static_cast<char>(c) : '?';
    }
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-') {
        digits.erase(0, 1);
    }
    std::int32_t level = kNoLevel;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, level);
    return error == std::errc() && stop == end ? level : kNoLevel;
}

std::wstring LevelText(int level) {
    return level >= 0 && level < static_cast<int>(kLevelNames.size())
               ? std::wstring(kLevelNames[static_cast<std::size_t>(level)])
               : std::to_wstring(level);
}

}  // namespace lmw::diag
