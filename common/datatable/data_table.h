#pragma once

// Tables of results and inputs: one row for each element or node, one column for each parameter
// type. What a parameter is, is in param_registry.h. Surprising: a missing value is an ordinary
// number (lmw::kUndefined), so test it before computing, or read columns with NaN in its place.

#include "common/datatable/column_view.h"
#include "common/datatable/data_param_type.h"
#include "common/datatable/table_collaborators.h"
#include "common/export.h"
#include "common/gid.h"
#include "common/iterator_range.h"
#include "common/status.h"
#include "common/str/number_text.h"
#include "common/strided_iterator.h"
#include "common/undefined.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace datatable {

/// How a bulk read gives the missing value.
enum class MissingAs : std::uint32_t {
    kStored,  ///< as it is stored, lmw::kUndefined
    kNan,     ///< as a quiet NaN
};

}  // namespace datatable

/// A block of doubles, row-major, with the parameters of its columns.
///
/// 1. Rows and columns are counted from 1. The row number of an element is the value of its GID;
///    a GID that is 0 or above the number of rows selects nothing.
/// 2. The value of row r in column c stands at position (c - 1) + columns * (r - 1); every position
///    of a table without rows or columns is 0, and its rows and columns are empty ranges.
/// 3. A cell that was never written, or belongs to a row that was cut off and added again, is
///    missing.
/// 4. What the table does not store is not an error: empty ranges, the undefined value, nothing
///    copied, empty text.
/// 5. A default-made table is missing (IsMissing).
///
/// Values are in the unit of their parameter. They are not checked when they are written
/// (dataparamtype::IsRangeValid does that).
///
/// Changing the table as a whole (Init, ResizeRows, Assign, Invalidate, Clear) tells the
/// calculators object when it is done. Where such a change returns a status, it fails only for want
/// of memory (LmwError::unexpected_exception); the table is then as before.
///
/// Threads: any number may read one table while none writes to it; different cells may be written
/// at once.
///
/// Example:
///     DataTable table;
///     gtl::status result = table.Init({DataParamType::TotalHead, DataParamType::PorePressure}, 2);
///     table.SetValue(1, DataParamType::TotalHead, 12.5);
///     for (const double head : table.Column(DataParamType::TotalHead)) { … }  // 12.5, missing
class LMW_API DataTable {
 public:
    using Range = gtl::iterator_range<gtl::strided_iterator<double>>;
    using ConstRange = gtl::iterator_range<gtl::strided_iterator<const double>>;

    DataTable() = default;
    /// Copies are made by Assign, which says what is copied.
    DataTable(const DataTable&) = delete;
    DataTable& operator=(const DataTable&) = delete;
    /// Takes everything, the collaborators too, and tells nobody; `other` becomes missing.
    DataTable(DataTable&& other) noexcept;
    DataTable& operator=(DataTable&& other) noexcept;
    ~DataTable() = default;

    /// Makes a table of these columns and this many rows, all values missing. The columns stand in
    /// the order of `params`; repeats of a parameter, the null parameter and values at or above
    /// dataparamtype::kParamCount are left out.
    gtl::status Init(const DataParamList& params, std::uint32_t row_count = 0);

    /// Cuts rows off or adds rows of missing values at the end; the columns stay.
    gtl::status ResizeRows(std::uint32_t row_count);

    /// Sets every value missing; parameters and number of rows stay.
    void Invalidate();

    /// Becomes a default-made table and lets go of the collaborators; the calculators object it had
    /// is told last.
    void Clear();

    /// Exchanges everything with `other`, the collaborators too. Nobody is told: values and those
    /// who know about them move together.
    void Swap(DataTable& other) noexcept;

    /// Takes over the subject, the parameters, the rows and the values of `other`. The
    /// collaborators of both tables stay where they are; this table's calculators object is told.
    gtl::status Assign(const DataTable& other);

    /// Whether both tables have the same parameters in the same order, the same number of rows, and
    /// values of the same bits: -0 differs from 0, and NaN equals itself. Subject and collaborators
    /// do not count.
    [[nodiscard]] bool Equals(const DataTable& other) const noexcept;

    /// Whether there is nothing: no parameters, no values, no subject and no evaluator.
    [[nodiscard]] bool IsMissing() const noexcept;

    /// The record type whose instances the rows are (elements, nodes, slices); 0 when not said.
    [[nodiscard]] GID Subject() const noexcept { return subject_; }
    void SetSubject(GID record_type) noexcept { subject_ = record_type; }

    [[nodiscard]] const DataParamList& Params() const noexcept { return params_; }
    [[nodiscard]] std::uint32_t RowCount() const noexcept { return row_count_; }
    [[nodiscard]] std::uint32_t ColumnCount() const noexcept { return column_count_; }

    /// The column that stores `param`, counted from 1; 0 when none does.
    [[nodiscard]] std::uint32_t ColumnOf(DataParamType param) const noexcept;

