#include "common/strided_iterator.h"

#include "common/datatable/column_view.h"
#include "common/iterator_range.h"
#include "common/undefined.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <type_traits>
#include <vector>

namespace {

using Iterator = gtl::strided_iterator<double>;
using ConstIterator = gtl::strided_iterator<const double>;

static_assert(std::random_access_iterator<Iterator>);
static_assert(std::random_access_iterator<ConstIterator>);
static_assert(std::random_access_iterator<datatable::ColumnView::iterator>);
static_assert(std::is_convertible_v<Iterator, ConstIterator>);
static_assert(!std::is_convertible_v<ConstIterator, Iterator>);

TEST(StridedIterator, WalksLikeAPointerInSteps) {
    std::array<int, 10> block = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const gtl::strided_iterator<int> first(block.data() + 1, 3);
    const gtl::strided_iterator<int> last(block.data() + 1, 3, 3);
    EXPECT_EQ(std::vector<int>(first, last), (std::vector<int>{1, 4, 7}));
    EXPECT_EQ(last - first, 3);
    EXPECT_EQ(first[2], 7);
    EXPECT_EQ(*(last - 1), 7);
    EXPECT_EQ(*(2 + first), 7);
    auto at = first;
    EXPECT_EQ(*at++, 1);
    EXPECT_EQ(*at--, 4);
    EXPECT_EQ(at, first);
    EXPECT_LT(first, last);
    EXPECT_EQ(std::vector<int>(std::reverse_iterator(last), std::reverse_iterator(first)),
              (std::vector<int>{7, 4, 1}));
}

TEST(StridedIterator, ServesTheAlgorithmsOfTheStandardLibrary) {
    std::vector<double> block = {5, 50, 3, 30, 4, 40, 1, 10, 2, 20};
    const gtl::iterator_range<Iterator> column(Iterator(block.data(), 2),
                                               Iterator(block.data(), 2, 5));
    std::sort(column.begin(), column.end());
    EXPECT_EQ(block, (std::vector<double>{1, 50, 2, 30, 3, 40, 4, 10, 5, 20}));
    EXPECT_EQ(column.size(), 5U);
    EXPECT_EQ(column[4], 5.0);
    EXPECT_TRUE(gtl::iterator_range<Iterator>().empty());
}

TEST(ColumnView, ShowsMissingValuesAsNan) {
    std::vector<double> block = {1, 0, lmw::kUndefined, 0, -lmw::kUndefined, 0};
    const datatable::ColumnView view(
        {ConstIterator(block.data(), 2), ConstIterator(block.data(), 2, 3)});
    ASSERT_EQ(view.size(), 3U);
    EXPECT_EQ(view[0], 1.0);
    EXPECT_TRUE(std::isnan(view[1]));
    EXPECT_EQ(view[2], -lmw::kUndefined);  // an ordinary value
    EXPECT_EQ(std::count_if(view.begin(), view.end(), [](double v) { return std::isnan(v); }), 1);
    EXPECT_EQ(view.end() - view.begin(), 3);
    EXPECT_TRUE(datatable::ColumnView().empty());
}

}  // namespace
