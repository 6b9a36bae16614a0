#pragma once

// The whole public interface of the library in one include. Programs that care about compile time
// include the headers of the subsystems they use instead; docs/architecture.md lists the rooms.

#include "common/export.h"
#include "common/str/tokenize.h"
#include "common/undefined.h"
#include "common/version.h"
