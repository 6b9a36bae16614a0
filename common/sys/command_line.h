#pragma once

// The command line of the running process, asked of the operating system: a library is never handed
// main's arguments, and its host may have changed them.

#include "common/export.h"

#include <string>
#include <vector>

namespace sys {

/// The arguments the process was started with, the program's own name first.
/// Windows: `GetCommandLineW` split by `CommandLineToArgvW`. Linux: the kernel's record of the
/// process, converted by Widen. Empty when the system gives none. Any thread; reads anew at each
/// call.
LMW_API std::vector<std::wstring> CommandLine();

}  // namespace sys
