#include "common/datatable/param_registry.h"

#include "common/datatable/custom_params.h"
#include "common/undefined.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace dataparamtype;
using gtl::bound_kind;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Range, AnEndIsAbsentOnlyWithBound0AndKindNone) {
    constexpr auto kIn = bound_kind::inclusive;
    constexpr auto kEx = bound_kind::exclusive;
    constexpr auto kNo = bound_kind::none;
    struct Case {
        gtl::range<double> range;
        double value;
        bool contained;
        const char* why;
    };
    const Case cases[] = {
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
    for (const Case& row : cases) {
        EXPECT_EQ(row.range.Contains(row.value), row.contained) << row.why << ": " << row.value;
    }
}

TEST(ParamRegistry, AValueOutOfRangeIsReportedWithTheRangeButTheMissingOneNever) {
    const lmw::test::TestHost host;
    const gtl::status made = IsRangeValid(DataParamType::Porosity, 1.5);
    EXPECT_EQ(made.MessageId(), 24389U);
    EXPECT_EQ(made.as_wstring(), L"24389[1.5|20452[0|1|||]|||]");
    EXPECT_EQ(IsRangeValid(DataParamType::Temperature, -300.0).as_wstring(),
              L"24389[-300|20551[-273.15||||]|||]");
    EXPECT_TRUE(IsRangeValid(DataParamType::Porosity, 1.0).Succeeded());
    EXPECT_TRUE(IsRangeValid(DataParamType::TotalHead, -1e300).Succeeded());
    for (std::uint32_t value = 0; value < 800; ++value) {
        EXPECT_TRUE(IsRangeValid(DataParamType{value}, lmw::kUndefined).Succeeded()) << value;
    }
}

TEST(ParamRegistry, AValidValueAllocatesNothing) {
    if (!lmw::test::CountsLibraryAllocations()) {
        GTEST_SKIP() << "allocations of the library are not counted here";
    }
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

}  // namespace
