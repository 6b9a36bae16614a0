#pragma once

// A vector of fixed capacity that holds its elements inline and never allocates: the result type of
// constructions with a known greatest number of points. Use std::vector where the number is open.

#include <array>
#include <cassert>
#include <cstddef>

namespace Geom {

/// Up to `N` values in a row. Default: empty. `push_back` beyond the capacity is a programming
/// error and drops the value.
template <class T, std::size_t N>
class fixed_vector {
 public:
    using value_type = T;
    using const_iterator = const T*;

    void push_back(const T& value) noexcept {
        assert(size_ < N);
        if (size_ < N) {
            values_[size_++] = value;
        }
    }
    void clear() noexcept { size_ = 0; }

    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
    [[nodiscard]] static constexpr std::size_t capacity() noexcept { return N; }

    [[nodiscard]] const T& operator[](std::size_t index) const noexcept { return values_[index]; }
    [[nodiscard]] T& operator[](std::size_t index) noexcept { return values_[index]; }
    [[nodiscard]] const_iterator begin() const noexcept { return values_.data(); }
    [[nodiscard]] const_iterator end() const noexcept { return values_.data() + size_; }

 private:
    std::array<T, N> values_{};
    std::size_t size_ = 0;
};

}  // namespace Geom
