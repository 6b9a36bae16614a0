#pragma once

// The one way in which the library ends the process: an error at a place that can neither return
// nor repair it. Everything else returns a gtl::status.

#include "common/export.h"
#include "common/status.h"

namespace lmw {

/// Logs `reason` as a critical message of `place` and `line` (whatever the filter says), calls
/// IApp::Fatal of the host, and aborts the process. Does not return, and no destructor runs.
[[noreturn]] LMW_API void Fatal(const gtl::status& reason, const char* place, int line) noexcept;

}  // namespace lmw
