#include "tests/support/environment.h"

#include <windows.h>

namespace lmw::test {

void DefineEnvironmentVariable(const std::string& name, const std::string& value) {
    SetEnvironmentVariableA(name.c_str(), value.c_str());
}

void RemoveEnvironmentVariable(const std::string& name) {
    SetEnvironmentVariableA(name.c_str(), nullptr);
}

}  // namespace lmw::test
