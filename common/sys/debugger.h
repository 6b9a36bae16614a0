#pragma once

// Whether somebody is debugging the process.

#include "common/export.h"

namespace sys {

/// True while a debugger is attached: `IsDebuggerPresent` on Windows, a tracer in the kernel's
/// record of the process on Linux. False when the system does not tell. Any thread; asked anew at
/// each call.
LMW_API bool IsDebuggerAttached();

}  // namespace sys
