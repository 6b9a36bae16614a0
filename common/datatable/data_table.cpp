#include "common/datatable/data_table.h"

#include "common/errors.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <utility>

namespace {

// The one edge at which want of memory becomes a status.
template <class Action>
gtl::status Guarded(Action&& action) {
    try {
        action();
        return {};
    } catch (const std::exception& failure) {
        return LmwError::unexpected_exception(std::string(failure.what()));
    }
}

template <class Value>
gtl::iterator_range<gtl::strided_iterator<Value>> Strided(Value* first, std::size_t stride,
                                                          std::size_t count) {
    const auto step = static_cast<std::ptrdiff_t>(stride);
    return {gtl::strided_iterator<Value>(first, step),
            gtl::strided_iterator<Value>(first, step, static_cast<std::ptrdiff_t>(count))};
}

}  // namespace

DataTable::DataTable(DataTable&& other) noexcept {
    Swap(other);
}

DataTable& DataTable::operator=(DataTable&& other) noexcept {
    DataTable taken(std::move(other));
    Swap(taken);
    return *this;
}

gtl::status DataTable::Init(const DataParamList& params, std::uint32_t row_count) {
    gtl::status result = Guarded([&] {
        DataTable made;
        for (const DataParamType param : params) {
            const std::size_t index = dataparamtype::IndexOf(param);
            if (index != 0 && index < column_of_.size() && made.column_of_[index] == 0) {
                made.params_.push_back(param);
                made.column_of_[index] = static_cast<std::uint16_t>(made.params_.size());
            }
        }
        made.row_count_ = row_count;
        made.column_count_ = static_cast<std::uint32_t>(made.params_.size());
        made.values_.assign(std::size_t{row_count} * made.column_count_, lmw::kUndefined);
        made.subject_ = subject_;
        made.evaluator_ = std::move(evaluator_);
        made.calculators_ = std::move(calculators_);
        Swap(made);
    });
    if (result.Succeeded()) {
        NotifyChanged_();
    }
    return result;
}

gtl::status DataTable::ResizeRows(std::uint32_t row_count) {
    gtl::status result = Guarded([&] {
        values_.resize(std::size_t{row_count} * column_count_, lmw::kUndefined);
        row_count_ = row_count;
    });
    if (result.Succeeded()) {
        NotifyChanged_();
    }
    return result;
}

void DataTable::Invalidate() {
    std::fill(values_.begin(), values_.end(), lmw::kUndefined);
    NotifyChanged_();
}

void DataTable::Clear() {
    DataTable cleared;
    Swap(cleared);
    if (cleared.calculators_ != nullptr) {
        cleared.calculators_->TableChanged(*this);
    }
}

void DataTable::Swap(DataTable& other) noexcept {
    std::swap(subject_, other.subject_);
    params_.swap(other.params_);
    column_of_.swap(other.column_of_);
    std::swap(row_count_, other.row_count_);
    std::swap(column_count_, other.column_count_);
    values_.swap(other.values_);
    evaluator_.swap(other.evaluator_);
    calculators_.swap(other.calculators_);
}

gtl::status DataTable::Assign(const DataTable& other) {
    gtl::status result = Guarded([&] {
        DataParamList params = other.params_;
        std::vector<double> values = other.values_;
        subject_ = other.subject_;
        params_.swap(params);
        column_of_ = other.column_of_;
        row_count_ = other.row_count_;
        column_count_ = other.column_count_;
        values_.swap(values);
    });
    if (result.Succeeded()) {
        NotifyChanged_();
    }
    return result;
}

bool DataTable::Equals(const DataTable& other) const noexcept {
    if (params_ != other.params_ || row_count_ != other.row_count_) {
        return false;
    }
    // Bits, not numbers: NaN is to equal itself, and -0 to differ from 0.
    return values_.empty() ||
           std::memcmp(values_.data(), other.values_.data(), values_.size() * sizeof(double)) == 0;
}

bool DataTable::IsMissing() const noexcept {
    return params_.empty() && subject_ == 0 && evaluator_ == nullptr && values_.empty();
}

bool DataTable::HasParam(DataParamType param) const {
    const std::size_t index = dataparamtype::IndexOf(param);
    if (index == 0 || index >= column_of_.size()) {
        return false;
    }
    return column_of_[index] != 0 || (evaluator_ != nullptr && evaluator_->CanSupply(param, *this));
}

double DataTable::ValueOrSupplied(GID row, DataParamType param) const {
    if (ColumnOf(param) != 0 || !HasRow_(row) || !HasParam(param)) {
        return Value(row, param);
    }
    return evaluator_->Supply(param, *this, row);
}

DataTable::ConstRange DataTable::Row(GID row) const noexcept {
    if (!HasRow_(row) || column_count_ == 0) {
        return {};
    }
    return Strided(values_.data() + Position(row, 1), 1, column_count_);
}

DataTable::Range DataTable::Row(GID row) noexcept {
    if (!HasRow_(row) || column_count_ == 0) {
        return {};
    }
    return Strided(values_.data() + Position(row, 1), 1, column_count_);
}

DataTable::ConstRange DataTable::Column(DataParamType param) const noexcept {
    const std::uint32_t column = ColumnOf(param);
    if (column == 0 || row_count_ == 0) {
        return {};
    }
    return Strided(values_.data() + Position(1, column), column_count_, row_count_);
}

DataTable::Range DataTable::Column(DataParamType param) noexcept {
    const std::uint32_t column = ColumnOf(param);
    if (column == 0 || row_count_ == 0) {
        return {};
    }
    return Strided(values_.data() + Position(1, column), column_count_, row_count_);
}

std::size_t DataTable::ReadColumn(DataParamType param, std::span<double> values,
                                  datatable::MissingAs missing) const noexcept {
    const ConstRange column = Column(param);
    const std::size_t count = std::min(column.size(), values.size());
    if (missing == datatable::MissingAs::kNan) {
        std::transform(column.begin(), column.begin() + static_cast<std::ptrdiff_t>(count),
                       values.begin(), datatable::ColumnView::WithNan);
    } else {
        std::copy_n(column.begin(), count, values.begin());
    }
    return count;
}

std::size_t DataTable::WriteColumn(DataParamType param, std::span<const double> values) noexcept {
    const Range column = Column(param);
    const std::size_t count = std::min(column.size(), values.size());
    std::copy_n(values.begin(), count, column.begin());
    return count;
}

void DataTable::NotifyChanged_() {
    if (calculators_ != nullptr) {
        calculators_->TableChanged(*this);
    }
}
