#pragma once

// The encodings of texts inside archives, which do not depend on the platform. (sys::Narrow and
// sys::Widen convert to the platform's own.)

#include <string>
#include <string_view>

namespace lmw::file::detail {

/// A name or comment of an archive as wide text: UTF-8 when it is well-formed as such, else code
/// page 437, in which every byte is a character.
[[nodiscard]] std::wstring WideFromArchive(std::string_view bytes);

/// Text as an archive holds it: UTF-8. Names come from Windows programs too, so that a pair of
/// surrogates is one character also where wchar_t has 32 bits; what is no character becomes U+FFFD.
[[nodiscard]] std::string ArchiveText(std::wstring_view text);

/// An entry's name as it is shown: with "\" between its parts.
[[nodiscard]] std::wstring ShownName(std::string_view name);

/// An entry's name as it is written: UTF-8 with "/".
[[nodiscard]] std::string WrittenName(std::wstring_view name);

}  // namespace lmw::file::detail
