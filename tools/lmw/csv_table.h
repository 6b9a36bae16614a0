#pragma once

// Tables of comma-separated values, in and out.
// Reading is strict where a mistake would change a number: a cell that is asked for as a number
// must be one from end to end, and every complaint names the file and the row. Surprising: rows are
// counted as a text editor counts lines, comments and blank lines included.

#include "tools/lmw/failure.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {

/// The rows of one CSV file as text.
///
/// - Encoding UTF-8, with or without a byte order mark; lines end in LF or CR LF.
/// - Blank lines and lines whose first character is "#" are left out (the latter are Comments()).
/// - The first row decides the separator: semicolon if it has one, else tab if it has one, else a
///   comma.
/// - A cell in double quotes may hold separators; "" stands for one quote. A quoted cell ends on
///   its line. Blanks around a cell do not belong to it.
/// - The first row is a header when none of its cells is a number.
class CsvTable {
 public:
    /// Reads a file, named in UTF-8. Throws Failure when there is no such file, it cannot be read,
    /// is not text, or a quote is not closed.
    [[nodiscard]] static CsvTable ReadFile(const std::string& file);

    /// The same from text; `name` is what complaints call it.
    [[nodiscard]] static CsvTable FromText(std::string name, std::string_view text);

    [[nodiscard]] const std::string& Name() const { return name_; }
    /// The comment lines without "#" and the blanks after it.
    [[nodiscard]] const std::vector<std::string>& Comments() const { return comments_; }
    /// The header cells, empty without a header.
    [[nodiscard]] const std::vector<std::string>& Header() const { return header_; }
    /// Rows of data; the header is none.
    [[nodiscard]] std::size_t NumberOfRows() const { return rows_.size(); }

    /// The index of a column from its exact header text, else from its number counted from 1.
    /// Throws Failure when there is no such column; a number is only checked where a cell is asked
    /// for.
    [[nodiscard]] std::size_t Column(std::string_view wanted) const;

    /// The header text of a column, empty without one.
    [[nodiscard]] std::string ColumnTitle(std::size_t column) const;

    /// The cell of a data row; throws Failure when the row is too short.
    [[nodiscard]] const std::string& Text(std::size_t row, std::size_t column) const;

    /// The cell as a finite number; throws Failure when it is missing, empty or not one.
    [[nodiscard]] double Number(std::size_t row, std::size_t column) const;

    /// A complaint about a data row: "<file>, row <n>: <reason>".
    [[nodiscard]] Failure At(std::size_t row, const std::string& reason) const;

    /// A complaint about the file: "<file>: <reason>".
    [[nodiscard]] Failure About(const std::string& reason) const;

 private:
    struct Row {
        std::size_t line = 0;
        std::vector<std::string> cells;
    };

    explicit CsvTable(std::string name) : name_(std::move(name)) {}
    void AddLine_(std::size_t line_number, std::string_view line, char& separator);

    std::string name_;
    std::vector<std::string> comments_;
    std::vector<std::string> header_;
    std::vector<Row> rows_;
};

/// Builds the text of a CSV table: comma-separated, LF at the end of each line, numbers as the
/// shortest text that reads back to the same double, undefined, infinite and NaN ones
/// as empty cells.
class CsvText {
 public:
    CsvText& Cell(double value);
    /// Quoted when it holds a comma, a quote or a line break.
    CsvText& Cell(std::string_view text);
    CsvText& EndRow();
    CsvText& Comment(std::string_view text);

    [[nodiscard]] const std::string& Text() const { return text_; }

 private:
    void Separate_();

    std::string text_;
    bool row_started_ = false;
};

}  // namespace lmw::tool
