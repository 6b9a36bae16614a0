#pragma once

// Two iterators as one range: what a range-for and the algorithms of the standard library take.

#include <concepts>
#include <cstddef>
#include <iterator>
#include <utility>

namespace gtl {

/// The elements from `first` up to `last`. Refers to them, owns nothing; cheap to copy.
template <class Iterator>
class iterator_range {
 public:
    using iterator = Iterator;
    using value_type = typename std::iterator_traits<Iterator>::value_type;
    using reference = typename std::iterator_traits<Iterator>::reference;
    using difference_type = typename std::iterator_traits<Iterator>::difference_type;

    /// An empty range.
    constexpr iterator_range() = default;
    constexpr iterator_range(Iterator first, Iterator last)
        : first_(std::move(first)), last_(std::move(last)) {}

    /// The elements of a container that stores them one after the other, for ranges of pointers.
    template <class Container>
    requires requires(const Container& container) {
        { container.data() } -> std::convertible_to<Iterator>;
        container.size();
    }
    // NOLINTNEXTLINE(google-explicit-constructor): a container passes as the range of its elements
    constexpr iterator_range(const Container& container)
        : first_(container.data()), last_(container.data() + container.size()) {}

    [[nodiscard]] constexpr Iterator begin() const { return first_; }
    [[nodiscard]] constexpr Iterator end() const { return last_; }
    [[nodiscard]] constexpr bool empty() const { return first_ == last_; }

    /// The number of elements; constant time for random-access iterators.
    [[nodiscard]] constexpr std::size_t size() const {
        return static_cast<std::size_t>(std::distance(first_, last_));
    }

    /// Element `k`, counted from 0, of a range of random-access iterators; k < size().
    [[nodiscard]] constexpr reference operator[](std::size_t k) const {
        return first_[static_cast<difference_type>(k)];
    }

 private:
    Iterator first_{};
    Iterator last_{};
};

}  // namespace gtl
