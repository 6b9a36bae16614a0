#pragma once

// The wildcard patterns by which entries are found.

#include <string_view>

namespace lmw::file::detail {

/// Whether the whole of `name` fits `pattern`: "*" stands for any characters, "\" included, "?" for
/// one; ASCII letters match in both cases, "/" and "\" match each other, every other character
/// ("[" included) matches itself. The pattern "*.*" matches every name, also one without a ".".
/// Takes no more steps than name length times pattern length.
[[nodiscard]] bool MatchesWildcard(std::wstring_view name, std::wstring_view pattern) noexcept;

}  // namespace lmw::file::detail
