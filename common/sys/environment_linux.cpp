#include "common/sys/environment.h"

#include <cstdlib>

namespace sys {

bool IsEnvironmentVariableDefined(const char* name) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the header puts writers of the environment under the caller
    return std::getenv(name) != nullptr;
}

}  // namespace sys
