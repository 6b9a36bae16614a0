#pragma once

// Comparison of words of settings without regard to the case of ASCII letters, in every locale.

#include <algorithm>
#include <string_view>

namespace lmw::detail {

inline wchar_t AsciiLower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

inline bool EqualIgnoringAsciiCase(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return AsciiLower(x) == AsciiLower(y); });
}

}  // namespace lmw::detail