    /// Whether the table has values of `param`: stored, or supplied by the evaluator.
    /// By design: always false for the null parameter, also when the evaluator offers it; callers
    /// pass Null for "no parameter" and would otherwise be given a value for it.
    [[nodiscard]] bool HasParam(DataParamType param) const;

    /// Where the value of a row in a column stands in the block (property 2).
    [[nodiscard]] std::size_t Position(std::uint32_t row, std::uint32_t column) const noexcept;

    /// The stored value; undefined when the table does not store `param` or has no such row.
    [[nodiscard]] double Value(GID row, DataParamType param) const noexcept;

    /// Writes a value; false, and nothing is written, when there is no such cell.
    bool SetValue(GID row, DataParamType param, double value) noexcept;

    /// The stored value, else that of the evaluator; undefined when neither has one.
    [[nodiscard]] double ValueOrSupplied(GID row, DataParamType param) const;

    /// ValueOrSupplied as text: the shortest that reads back to the same double (str::DoubleText),
    /// empty for a missing value. `Text` is std::string or std::wstring.
    template <class Text>
    [[nodiscard]] Text GetAs(GID row, DataParamType param) const;

    /// The values of a row in the order of the columns, without a gap; empty when there is no such
    /// row.
    [[nodiscard]] ConstRange Row(GID row) const noexcept;
    [[nodiscard]] Range Row(GID row) noexcept;

    /// The values of a column from the first row to the last; empty when the table does not store
    /// `param`.
    [[nodiscard]] ConstRange Column(DataParamType param) const noexcept;
    [[nodiscard]] Range Column(DataParamType param) noexcept;

    /// The values of a column, NaN in place of missing ones.
    [[nodiscard]] datatable::ColumnView ColumnWithNan(DataParamType param) const noexcept {
        return datatable::ColumnView(Column(param));
    }

    /// Copies a column, from row 1 on, into `values`, as far as both go; what is beyond stays
    /// untouched. Returns how many values were copied: 0 when the table does not store `param`.
    std::size_t ReadColumn(
        DataParamType param, std::span<double> values,
        datatable::MissingAs missing = datatable::MissingAs::kStored) const noexcept;

    /// Copies `values` into a column, from row 1 on, in the same way. `values` may not lie within
    /// this table.
    std::size_t WriteColumn(DataParamType param, std::span<const double> values) noexcept;

    /// The evaluator and the calculators object, null for none.
    [[nodiscard]] const std::shared_ptr<const IParamEvaluator>& Evaluator() const noexcept {
        return evaluator_;
    }
    void SetEvaluator(std::shared_ptr<const IParamEvaluator> evaluator) noexcept {
        evaluator_ = std::move(evaluator);
    }
    [[nodiscard]] const std::shared_ptr<ICalculators>& Calculators() const noexcept {
        return calculators_;
    }
    void SetCalculators(std::shared_ptr<ICalculators> calculators) noexcept {
        calculators_ = std::move(calculators);
    }

 private:
    void NotifyChanged_();
    [[nodiscard]] bool HasRow_(GID row) const noexcept { return row - 1 < row_count_; }

    GID subject_ = 0;
    DataParamList params_;
    std::array<std::uint16_t, dataparamtype::kParamCount> column_of_{};  // 0: not stored
    std::uint32_t row_count_ = 0;
    std::uint32_t column_count_ = 0;
    std::vector<double> values_;
    std::shared_ptr<const IParamEvaluator> evaluator_;
    std::shared_ptr<ICalculators> calculators_;
};

// Implementation of what is called once for each value.

inline std::uint32_t DataTable::ColumnOf(DataParamType param) const noexcept {
    const std::size_t index = dataparamtype::IndexOf(param);
    return index < column_of_.size() ? column_of_[index] : 0;
}

inline std::size_t DataTable::Position(std::uint32_t row, std::uint32_t column) const noexcept {
    if (row_count_ == 0 || column_count_ == 0) {
        return 0;
    }
    return (std::size_t{column} - 1) + std::size_t{column_count_} * (std::size_t{row} - 1);
}

inline double DataTable::Value(GID row, DataParamType param) const noexcept {
    const std::uint32_t column = ColumnOf(param);
    return column != 0 && HasRow_(row) ? values_[Position(row, column)] : lmw::kUndefined;
}

inline bool DataTable::SetValue(GID row, DataParamType param, double value) noexcept {
    const std::uint32_t column = ColumnOf(param);
    if (column == 0 || !HasRow_(row)) {
        return false;
    }
    values_[Position(row, column)] = value;
    return true;
}

template <class Text>
Text DataTable::GetAs(GID row, DataParamType param) const {
    static_assert(std::is_same_v<Text, std::string> || std::is_same_v<Text, std::wstring>);
    const double value = ValueOrSupplied(row, param);
    if (!lmw::IsDefined(value)) {
        return {};
    }
    if constexpr (std::is_same_v<Text, std::string>) {
        return str::DoubleNarrowText(value);
    } else {
        return str::DoubleText(value);
    }
}
