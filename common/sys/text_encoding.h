#pragma once

// Conversion between the wide strings of the interface and narrow text.
// Wide text is UTF-16 where wchar_t has 16 bits and UTF-32 where it has 32. Narrow text is UTF-8 on
// Linux and the active code page on Windows; texts that are UTF-8 everywhere are converted by
// utf8.h.

#include "common/export.h"

#include <string>
#include <string_view>

namespace sys {

/// Wide text as narrow text. What has no narrow form (a lone surrogate, a value above 0x10FFFF, a
/// character missing from the code page) is replaced: by U+FFFD in UTF-8, by the code page's
/// default character ("?") on Windows, once for each wchar_t; never by a look-alike. NUL is a
/// character like any other. Never fails; any thread.
LMW_API std::string Narrow(std::wstring_view text);

/// Narrow text as wide text. Each ill-formed byte sequence of UTF-8 becomes one U+FFFD: it ends
/// before the first byte that cannot belong to it. On Windows bytes that the code page leaves open
/// become what the system makes of them. Never fails; any thread.
LMW_API std::wstring Widen(std::string_view text);

}  // namespace sys
