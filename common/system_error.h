#pragma once

// Texts of operating-system error codes as users see them. The bare system texts, without a
// fallback, are in sys/last_error.h.

#include "common/export.h"

#include <string>

namespace lmw::diag::impl {

/// The text of an operating-system error code (Windows: as from `GetLastError`; Linux: an errno
/// value).
///
/// 1. Code 0 gives message 27550.
/// 2. A code without a system text gives message 27505 with the code in decimal; never fails.
/// 3. The system's text comes as it is, on Windows usually with a line end at its end.
LMW_API std::wstring SysCodeAsString_(unsigned code);

/// The text of an errno value of the C runtime: message 27550 for 0, message 27505 with the code in
/// decimal for a value without a text.
LMW_API std::wstring CrtCodeAsString_(int code);

}  // namespace lmw::diag::impl

/// The first line of SysCodeAsString_ in narrow text (sys::Narrow): cut at the first "\r" or "\n".
/// By design: the pointer is into one process-wide buffer that the next call on any thread
/// overwrites, so copy the text at once. It always stays readable.
LMW_API const char* LMWErrMsg(unsigned code);
