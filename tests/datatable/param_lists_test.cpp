#include "common/datatable/param_lists.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace dataparamtype;

DataParamList Of(std::initializer_list<std::uint32_t> values) {
    DataParamList list;
    for (const std::uint32_t value : values) {
        list.push_back(DataParamType{value});
    }
    return list;
}

TEST(ParamLists, KeepOrderAndRepeatsAndLeaveOutValuesBeyondTheRegistry) {
    EXPECT_EQ(ListIntersection(Of({5, 7}), Of({7, 7, 9, 5})), Of({7, 7, 5}));
    EXPECT_EQ(ListDifference(Of({5, 7, 5}), Of({7})), Of({5, 5}));
    EXPECT_EQ(ListUnion(Of({5, 7, 5}), Of({9, 7, 9})), Of({5, 7, 5, 9, 9}));
    EXPECT_EQ(ListIntersection(Of({744, 745}), Of({745, 744, 0xFFFFFFFF})), Of({744}));
    EXPECT_EQ(ListDifference(Of({744, 745}), Of({745, 744})), Of({745}));
}

// Empty lists are drawn as well.
TEST(ParamLists, AgreeWithSearchingTheOtherList) {
    lmw::test::PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    const auto draw = [&random] {
        DataParamList list;
        for (int k = random.Integer(0, 12); k > 0; --k) {
            list.push_back(DataParamType{static_cast<std::uint32_t>(random.Integer(0, 15))});
        }
        return list;
    };
    for (int round = 0; round < 500; ++round) {
        const DataParamList a = draw();
        const DataParamList b = draw();
        DataParamList both;
        DataParamList only_a;
        DataParamList all = a;
        for (const DataParamType param : b) {
            const bool in_a = std::find(a.begin(), a.end(), param) != a.end();
            (in_a ? both : all).push_back(param);
        }
        for (const DataParamType param : a) {
            if (std::find(b.begin(), b.end(), param) == b.end()) {
                only_a.push_back(param);
            }
        }
        ASSERT_EQ(ListIntersection(a, b), both);
        ASSERT_EQ(ListDifference(a, b), only_a);
        ASSERT_EQ(ListUnion(a, b), all);
    }
}

}  // namespace
