#include "common/range_error.h"

#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using gtl::bound_kind;
using gtl::impl::range_error;

TEST(RangeError, DescriptionFollowsTheKindsOfBothEnds) {
    constexpr auto kIn = bound_kind::inclusive;
    constexpr auto kEx = bound_kind::exclusive;
    constexpr auto kNo = bound_kind::none;
    struct Row {
        bound_kind lo;
        bound_kind hi;
        const wchar_t* expected;
    };
    const std::vector<Row> rows = {
        {kIn, kIn, L"20452[1|2|||]"}, {kIn, kEx, L"20451[1|2|||]"}, {kEx, kIn, L"20450[1|2|||]"},
        {kEx, kEx, L"20449[1|2|||]"}, {kIn, kNo, L"20551[1||||]"},  {kEx, kNo, L"20564[1||||]"},
        {kNo, kIn, L"20676[2||||]"},  {kNo, kEx, L"20692[2||||]"},  {kNo, kNo, L"no limit"},
    };
    lmw::test::TestHost host;
    host.SetText(21622, L"no limit");
    for (const Row& row : rows) {
        EXPECT_EQ(range_error::Description(L"1", L"2", row.lo, row.hi), row.expected);
    }
}

TEST(RangeError, OutOfBoundsNamesTheValueAndTheRange) {
    const auto made = range_error::OutOfBounds(L"-1", L"0", L"100%", bound_kind::inclusive,
                                               bound_kind::exclusive);
    EXPECT_EQ(made.MessageId(), 24389U);
    EXPECT_EQ(
        made.as_wstring(),
        L"The value -1 is out of range. Allowed: greater than or equal to 0 and less than 100%.");
}

}  // namespace
