#include "common/sys/terminal.h"

#include <windows.h>

namespace sys {

bool StandardErrorIsTerminal() noexcept {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

}  // namespace sys
