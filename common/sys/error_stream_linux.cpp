#include "common/sys/error_stream.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace sys {

bool IsErrorStreamTerminal() {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): writers of the environment are the caller's
    const char* const terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) == 1 && terminal != nullptr &&
           std::string_view(terminal) != "dumb";
}

void WriteErrorStream(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return;
        }
    }
}

}  // namespace sys
