#pragma once

// Options that take numbers, read the same way as the numbers of files: independent of the locale,
// the whole text or nothing, finite.

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

namespace lmw::tool {

/// Adds an option that takes one finite number. `value` stays empty when the option is not given.
CLI::Option* AddNumber(CLI::App& command, const std::string& names, std::optional<double>& value,
                       const std::string& description);

/// Adds an option that takes one or more finite numbers, separated by commas.
CLI::Option* AddNumberList(CLI::App& command, const std::string& names, std::vector<double>& values,
                           const std::string& description);

/// Adds an option that takes a whole number from `least` to `most`. `value` keeps what it held when
/// the option is not given.
CLI::Option* AddCount(CLI::App& command, const std::string& names, unsigned& value, unsigned least,
                      unsigned most, const std::string& description);

}  // namespace lmw::tool
