#pragma once

// Whether somebody watches the program's output.

#include "common/export.h"

namespace sys {

/// Whether the standard error output goes to a terminal, where a line can be written over.
LMW_API bool StandardErrorIsTerminal() noexcept;

}  // namespace sys
