#pragma once

// A table column as plotting and statistics tools want it: NaN where a value is missing.

#include "common/iterator_range.h"
#include "common/strided_iterator.h"
#include "common/undefined.h"

#include <compare>
#include <cstddef>
#include <iterator>
#include <limits>

namespace datatable {

/// Reads the values of a column, each missing one as a quiet NaN. Refers to the table, owns
/// nothing, and is valid as long as the table's rows are not resized.
///
/// Example:
///     const datatable::ColumnView heads = table.ColumnWithNan(DataParamType::TotalHead);
///     plot(heads.begin(), heads.end());
class ColumnView {
 public:
    using Source = gtl::strided_iterator<const double>;

    /// A random-access iterator by value: what it gives is computed, not stored.
    class iterator {
     public:
        using iterator_concept = std::random_access_iterator_tag;
        using iterator_category = std::input_iterator_tag;
        using value_type = double;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = double;

        constexpr iterator() noexcept = default;
        explicit constexpr iterator(Source source) noexcept : source_(source) {}

        [[nodiscard]] constexpr double operator*() const noexcept { return WithNan(*source_); }
        [[nodiscard]] constexpr double operator[](difference_type steps) const noexcept {
            return WithNan(source_[steps]);
        }
        constexpr iterator& operator++() noexcept { return *this += 1; }
        constexpr iterator operator++(int) noexcept { return iterator(source_++); }
        constexpr iterator& operator--() noexcept { return *this -= 1; }
        constexpr iterator operator--(int) noexcept { return iterator(source_--); }
        constexpr iterator& operator+=(difference_type steps) noexcept {
            source_ += steps;
            return *this;
        }
        constexpr iterator& operator-=(difference_type steps) noexcept {
            source_ -= steps;
            return *this;
        }
        [[nodiscard]] friend constexpr iterator operator+(iterator at,
                                                          difference_type steps) noexcept {
            return at += steps;
        }
        [[nodiscard]] friend constexpr iterator operator+(difference_type steps,
                                                          iterator at) noexcept {
            return at += steps;
        }
        [[nodiscard]] friend constexpr iterator operator-(iterator at,
                                                          difference_type steps) noexcept {
            return at -= steps;
        }
        [[nodiscard]] friend constexpr difference_type operator-(const iterator& a,
                                                                 const iterator& b) noexcept {
            return a.source_ - b.source_;
        }
        [[nodiscard]] friend constexpr bool operator==(const iterator&,
                                                       const iterator&) noexcept = default;
        [[nodiscard]] friend constexpr std::strong_ordering operator<=>(
            const iterator& a, const iterator& b) noexcept {
            return a.source_ <=> b.source_;
        }

     private:
        Source source_;
    };

    /// An empty column.
    constexpr ColumnView() noexcept = default;
    explicit constexpr ColumnView(gtl::iterator_range<Source> column) noexcept : column_(column) {}

    [[nodiscard]] constexpr iterator begin() const noexcept { return iterator(column_.begin()); }
    [[nodiscard]] constexpr iterator end() const noexcept { return iterator(column_.end()); }
    [[nodiscard]] constexpr bool empty() const noexcept { return column_.empty(); }
    [[nodiscard]] constexpr std::size_t size() const noexcept { return column_.size(); }
    /// Value `k`, counted from 0; k < size().
    [[nodiscard]] constexpr double operator[](std::size_t k) const noexcept {
        return WithNan(column_[k]);
    }

    /// NaN for the missing value, every other value unchanged.
    [[nodiscard]] static constexpr double WithNan(double value) noexcept {
        return lmw::IsDefined(value) ? value : std::numeric_limits<double>::quiet_NaN();
    }

 private:
    gtl::iterator_range<Source> column_;
};

}  // namespace datatable
