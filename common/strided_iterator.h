#pragma once

// Steps through an array by a constant number of elements: along the column of a row-major matrix.

#include <compare>
#include <cstddef>
#include <iterator>
#include <type_traits>

namespace gtl {

/// A random-access iterator over the elements base[0], base[stride], base[2 * stride], …
///
/// 1. Stepping moves a number, not a pointer, so an end that lies more than one element beyond the
///    array is a valid iterator.
/// 2. Iterators compare and subtract only when they come from the same base and stride.
/// 3. An iterator to values converts to one to const values.
template <class Value>
class strided_iterator {
 public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = std::remove_cv_t<Value>;
    using difference_type = std::ptrdiff_t;
    using pointer = Value*;
    using reference = Value&;

    constexpr strided_iterator() noexcept = default;

    /// At element `index` (in steps) of the sequence that starts at `base`; `stride` is above 0.
    constexpr strided_iterator(pointer base, difference_type stride,
                               difference_type index = 0) noexcept
        : base_(base), stride_(stride), offset_(index * stride) {}

    template <class Other>
    requires(std::is_same_v<const Other, Value> && !std::is_same_v<Other, Value>)
        // NOLINTNEXTLINE(google-explicit-constructor): adds const, as pointers do without being
        // asked
        constexpr strided_iterator(const strided_iterator<Other>& other) noexcept
        : base_(other.base_), stride_(other.stride_), offset_(other.offset_) {}

    [[nodiscard]] constexpr reference operator*() const noexcept { return base_[offset_]; }
    [[nodiscard]] constexpr pointer operator->() const noexcept { return base_ + offset_; }
    [[nodiscard]] constexpr reference operator[](difference_type steps) const noexcept {
        return base_[offset_ + steps * stride_];
    }

    constexpr strided_iterator& operator++() noexcept { return *this += 1; }
    constexpr strided_iterator operator++(int) noexcept {
        strided_iterator before = *this;
        ++*this;
        return before;
    }
    constexpr strided_iterator& operator--() noexcept { return *this -= 1; }
    constexpr strided_iterator operator--(int) noexcept {
        strided_iterator before = *this;
        --*this;
        return before;
    }
    constexpr strided_iterator& operator+=(difference_type steps) noexcept {
        offset_ += steps * stride_;
        return *this;
    }
    constexpr strided_iterator& operator-=(difference_type steps) noexcept {
        return *this += -steps;
    }

    [[nodiscard]] friend constexpr strided_iterator operator+(strided_iterator at,
                                                              difference_type steps) noexcept {
        return at += steps;
    }
    [[nodiscard]] friend constexpr strided_iterator operator+(difference_type steps,
                                                              strided_iterator at) noexcept {
        return at += steps;
    }
    [[nodiscard]] friend constexpr strided_iterator operator-(strided_iterator at,
                                                              difference_type steps) noexcept {
        return at -= steps;
    }
    [[nodiscard]] friend constexpr difference_type operator-(const strided_iterator& a,
                                                             const strided_iterator& b) noexcept {
        return (a.offset_ - b.offset_) / a.stride_;
    }
    [[nodiscard]] friend constexpr bool operator==(const strided_iterator& a,
                                                   const strided_iterator& b) noexcept {
        return a.offset_ == b.offset_;
    }
    [[nodiscard]] friend constexpr std::strong_ordering operator<=>(
        const strided_iterator& a, const strided_iterator& b) noexcept {
        return a.offset_ <=> b.offset_;
    }

 private:
    template <class>
    friend class strided_iterator;

    pointer base_ = nullptr;
    difference_type stride_ = 1;
    difference_type offset_ = 0;
};

}  // namespace gtl
