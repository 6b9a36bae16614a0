#pragma once

// Table-driven conversion of enumerations to and from text and numbers. An enumeration declares one
// table of rows; everything else is shared. Numbers and truth values are converted by
// str/meta_convert.h, the analysis kinds by analysis_kind.h.

#include "common/export.h"
#include "common/status.h"

#include <cstdint>
#include <mutex>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace meta {

/// Which text of a value a conversion uses. A form that a row lacks falls back to the next one
/// named. Values other than these three count as kDisplay.
enum class MetaFormatType : std::int32_t {
    kKey = 0,            ///< the stable key, as written to files
    kSecondDisplay = 1,  ///< the second display text, else the first, else the key
    kDisplay = 2,        ///< the first display text, else the second, else the key
};

/// The error that `text` is not one of `allowed`: gtl::Convert_error_status::OutOfRangeStatus with
/// the allowed texts joined by ", ".
LMW_API gtl::status ErrConvertOneOf(const std::wstring& text,
                                    std::span<const std::wstring> allowed);

/// The conversions, all static. `context` is there for callers that forward it; no conversion reads
/// it. Any number of threads may convert through one table.
///
/// Example:
///     const meta::MetaEnumCommon::XRef kRows[] = {{0, "none", 0, 0, 0}, {1, "full", 0, 0, 0}};
///     const meta::MetaEnumCommon::Table kTable(kRows, 0);
///     std::int32_t value = 0;
///     status = meta::MetaEnumCommon::ConvertFrom(value, kTable, meta::MetaFormatType::kKey,
///     L"full", 0);
class LMW_API MetaEnumCommon {
 public:
    MetaEnumCommon() = delete;

    /// One value of an enumeration.
    struct XRef {
        std::int32_t value = 0;
        const char* key = "";        ///< the stable key, ASCII, NUL-terminated
        std::uint32_t reserved = 0;  ///< read by no conversion
        std::uint32_t text1 = 0;  ///< message identifier of the first display text, 0 when absent
        std::uint32_t text2 = 0;  ///< message identifier of the second display text, 0 when absent
    };

    /// The rows of one enumeration, which must outlive the table, and the number of its default
    /// row. The table owns an index of its values, built on the first look-up under one-time
    /// initialisation; a look-up is a binary search. When a value or a text stands in several rows,
    /// the first of them is meant. A table has at least one row.
    class LMW_API Table {
     public:
        Table(std::span<const XRef> rows, std::size_t default_row) noexcept
            : rows_(rows), default_row_(default_row) {}
        Table(const Table&) = delete;
        Table& operator=(const Table&) = delete;
        ~Table() = default;

        [[nodiscard]] std::span<const XRef> Rows() const noexcept { return rows_; }
        [[nodiscard]] const XRef& DefaultRow() const noexcept { return rows_[default_row_]; }

        /// The first row with this value, null when there is none.
        [[nodiscard]] const XRef* Find(std::int64_t value) const;

     private:
        std::span<const XRef> rows_;
        std::size_t default_row_;
        mutable std::once_flag index_built_;
        mutable std::vector<std::pair<std::int32_t, std::uint32_t>>
            index_;  // (value, row), ascending
    };

    /// The row of `*value`; the default row when the value is missing from the table or the pointer
    /// null.
    static const XRef* FindEntry(const Table& table, const std::int32_t* value);

    /// The text of `value` in the form `format`. By design: a value missing from the table gives
    /// the default row's text, not an error, so that files of newer versions can still be shown.
    static gtl::status ConvertTo(std::wstring& text, const Table& table, MetaFormatType format,
                                 std::int32_t value, int context);

    /// The number of `value`'s row; like the text, that of the default row when the value is
    /// missing.
    static gtl::status ConvertTo(std::int64_t& number, const Table& table, std::int32_t value,
                                 int context);

    /// The value whose text in the form `format` equals `text` exactly. Without one the status is
    /// that of error_invalid_value and `value` stays untouched.
    static gtl::status ConvertFrom(std::int32_t& value, const Table& table, MetaFormatType format,
                                   const std::wstring& text, int context);

    /// `number` if the table has it, all 64 bits compared; else the status of error_invalid_value
    /// with the number in decimal, and `value` stays untouched.
    static gtl::status ConvertFrom(std::int32_t& value, const Table& table, std::int64_t number,
                                   int context);

    /// The error that `text` is none of the table's texts in the form `format` (ErrConvertOneOf).
    static gtl::status error_invalid_value(const Table& table, const std::wstring& text,
                                           MetaFormatType format = MetaFormatType::kKey);
};

}  // namespace meta
