#include "common/sys/debugger.h"

#include <windows.h>

namespace sys {

bool IsDebuggerAttached() {
    return IsDebuggerPresent() != FALSE;
}

}  // namespace sys
