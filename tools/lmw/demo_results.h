#pragma once

// What the worked example's chapters share: the measured data they read, the report they write to
// and the files they leave, in a folder and under their names in a project archive.

#include "common/file/name.h"

#include "tools/lmw/csv_table.h"
#include "tools/lmw/point_rows.h"
#include "tools/lmw/whole_files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {

/// The named polygons of a section, in the order of its file.
struct NamedRegions {
    std::vector<std::string> names;
    PointRows polygons;
};

/// A file of the folder and its address in the project.
struct DemoFile {
    OutputFile file;
    doc::file::Name name;
};

/// The results of a run of the worked example while they are made.
struct DemoResults {
    std::string data;    ///< the folder of the measured data
    std::string folder;  ///< where the files go
    std::string report = {};
    /// Under which analysis of the project files are kept from now on.
    std::wstring analysis = {};
    std::vector<DemoFile> files = {};

    /// The full name of a data file, and the table in it. Throws Failure.
    [[nodiscard]] std::string DataFile(std::string_view name) const;
    [[nodiscard]] CsvTable Table(std::string_view name) const;
    /// The same for a section. Throws Failure when it has no regions or one stands in two places.
    [[nodiscard]] NamedRegions Regions(std::string_view name) const;

    /// Adds a file of the analysis.
    void Keep(std::string_view name, std::string content);
    /// Adds a file of a step of the analysis: "element.csv" of step 2 is "element-2.csv" in the
    /// folder.
    void KeepStep(std::uint32_t step, std::string_view name, std::string content);

    /// The path of the project archive, and a file's name without the folder.
    [[nodiscard]] std::string Archive() const;
    [[nodiscard]] std::string ShortName(const DemoFile& file) const;
};

/// A number for people: so many decimals.
[[nodiscard]] std::string Decimals(double value, int decimals);

/// The same, right-aligned.
[[nodiscard]] std::string Column(double value, std::size_t width, int decimals);

}  // namespace lmw::tool
