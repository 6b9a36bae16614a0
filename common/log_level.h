#pragma once

// The levels of messages. A level is any 32-bit integer; these five have names.

#include "common/export.h"

#include <string>
#include <string_view>

namespace lmw::diag {

inline constexpr int kVerbose = 0;
inline constexpr int kInformation = 1;
inline constexpr int kWarning = 2;
inline constexpr int kError = 3;
inline constexpr int kCritical = 4;

/// No level: what LevelByText returns for a text that is none.
inline constexpr int kNoLevel = 0x7FFFFFFF;

/// The level that `text` means: one of "verbose", "information", "warning", "error" and "critical"
/// in any case of its letters, or a whole decimal number with an optional sign, such as "7" or
/// "-2". kNoLevel for every other text, "1x", "0x2", "" and a number beyond 32 bits among them. By
/// design: "2147483647" is the number of kNoLevel and therefore no level either; a filter that lets
/// nothing pass is set by LogFilter::Set(int, int).
LMW_API int LevelByText(std::wstring_view text);

/// The name of a level, or its number in decimal.
LMW_API std::wstring LevelText(int level);

}  // namespace lmw::diag
