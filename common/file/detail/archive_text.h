#pragma once

// The encodings of texts inside archives, which do not depend on the platform. (sys::Narrow and
// sys::Widen convert to the platform's own.)

#include <string>
#include <string_view>

namespace lmw::file::detail {

/// Whether the bytes are well-formed UTF-8: no overlong forms, surrogates or numbers above
/// 0x10FFFF.
[[nodiscard]] bool IsUtf8(std::string_view bytes) noexcept;

/// Wide text as UTF-8, whether wchar_t has 16 or 32 bits; what is no character becomes U+FFFD.
[[nodiscard]] std::string Utf8(std::wstring_view text);

/// A name or comment of an archive as wide text: UTF-8 when it is well-formed as such, else code
/// page 437, in which every byte is a character.
[[nodiscard]] std::wstring WideFromArchive(std::string_view bytes);

/// An entry's name as it is shown: with "\" between its parts.
[[nodiscard]] std::wstring ShownName(std::string_view name);

/// An entry's name as it is written: UTF-8 with "/".
[[nodiscard]] std::string WrittenName(std::wstring_view name);

}  // namespace lmw::file::detail
