#pragma once

// How a command gives up.

#include "common/status.h"

#include <stdexcept>
#include <string>

namespace lmw::tool {

/// Bad input, or a file that cannot be read or written. what() is the one line the user reads:
/// which file, which row, and the reason, without the program's name and without a full stop. The
/// program ends with exit code 2. Thrown before any output file is opened.
class Failure : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// Throws what a failed status says, after what it is about if that is given.
void Require(const gtl::status& result, const std::string& about = {});

}  // namespace lmw::tool
