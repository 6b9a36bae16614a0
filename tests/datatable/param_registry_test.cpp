#include "common/datatable/param_registry.h"

#include "common/datatable/custom_params.h"
#include "common/datatable/param_lists.h"
#include "common/undefined.h"

#include "tests/support/allocation_counter.h"
#include "tests/support/property_random.h"
#include "tests/support/test_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

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

// The rows of the built-in parameters, read from their table a second time, words and all.
struct TableRow {
    std::uint32_t value;
    std::string_view name;
    std::string_view kind;
    std::string_view quantity;
    std::string_view range;
    std::string_view category;
    std::string_view graph;
    std::string_view unit;
    std::string_view meaning;

    [[nodiscard]] DataParamType Param() const { return DataParamType{value}; }
};

std::span<const TableRow> Table() {
    static constexpr TableRow rows[] = {
#define LMW_PARAM(value, name, kind, quantity, range, category, graph, unit, meaning) \
    {value, #name, #kind, #quantity, #range, #category, #graph, #unit, meaning},
#include "common/datatable/param_table.inc"
#undef LMW_PARAM
    };
    return rows;
}

// The words of the table by ascending value, as the registry has them.
const RegistryRow& Row(std::uint32_t value) {
    return GetRow(DataParamType{value});
}

TEST(ParamTable, ValuesAre1To643InOrderButFor102And290) {
    std::vector<std::uint32_t> values;
    for (const TableRow& row : Table()) {
        values.push_back(row.value);
    }
    ASSERT_EQ(values.size(), 643U);
    const auto at = [&values](std::uint32_t value) {
        return std::find(values.begin(), values.end(), value) - values.begin();
    };
    EXPECT_EQ(at(102) + 1, at(101));
    EXPECT_EQ(at(290) + 1, at(289));
    std::swap(values[static_cast<std::size_t>(at(102))], values[static_cast<std::size_t>(at(101))]);
    std::swap(values[static_cast<std::size_t>(at(290))], values[static_cast<std::size_t>(at(289))]);
    for (std::uint32_t k = 0; k < 643; ++k) {
        EXPECT_EQ(values[k], k + 1);
    }
}

// Uniqueness of names is shown by finding each by its own.
TEST(ParamTable, RegistryTellsWhatTheTableSays) {
    std::set<std::string_view> meanings;
    for (const TableRow& row : Table()) {
        SCOPED_TRACE(row.name);
        const RegistryRow& stored = GetRow(row.Param());
        EXPECT_TRUE(meanings.insert(row.meaning).second) << row.meaning;
        EXPECT_GE(row.meaning.size(), 8U);
        EXPECT_EQ(GetName(row.Param()), row.name);
        EXPECT_EQ(FindByName(row.name), row.Param());
        EXPECT_EQ(GetMeaning(row.Param()), row.meaning);
        EXPECT_EQ(NameOf(GetUnitKind(row.Param())), row.unit);
        EXPECT_EQ(NameOf(stored.kind), row.kind);
        EXPECT_EQ(NameOf(stored.quantity_class), row.quantity);
        EXPECT_EQ(IsStressParam(row.Param()), row.quantity == "Stress");
        EXPECT_EQ(NameOf(GetCategory(row.Param())), row.category);
        if (row.graph != "StressGroup") {
            EXPECT_EQ(NameOf(GetGraphCalculationMethod(row.Param())), row.graph);
        }
    }
}

TEST(ParamTable, EachBandKeepsToItsCategoriesAndUsesThemAll) {
    struct Band {
        std::uint32_t first, last, first_category, last_category;
    };
    const std::vector<Band> bands = {{1, 40, 0, 3},      {41, 170, 4, 11},   {171, 260, 12, 16},
                                     {261, 360, 17, 21}, {361, 410, 22, 24}, {411, 480, 25, 28},
                                     {481, 540, 29, 32}, {541, 630, 33, 38}, {631, 643, 39, 40}};
    for (const Band& band : bands) {
        std::set<std::uint32_t> used;
        for (std::uint32_t value = band.first; value <= band.last; ++value) {
            used.insert(Row(value).category);
        }
        EXPECT_EQ(*used.begin(), band.first_category) << band.first;
        EXPECT_EQ(*used.rbegin(), band.last_category) << band.first;
        EXPECT_EQ(used.size(), band.last_category - band.first_category + 1) << band.first;
    }
}

// Reads the kinds as a language: scalars, vectors (X Y Z Composed), tensors (X Y Z X Y Z Composed).
TEST(ParamTable, EveryRunOfPartsIsAVectorOrTensorClosedByItsOwnComposed) {
    std::size_t vectors = 0;
    std::size_t tensors = 0;
    DataParamList run;
    for (std::uint32_t value = 1; value <= kLastBuiltIn; ++value) {
        SCOPED_TRACE(value);
        const RegistryRow& row = Row(value);
        const auto kind = static_cast<std::uint32_t>(row.kind);
        if (kind <= 3) {
            EXPECT_EQ(kind, run.size() % 3 + 1);
            EXPECT_TRUE(row.components.empty());
            run.push_back(DataParamType{value});
            continue;
        }
        if (row.kind == Kind::Composed) {
            EXPECT_EQ(row.components, run);
            EXPECT_TRUE(run.size() == 3 || run.size() == 6) << run.size();
            (run.size() == 3 ? vectors : tensors) += 1;
            // The composed value is a magnitude of the same quantity as its parts.
            EXPECT_EQ(row.range_checker.lower_kind, bound_kind::inclusive);
            for (const DataParamType part : run) {
                EXPECT_EQ(GetRow(part).quantity_class, row.quantity_class);
                EXPECT_EQ(GetRow(part).category, row.category);
                EXPECT_EQ(GetUnitKind(part), GetUnitKind(DataParamType{value}));
            }
        } else {
            EXPECT_EQ(row.kind, Kind::Scalar);
            EXPECT_TRUE(run.empty()) << "parts without their composed parameter";
            EXPECT_TRUE(row.components.empty());
        }
        run.clear();
    }
    EXPECT_TRUE(run.empty());
    EXPECT_GT(vectors, 20U);
    EXPECT_GE(tensors, 5U);
    for (const std::uint32_t out_of_order : {101U, 102U, 289U, 290U}) {
        EXPECT_EQ(Row(out_of_order).kind, Kind::Scalar);  // keeps the order of these without effect
    }
}

TEST(ParamTable, RangesUnitsAndTheStressGroupAreConsistent) {
    for (const TableRow& row : Table()) {
        SCOPED_TRACE(row.name);
        const gtl::range<double>& range = GetRangeChecker(row.Param());
        for (const auto& [bound, kind] :
             {std::pair{range.lower, range.lower_kind}, std::pair{range.upper, range.upper_kind}}) {
            EXPECT_TRUE(kind != bound_kind::none || bound == 0.0);  // no bound without a kind
        }
        if (range.HasLower() && range.HasUpper()) {
            EXPECT_LT(range.lower, range.upper);
        }
        const bool is_part = row.kind == "X" || row.kind == "Y" || row.kind == "Z";
        // Ratios that a range keeps below 1 have no unit; angles lie within a full turn.
        EXPECT_TRUE(row.range != "Fraction" || row.unit == "None");
        EXPECT_TRUE(row.unit != "Temperature" || row.range == "AboveAbsoluteZero");
        EXPECT_TRUE(row.unit != "Angle" || is_part || row.kind == "Composed" || range.HasUpper());
        EXPECT_TRUE(row.unit != "Density" || row.range == "Positive");
        // A class says what is measured.
        EXPECT_TRUE(row.quantity != "Stress" || row.unit == "Pressure");
        EXPECT_TRUE(row.quantity != "Strain" || row.unit == "None");
        EXPECT_TRUE(row.quantity != "Length" || row.unit == "Length");
        EXPECT_TRUE(row.quantity != "None" || row.unit == "None" || row.unit == "Time");
        // The stress group is the stresses of the deformation band.
        const bool in_band = row.value >= 41 && row.value <= 170;
        EXPECT_EQ(row.graph == "StressGroup", in_band && row.quantity == "Stress");
    }
}

// The numbers that project files hold.
TEST(ParamTable, ValuesStayForever) {
    EXPECT_EQ(static_cast<int>(DataParamType::CoordinateX), 1);
    EXPECT_EQ(static_cast<int>(DataParamType::Displacement), 44);
    EXPECT_EQ(static_cast<int>(DataParamType::PorePressure), 263);
    EXPECT_EQ(static_cast<int>(DataParamType::Temperature), 361);
    EXPECT_EQ(static_cast<int>(DataParamType::Concentration), 411);
    EXPECT_EQ(static_cast<int>(DataParamType::SafetyFactor), 604);
    EXPECT_EQ(static_cast<int>(DataParamType::CorrelationLength), 643);
}

}  // namespace
