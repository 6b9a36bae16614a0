#pragma once

// The order of texts in names and archives: by UTF-16 code units on every platform, also where
// wchar_t has 32 bits, and without a locale. Each function gives -1, 0 or 1.

#include <string_view>

namespace lmw::file::detail {

/// The ASCII letters A to Z in lower case; every other character as it is.
[[nodiscard]] constexpr wchar_t FoldAscii(wchar_t c) noexcept {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

/// Exact comparison.
[[nodiscard]] int CompareUnits(std::wstring_view a, std::wstring_view b) noexcept;

/// With the ASCII letters in lower case.
[[nodiscard]] int CompareFolded(std::wstring_view a, std::wstring_view b) noexcept;

/// As CompareFolded, but where the first decimal digits stand at the same position in both, the
/// digits that begin there are compared as an integer of any length.
///
/// This is a strict weak order although it has two ways of comparing: texts whose first digits
/// stand at different positions differ at or before the nearer one, where one has a digit and the
/// other has not, so that no value of a number can turn their order round.
[[nodiscard]] int CompareNumericTail(std::wstring_view a, std::wstring_view b) noexcept;

}  // namespace lmw::file::detail
