#pragma once

// Message texts by identifier. The library holds no texts of its own: they come from the host
// application (common/app/app.h), whose default knows an English text for every identifier in use.

#include "common/export.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace lmw {

/// The template of a message as App::Instance() gives it now; empty when the host knows none.
LMW_API std::wstring MessageText(std::uint32_t message_id);

/// The message with its placeholders filled (str::fmt::FillTemplate).
LMW_API std::wstring MessageText(std::uint32_t message_id,
                                 std::initializer_list<std::wstring_view> arguments);

}  // namespace lmw
