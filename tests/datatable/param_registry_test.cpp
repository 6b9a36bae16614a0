#include "common/datatable/param_registry.h"

#include "common/datatable/custom_params.h"
#include "common/datatable/param_lists.h"
#include "common/undefined.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/property_random.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <tuple>

namespace {

using namespace dataparamtype;
using gtl::bound_kind;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Range, AnEndIsAbsentOnlyWithBound0AndKindNone) {
    constexpr auto kIn = bound_kind::inclusive;
    constexpr auto kEx = bound_kind::exclusive;
    constexpr auto kNo = bound_kind::none;
    const std::tuple<gtl::range<double>, double, bool, const char*> rows[] = {
        {{0, kNo, 0, kNo}, -kInfinity, true, "unbounded"},
        {{0, kIn, 0, kNo}, -1, false, "below the lower bound"},
        {{0, kIn, 0, kNo}, 0, true, "at an inclusive bound"},
        {{0, kIn, 0, kNo}, 1e30, true, "no upper bound"},
        {{0, kEx, 0, kNo}, 0, false, "at an exclusive bound"},
        {{0, kEx, 0, kNo}, 5e-324, true, "just above an exclusive bound"},
        {{0, kNo, 0, kIn}, 0, true, "non-positive"},
        {{0, kNo, 0, kIn}, 1, false, "non-positive"},
        {{0, kNo, 0, kEx}, 0, false, "negative"},
        {{1, kNo, 0, kNo}, 0.5, false, "a bound other than 0 counts without a kind"},
        {{1, kNo, 0, kNo}, 1, false, "and excludes itself"},
        {{1, kNo, 0, kNo}, 2, true, "above it"},
        {{0, kNo, 1, kNo}, 1, false, "likewise at the upper end"},
        {{0, kNo, 1, kNo}, 0.5, true, "below it"},
        {{-1, kIn, 1, kEx}, 1, false, "both ends"},
        {{-1, kIn, 1, kEx}, -1, true, "both ends"},
        {{-1, kIn, 1, kEx}, std::numeric_limits<double>::quiet_NaN(), true, "NaN passes"},
    };
    for (const auto& [range, value, contained, why] : rows) {
        EXPECT_EQ(range.Contains(value), contained) << why << ": " << value;
    }
}

TEST(ParamRegistry, AValueOutOfRangeIsReportedWithTheRangeButTheMissingOneNever) {
    const lmw::test::TestHost host;
    EXPECT_EQ(IsRangeValid(DataParamType::Porosity, 1.5).as_wstring(),
              L"24389[1.5|20452[0|1|||]|||]");
    EXPECT_EQ(IsRangeValid(DataParamType::Temperature, -300.0).as_wstring(),
              L"24389[-300|20551[-273.15||||]|||]");
    EXPECT_TRUE(IsRangeValid(DataParamType::Porosity, 1.0).Succeeded());
    EXPECT_TRUE(IsRangeValid(DataParamType::TotalHead, -1e300).Succeeded());
    for (std::uint32_t value = 0; value < 800; ++value) {
        EXPECT_TRUE(IsRangeValid(DataParamType{value}, lmw::kUndefined).Succeeded()) << value;
    }
}

TEST(ParamRegistry, AValidValueAllocatesNothing) {
    LMW_SKIP_UNCOUNTED_ALLOCATIONS();
    GetRow(DataParamType::Time);  // builds the registry
    EXPECT_EQ(
        lmw::test::AllocationsOf([] { IsRangeValid(DataParamType::SafetyFactor, 1.3).Ignore(); }),
        0U);
}

TEST(ParamRegistry, ValuesWithoutARowAnswerLikeTheNullParameter) {
    for (const std::uint32_t value : {0U, 744U, 745U, 0xFFFFFFFFU}) {
        const DataParamType param{value};
        EXPECT_FALSE(IsRegistered(param));
        EXPECT_EQ(GetRow(param).kind, Kind::None);
        EXPECT_EQ(GetName(param), "");
        EXPECT_FALSE(IsStressParam(param));
        EXPECT_TRUE(IsRangeValid(param, -1e300).Succeeded());
    }
    EXPECT_EQ(FindByName(""), DataParamType::Null);
    EXPECT_EQ(FindByName("porepressure"), DataParamType::Null);  // names are exact
}

TEST(ParamRegistry, ACustomParameterIsAParameterLikeOthers) {
    CustomParam organic;
    organic.name = "OrganicContent";
    organic.meaning = "Mass of organic matter per mass of the particles";
    organic.range_checker = {0.0, bound_kind::inclusive, 1.0, bound_kind::inclusive};
    organic.category = Category::SoilState;
    DataParamType param = DataParamType::Null;
    ASSERT_TRUE(RegisterCustomParam(organic, param).Succeeded());
    EXPECT_GT(IndexOf(param), std::size_t{kLastBuiltIn});
    EXPECT_EQ(AllCustomParams().back(), param);
    EXPECT_EQ(FindByName("OrganicContent"), param);
    EXPECT_EQ(GetCategory(param), Category::SoilState);
    EXPECT_TRUE(IsRangeValid(param, 1.5).Failed());
}

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
