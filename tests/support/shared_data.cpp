#include "tests/support/shared_data.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace lmw::test {

std::filesystem::path SharedData(const std::string& relative) {
    const char* folder = std::getenv("LMW_TEST_DATA");  // NOLINT(concurrency-mt-unsafe): read only
    return std::filesystem::path(folder != nullptr ? folder : LMW_DEFAULT_TEST_DATA) / relative;
}

std::vector<CsvRow> ReadCsv(const std::filesystem::path& file) {
    std::vector<CsvRow> rows;
    std::ifstream stream(file);
    std::string line;
    bool header = true;
    while (std::getline(stream, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (header) {
            header = false;
            continue;
        }
        CsvRow& row = rows.emplace_back();
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, ',');) {
            row.push_back(cell);
        }
    }
    return rows;
}

}  // namespace lmw::test
