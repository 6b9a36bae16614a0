#pragma once

// Renders one argument of a message as its placeholder asks.

#include "common/str/tokenize.h"

#include <string>
#include <string_view>

namespace str::fmt::detail {

/// `argument` under `spec`, a placeholder from "%" to its conversion character as tokenize stores
/// it, of type `type`. A numeric type formats an argument that reads as such a number and otherwise
/// returns it as it is.
std::wstring RenderArgument(std::wstring_view spec, arg_type type, const std::wstring& argument);

}  // namespace str::fmt::detail
