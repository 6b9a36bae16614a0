#pragma once

// Switches in the process environment.

#include "common/export.h"

namespace sys {

/// True when the variable `name` (ASCII) is defined, whatever its value: the empty text counts too.
/// Any thread, as long as no other changes the environment at the same time; asked anew at each
/// call.
LMW_API bool IsEnvironmentVariableDefined(const char* name);

}  // namespace sys
