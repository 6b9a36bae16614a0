#pragma once

// What the worked example's chapters share: the measured data they read, the report they write to
// and the files they leave.

#include "tools/lmw/csv_table.h"
#include "tools/lmw/whole_files.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {

/// The results of a run of the worked example while they are made.
struct DemoResults {
    std::string data;    ///< the folder of the measured data
    std::string folder;  ///< where the files go
    std::string report = {};
    std::vector<OutputFile> files = {};

    /// The full name of a data file, and the table in it. Throws Failure.
    [[nodiscard]] std::string DataFile(std::string_view name) const;
    [[nodiscard]] CsvTable Table(std::string_view name) const;

    /// Adds a file of the folder.
    void Keep(std::string_view name, std::string content);
};

/// A number for people: so many decimals.
[[nodiscard]] std::string Decimals(double value, int decimals);

[[nodiscard]] std::string RightAligned(std::string_view text, std::size_t width);
[[nodiscard]] std::string Padded(std::string_view text, std::size_t width);
/// Decimals(), right-aligned.
[[nodiscard]] std::string Column(double value, std::size_t width, int decimals);

}  // namespace lmw::tool
