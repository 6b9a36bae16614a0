#include "tools/lmw/csv_table.h"

#include "common/str/number_text.h"
#include "common/undefined.h"

#include "tools/lmw/text.h"
#include "tools/lmw/whole_files.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace lmw::tool {
namespace {

// The separator outside quotes that a first line uses.
char SeparatorOf(std::string_view line) {
    bool quoted = false;
    bool tab = false;
    for (const char character : line) {
        if (character == '"') {
            quoted = !quoted;
        } else if (!quoted && character == ';') {
            return ';';
        } else if (!quoted && character == '\t') {
            tab = true;
        }
    }
    return tab ? '\t' : ',';
}

// The position after the closing quote; the cell's text goes to `cell`. Returns npos when the quote
// does not close on the line.
std::size_t ReadQuoted(std::string_view line, std::size_t position, std::string& cell) {
    for (++position; position < line.size(); ++position) {
        if (line[position] != '"') {
            cell += line[position];
        } else if (position + 1 < line.size() && line[position + 1] == '"') {
            cell += '"';
            ++position;
        } else {
            return position + 1;
        }
    }
    return std::string_view::npos;
}

// Cuts a line into cells; false when a quote is not closed or text follows a closing quote.
bool SplitCells(std::string_view line, char separator, std::vector<std::string>& cells) {
    for (std::size_t position = 0;;) {
        std::string cell;
        while (position < line.size() && line[position] != separator &&
               (line[position] == ' ' || line[position] == '\t')) {
            ++position;
        }
        if (position < line.size() && line[position] == '"') {
            position = ReadQuoted(line, position, cell);
            if (position == std::string_view::npos) {
                return false;
            }
            const std::size_t end = std::min(line.find(separator, position), line.size());
            if (!Trimmed(line.substr(position, end - position)).empty()) {
                return false;
            }
            position = end;
        } else {
            const std::size_t end = std::min(line.find(separator, position), line.size());
            cell = Trimmed(line.substr(position, end - position));
            position = end;
        }
        cells.push_back(std::move(cell));
        if (position >= line.size()) {
            return true;
        }
        ++position;
    }
}

bool IsNumber(const std::string& cell) {
    double value = 0.0;
    return ReadFinite(cell, value);
}

}  // namespace

CsvTable CsvTable::ReadFile(const std::string& file) {
    return FromText(file, ReadWholeFile(file));
}

CsvTable CsvTable::FromText(std::string name, std::string_view text) {
    CsvTable table(std::move(name));
    if (text.find('\0') != std::string_view::npos) {
        throw table.About("not a text file");
    }
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    char separator = 0;
    for (std::size_t line_number = 1; !text.empty(); ++line_number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        table.AddLine_(line_number, line, separator);
    }
    return table;
}

void CsvTable::AddLine_(std::size_t line_number, std::string_view line, char& separator) {
    if (Trimmed(line).empty()) {
        return;
    }
    if (line.front() == '#') {
        comments_.emplace_back(Trimmed(line.substr(1)));
        return;
    }
    const bool first = separator == 0;
    if (first) {
        separator = SeparatorOf(line);
    }
    Row row;
    row.line = line_number;
    const bool understood = SplitCells(line, separator, row.cells);
    rows_.push_back(std::move(row));
    if (!understood) {
        throw At(rows_.size() - 1, "a quote is not closed, or text follows a closing quote");
    }
    if (first && std::none_of(rows_[0].cells.begin(), rows_[0].cells.end(), IsNumber)) {
        header_ = std::move(rows_[0].cells);
        rows_.clear();
    }
}

std::size_t CsvTable::Column(std::string_view wanted) const {
    const auto found = std::find(header_.begin(), header_.end(), wanted);
    if (found != header_.end()) {
        return static_cast<std::size_t>(found - header_.begin());
    }
    std::uint32_t number = 0;
    if (!ReadCount(wanted, number) || number == 0) {
        throw About("no column is called " + Quoted(wanted));
    }
    return number - 1;
}

std::string CsvTable::ColumnTitle(std::size_t column) const {
    return column < header_.size() ? header_[column] : std::string();
}

const std::string& CsvTable::Text(std::size_t row, std::size_t column) const {
    const std::vector<std::string>& cells = rows_.at(row).cells;
    if (column >= cells.size()) {
        throw At(row, "column " + std::to_string(column + 1) + " is missing, the row has " +
                          std::to_string(cells.size()));
    }
    return cells[column];
}

double CsvTable::Number(std::size_t row, std::size_t column) const {
    const std::string& cell = Text(row, column);
    double value = 0.0;
    if (cell.empty()) {
        throw At(row, "column " + std::to_string(column + 1) + " is empty");
    }
    if (!ReadFinite(cell, value) || !IsDefined(value)) {
        throw At(row, Quoted(cell) + " is not a number");
    }
    return value;
}

Failure CsvTable::At(std::size_t row, const std::string& reason) const {
    return Failure(name_ + ", row " + std::to_string(rows_.at(row).line) + ": " + reason);
}

Failure CsvTable::About(const std::string& reason) const {
    return Failure(name_ + ": " + reason);
}

CsvText& CsvText::Cell(double value) {
    Separate_();
    if (IsDefined(value) && std::isfinite(value)) {
        text_ += str::DoubleNarrowText(value);
    }
    return *this;
}

CsvText& CsvText::Cell(std::string_view text) {
    Separate_();
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        text_ += text;
        return *this;
    }
    text_ += '"';
    for (const char character : text) {
        text_.append(character == '"' ? 2 : 1, character);
    }
    text_ += '"';
    return *this;
}

CsvText& CsvText::EndRow() {
    text_ += '\n';
    row_started_ = false;
    return *this;
}

CsvText& CsvText::Comment(std::string_view text) {
    text_ += "# " + OneLine(text) + '\n';
    return *this;
}

void CsvText::Separate_() {
    if (row_started_) {
        text_ += ',';
    }
    row_started_ = true;
}

}  // namespace lmw::tool
