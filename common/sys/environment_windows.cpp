#include "common/sys/environment.h"

#include <windows.h>

namespace sys {

bool IsEnvironmentVariableDefined(const char* name) {
    // Of an empty value the length is 0 as well; only the error tells it from an absent variable.
    SetLastError(ERROR_SUCCESS);
    return GetEnvironmentVariableA(name, nullptr, 0) != 0 ||
           GetLastError() != ERROR_ENVVAR_NOT_FOUND;
}

}  // namespace sys
