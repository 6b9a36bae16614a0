#include "tools/lmw/point_rows.h"

#include "tools/lmw/csv_table.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"
#include "tools/lmw/whole_files.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace lmw::tool {
namespace {

bool HasColumn(const CsvTable& table, const std::string& title) {
    const std::vector<std::string>& header = table.Header();
    return std::find(header.begin(), header.end(), title) != header.end();
}

PointRows RowsFromCsv(const CsvTable& table, const CoordinateColumns& columns) {
    const bool titled = HasColumn(table, "x") && HasColumn(table, "y");
    const std::size_t x = table.Column(!columns.x.empty() ? columns.x : (titled ? "x" : "2"));
    const std::size_t y = table.Column(!columns.y.empty() ? columns.y : (titled ? "y" : "3"));
    const std::size_t keys = std::min(x, y);
    PointRows rows;
    for (std::size_t row = 0; row < table.NumberOfRows(); ++row) {
        bool same = row > 0;
        for (std::size_t key = 0; key < keys && same; ++key) {
            same = table.Text(row, key) == table.Text(row - 1, key);
        }
        if (!same) {
            rows.emplace_back();
        }
        rows.back().push_back({table.Number(row, x), table.Number(row, y)});
    }
    return rows;
}

/// Takes WKT apart: words, parentheses, commas and numbers.
class WktReader {
 public:
    WktReader(const std::string& name, std::string_view text)
        : name_(name), text_(text), rest_(text) {}

    PointRows Read() {
        PointRows rows;
        while (SkipBlanks(), !rest_.empty()) {
            ReadGeometry(rows);
        }
        return rows;
    }

 private:
    [[noreturn]] void Fail(const std::string& reason) const {
        const std::string_view before = text_.substr(0, text_.size() - rest_.size());
        throw Failure(name_ + ", row " +
                      std::to_string(1 + std::count(before.begin(), before.end(), '\n')) + ": " +
                      reason + (rest_.empty() ? " at the end" : " at " + Quoted(rest_)));
    }

    void SkipBlanks() {
        while (!rest_.empty() && (std::isspace(static_cast<unsigned char>(rest_.front())) != 0)) {
            rest_.remove_prefix(1);
        }
    }

    bool Take(char c) {
        SkipBlanks();
        if (rest_.empty() || rest_.front() != c) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }

    /// Letters up to the next other character, as capitals.
    std::string TakeWord() {
        SkipBlanks();
        std::string word;
        while (!rest_.empty() && (std::isalpha(static_cast<unsigned char>(rest_.front())) != 0)) {
            word += static_cast<char>(std::toupper(static_cast<unsigned char>(rest_.front())));
            rest_.remove_prefix(1);
        }
        return word;
    }

    void ReadGeometry(PointRows& rows) {
        static const std::vector<std::string> kinds{
            "POINT",      "LINESTRING",      "LINEARRING",   "POLYGON",
            "MULTIPOINT", "MULTILINESTRING", "MULTIPOLYGON", "GEOMETRYCOLLECTION"};
        SkipBlanks();
        const std::string_view here = rest_;
        const std::string kind = TakeWord();
        if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end()) {
            rest_ = here;
            Fail("no geometry");
        }
        std::string word = TakeWord();
        if (word == "Z" || word == "M" || word == "ZM") {
            word = TakeWord();
        }
        if (word == "EMPTY") {
            return;
        }
        if (!word.empty()) {
            Fail(Quoted(word) + " is not understood");
        }
        if (!Take('(')) {
            Fail("a parenthesis is missing");
        }
        ReadList(rows, 0);
    }

    /// What follows an opening parenthesis: lists, geometries, or points.
    void ReadList(PointRows& rows, int depth) {
        constexpr int kDeepest = 100;
        if (depth > kDeepest) {
            Fail("too many parentheses");
        }
        std::vector<Geom::Point2D> points;
        do {
            SkipBlanks();
            if (Take('(')) {
                ReadList(rows, depth + 1);
            } else if (!rest_.empty() &&
                       (std::isalpha(static_cast<unsigned char>(rest_.front())) != 0)) {
                ReadGeometry(rows);
            } else {
                points.push_back(TakePoint());
            }
        } while (Take(','));
        if (!Take(')')) {
            Fail("a closing parenthesis is missing");
        }
        if (!points.empty()) {
            rows.push_back(std::move(points));
        }
    }

    Geom::Point2D TakePoint() {
        const std::size_t end = std::min(rest_.find_first_of(",()"), rest_.size());
        std::string_view numbers = Trimmed(rest_.substr(0, end));
        Geom::Point2D point;
        int count = 0;
        for (double* coordinate : {&point.x, &point.y}) {
            const std::size_t blank = std::min(numbers.find_first_of(" \t\r\n"), numbers.size());
            count += ReadFinite(numbers.substr(0, blank), *coordinate) ? 1 : 0;
            numbers = Trimmed(numbers.substr(blank));
        }
        if (count != 2) {
            Fail("no pair of coordinates");
        }
        rest_.remove_prefix(end);
        return point;
    }

    const std::string& name_;
    std::string_view text_;
    std::string_view rest_;
};

}  // namespace

PointRows RowsFromWkt(const std::string& name, std::string_view text) {
    return WktReader(name, text).Read();
}

PointRows ReadPointRows(const std::string& file, const CoordinateColumns& columns) {
    if (file.ends_with(".wkt")) {
        return RowsFromWkt(file, ReadWholeFile(file));
    }
    return RowsFromCsv(CsvTable::ReadFile(file), columns);
}

}  // namespace lmw::tool
