#include "common/sys/environment.h"

#include <cstdlib>

namespace sys {

// NOLINTNEXTLINE(concurrency-mt-unsafe): the header puts the environment's writers under the caller
bool IsEnvironmentVariableDefined(const char* name) {
    return std::getenv(name) != nullptr;
}

}  // namespace sys
