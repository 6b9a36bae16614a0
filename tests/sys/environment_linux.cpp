#include "tests/support/environment.h"

#include <stdlib.h>

namespace lmw::test {

void DefineEnvironmentVariable(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

void RemoveEnvironmentVariable(const std::string& name) {
    unsetenv(name.c_str());
}

}  // namespace lmw::test
