// Holds the table of the built-in parameters to its rules. The rows are read from the table file a
// second time here, words and all, and compared with what the registry made of them.

#include "common/datatable/param_registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace dataparamtype;
using gtl::bound_kind;

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
