#include "common/sys/terminal.h"

#include <unistd.h>

namespace sys {

bool StandardErrorIsTerminal() noexcept {
    return isatty(STDERR_FILENO) == 1;
}

}  // namespace sys
