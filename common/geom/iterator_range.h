#pragma once

// A pair of iterators as one value: how the indexes take and give the points of an item without
// copying them.

#include <cstddef>
#include <iterator>
#include <vector>

namespace Geom {

/// The elements from begin() to before end(); whoever holds them must outlive the range.
template <class Iterator>
class iterator_range {
 public:
    using value_type = typename std::iterator_traits<Iterator>::value_type;

    iterator_range() = default;
    iterator_range(Iterator begin, Iterator end) : begin_(begin), end_(end) {}
    /// The elements of a vector, for ranges of pointers.
    iterator_range(const std::vector<value_type>& values)  // NOLINT(google-explicit-constructor)
        : begin_(values.data()), end_(values.data() + values.size()) {}

    [[nodiscard]] Iterator begin() const { return begin_; }
    [[nodiscard]] Iterator end() const { return end_; }
    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
    [[nodiscard]] bool empty() const { return begin_ == end_; }

 private:
    Iterator begin_{};
    Iterator end_{};
};

}  // namespace Geom
