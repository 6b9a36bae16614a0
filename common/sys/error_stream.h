#pragma once

// The process' standard error, written directly: unbuffered, and usable until the process ends.

#include "common/export.h"

#include <string_view>

namespace sys {

/// True when standard error is a terminal that understands the usual colour sequences. Asked anew
/// at each call; any thread.
LMW_API bool IsErrorStreamTerminal();

/// Writes UTF-8 text in one piece; to a Windows console as the characters it stands for. Failures
/// are ignored: there is nowhere to report them. Any thread.
LMW_API void WriteErrorStream(std::string_view text);

}  // namespace sys
