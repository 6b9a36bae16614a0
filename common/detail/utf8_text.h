#pragma once

// Wide text as UTF-8 on every platform, for logs; sys::Narrow makes the platform's own encoding.

#include <string>
#include <string_view>

namespace lmw::detail {

/// Lone surrogates and values above 0x10FFFF become U+FFFD.
std::string Utf8Text(std::wstring_view text);

}  // namespace lmw::detail
