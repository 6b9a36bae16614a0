#pragma once

// Changes this process's environment: the standard library has no words for it. The
// sources, one per platform, are in tests/sys.

#include <string>

namespace lmw::test {

/// An empty `value` defines the variable as empty.
void DefineEnvironmentVariable(const std::string& name, const std::string& value);
void RemoveEnvironmentVariable(const std::string& name);

}  // namespace lmw::test
