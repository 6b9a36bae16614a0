#pragma once

// UTF-8, the same on every platform: for logs, archives and other texts of a fixed encoding. The
// platform's own narrow encoding is in text_encoding.h. Nothing here fails; any thread.

#include "common/export.h"

#include <string>
#include <string_view>

namespace sys {

/// What a pair of surrogates is in wide text whose wchar_t has 32 bits. (Where it has 16 bits a
/// pair is one character always.)
enum class LoosePairs {
    kReplace,  ///< two values that are no characters
    kJoin,     ///< one character, as text that once was UTF-16 means it
};

/// Wide text as UTF-8. Each wchar_t that is no character (a lone surrogate, a value above 0x10FFFF)
/// becomes U+FFFD. The text is allocated once, at its final size: no part of a secret stays behind
/// in memory that was given back.
LMW_API std::string Utf8FromWide(std::wstring_view text, LoosePairs pairs);

/// UTF-8 as wide text. Each ill-formed sequence of bytes becomes one U+FFFD: it ends before the
/// first byte that cannot belong to it. Allocated once.
LMW_API std::wstring WideFromUtf8(std::string_view bytes);

/// Whether the bytes are well-formed: no overlong forms, surrogates or numbers above 0x10FFFF.
[[nodiscard]] LMW_API bool IsUtf8(std::string_view bytes) noexcept;

}  // namespace sys
