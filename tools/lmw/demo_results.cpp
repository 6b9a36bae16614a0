#include "tools/lmw/demo_results.h"

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

void DemoResults::Keep(std::string_view name, std::string content) {
    files.push_back({folder + "/" + std::string(name), std::move(content)});
}

std::string Decimals(double value, int decimals) {
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, decimals);
    return {buffer.data(), end.ptr};
}

std::string RightAligned(std::string_view text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + std::string(text);
}

std::string Padded(std::string_view text, std::size_t width) {
    std::string result(text);
    result.resize(std::max(width, text.size()), ' ');
    return result;
}

std::string Column(double value, std::size_t width, int decimals) {
    return RightAligned(Decimals(value, decimals), width);
}

}  // namespace lmw::tool
