#include "common/sys/environment.h"

#include <cstdlib>

namespace sys {

bool IsEnvironmentVariableDefined(const char* name) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): writers of the environment are the caller's
    return std::getenv(name) != nullptr;
}

}  // namespace sys
