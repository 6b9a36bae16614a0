#pragma once

// The English texts of the default host.

#include <cstdint>
#include <string_view>

namespace lmw::detail {

/// The English template of a message, empty for an identifier the library does not use.
std::wstring_view EnglishText(std::uint32_t message_id) noexcept;

}  // namespace lmw::detail
