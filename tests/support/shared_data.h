#pragma once

// Measured data and files of other programs that are not part of the repository. Their folder is
// named by the environment variable LMW_TEST_DATA, else by the build's default; tests that need a
// file skip, saying why, where it is absent.

#include <filesystem>
#include <string>
#include <vector>

namespace lmw::test {

/// The path of a file or folder below the data folder (it need not exist).
[[nodiscard]] std::filesystem::path SharedData(const std::string& relative);

/// One line of a CSV file, cut at its commas; quotes have no meaning.
using CsvRow = std::vector<std::string>;

/// The rows of a CSV file, header and lines that start with "#" left out; empty when it cannot be
/// read.
[[nodiscard]] std::vector<CsvRow> ReadCsv(const std::filesystem::path& file);

}  // namespace lmw::test

/// Skips the running test when `path` does not exist.
#define LMW_SKIP_WITHOUT(path)          \
    if (!std::filesystem::exists(path)) \
    GTEST_SKIP() << "no test data at " << (path).string() << " (set LMW_TEST_DATA)"
