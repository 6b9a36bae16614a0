#include "tools/lmw/demo_results.h"

#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace lmw::tool {

std::string DemoResults::DataFile(std::string_view name) const {
    return data + "/" + std::string(name) + ".csv";
}

CsvTable DemoResults::Table(std::string_view name) const {
    return CsvTable::ReadFile(DataFile(name));
}

NamedRegions DemoResults::Regions(std::string_view name) const {
    const CsvTable table = Table(name);
    NamedRegions regions;
    for (std::size_t row = 0; row < table.NumberOfRows(); ++row) {
        if (regions.names.empty() || regions.names.back() != table.Text(row, 0)) {
            regions.names.push_back(table.Text(row, 0));
        }
    }
    regions.polygons = ReadPointRows(DataFile(name), {"2", "3"});
    if (regions.names.empty()) {
        throw table.About("no regions");
    }
    std::vector<std::string> distinct = regions.names;
    std::sort(distinct.begin(), distinct.end());
    if (std::adjacent_find(distinct.begin(), distinct.end()) != distinct.end()) {
        throw table.About("a region stands in two places");
    }
    return regions;
}

void DemoResults::Keep(std::string_view name, std::string content) {
    doc::file::Name address;
    address.ProjectPath(Wide(Archive())).Analysis(analysis).FNameExt(Wide(name));
    files.push_back({{folder + "/" + std::string(name), std::move(content)}, std::move(address)});
}

void DemoResults::KeepStep(std::uint32_t step, std::string_view name, std::string content) {
    Keep(name, std::move(content));
    DemoFile& kept = files.back();
    kept.name.Step(Step::CreateFromStepNumber(step));
    kept.file.name.insert(kept.file.name.rfind('.'), "-" + std::to_string(step));
}

std::string DemoResults::Archive() const {
    return folder + "/demo.lwz";
}

std::string DemoResults::ShortName(const DemoFile& file) const {
    return file.file.name.substr(folder.size() + 1);
}

std::string Decimals(double value, int decimals) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, decimals);
    return {buffer.data(), end.ptr};
}

std::string Column(double value, std::size_t width, int decimals) {
    return RightAligned(Decimals(value, decimals), width);
}

}  // namespace lmw::tool
