#include "common/datatable/detail/registry.h"

#include "common/app/feature.h"

#include "tests/support/test_host.h"
#include "tests/support/threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace dataparamtype;
using detail::Registry;

constexpr auto kOld = PreferredGraphCalculationMethod::FromGaussPoints;
constexpr auto kNew = PreferredGraphCalculationMethod::FromRecoveredNodes;
constexpr std::uint32_t kFirstCustom = 644;
constexpr std::size_t kRoom = 101;

CustomParam Custom(std::string name, Kind kind = Kind::Scalar) {
    CustomParam param;
    param.name = std::move(name);
    param.kind = kind;
    return param;
}

std::vector<CustomParam> Vector(const std::string& name) {
    return {Custom(name + "X", Kind::X), Custom(name + "Y", Kind::Y), Custom(name + "Z", Kind::Z),
            Custom(name, Kind::Composed)};
}

DataParamList From(std::uint32_t first, std::size_t count) {
    DataParamList list;
    for (std::uint32_t k = 0; k < count; ++k) {
        list.push_back(DataParamType{first + k});
    }
    return list;
}

TEST(Registry, TheSolverDecidesTheGraphMethodOfTheStressGroupOnly) {
    const Registry with_old(kOld);
    const Registry with_new(kNew);
    std::size_t differing = 0;
    for (std::uint32_t value = 0; value < kParamCount; ++value) {
        const RegistryRow& a = with_old.RowOf(DataParamType{value});
        const RegistryRow& b = with_new.RowOf(DataParamType{value});
        if (a.graph_method != b.graph_method) {
            EXPECT_EQ(a.graph_method, 1U);
            EXPECT_EQ(b.graph_method, 2U);
            EXPECT_EQ(a.quantity_class, QuantityClass::Stress);
            ++differing;
        }
    }
    EXPECT_GT(differing, 30U);
}

// The only test here that touches the registry of the process, which is built once.
TEST(Registry, TheProcessAsksForTheSolverOfTheDeformationModuleOnce) {
    const bool before = lmw::feature::SetNewSolverEnabled(AnalysisKind::Deform, false);
    EXPECT_EQ(GetGraphCalculationMethod(DataParamType::MeanTotalStress), kOld);
    lmw::feature::SetNewSolverEnabled(AnalysisKind::Deform, true);
    EXPECT_EQ(GetGraphCalculationMethod(DataParamType::MeanTotalStress), kOld);
    lmw::feature::SetNewSolverEnabled(AnalysisKind::Deform, before);
}

TEST(Registry, AComposedParameterIsMadeOfTheRunOfPartsBelowIt) {
    const lmw::test::TestHost host;
    Registry registry(kOld);
    DataParamList values;
    ASSERT_TRUE(registry.RegisterCustom(Vector("Drift"), values).Succeeded());
    EXPECT_EQ(values, From(kFirstCustom, 4));
    EXPECT_EQ(registry.RowOf(values[3]).components, From(kFirstCustom, 3));

    // After a composed parameter, and after a scalar, the run is empty.
    const std::vector<CustomParam> lone = {Custom("After", Kind::Composed), Custom("Plain"),
                                           Custom("Lone", Kind::Composed)};
    ASSERT_TRUE(registry.RegisterCustom(lone, values).Succeeded());
    EXPECT_TRUE(registry.RowOf(values[0]).components.empty());
    EXPECT_TRUE(registry.RowOf(values[2]).components.empty());

    // An open run goes on in the next call.
    ASSERT_TRUE(registry.RegisterCustom({{Custom("Part", Kind::X)}}, values).Succeeded());
    const DataParamType part = values.front();
    ASSERT_TRUE(registry.RegisterCustom({{Custom("Whole", Kind::Composed)}}, values).Succeeded());
    EXPECT_EQ(registry.RowOf(values.front()).components, DataParamList{part});
}

TEST(Registry, RefusesMoreThanItHasRoomForAndRegistersNoneOfThem) {
    const lmw::test::TestHost host;
    Registry registry(kOld);
    DataParamList values;
    std::vector<CustomParam> many;
    for (std::size_t k = 0; k < kRoom - 2; ++k) {
        many.push_back(Custom(std::string("Custom").append(std::to_string(k))));
    }
    ASSERT_TRUE(registry.RegisterCustom(many, values).Succeeded());

    const DataParamList before = values;
    const gtl::status full = registry.RegisterCustom(Vector("TooMany"), values);
    EXPECT_EQ(full.as_wstring(), L"24389[746|20452[644|744|||]|||]");
    EXPECT_EQ(values, before);
    EXPECT_EQ(registry.Find("TooManyX"), DataParamType::Null);

    const std::vector<CustomParam> last = {Custom("NextToLast"), Custom("Last")};
    ASSERT_TRUE(registry.RegisterCustom(last, values).Succeeded());
    EXPECT_EQ(registry.Find("Last"), DataParamType{744});
    EXPECT_EQ(registry.CustomParams(), From(kFirstCustom, kRoom));
    EXPECT_TRUE(registry.RegisterCustom({{Custom("Beyond")}}, values).Failed());
}

TEST(Registry, RefusesNamesInUseAndPropertiesThatAreUnknown) {
    const lmw::test::TestHost host;
    std::vector<std::vector<CustomParam>> refused = {{Custom("Twice"), Custom("Twice")},
                                                     {Custom("Good"), Custom("b=ad")},
                                                     {Custom("Fine", Kind::None)},
                                                     {Custom("Fine", Kind{6})}};
    for (const char* name : {"PorePressure", "", "7Up", "Two words", "A,B"}) {
        refused.push_back({Custom(name)});
    }
    void (*const spoil[])(CustomParam&) = {
        [](CustomParam& param) { param.quantity_class = QuantityClass{9}; },
        [](CustomParam& param) { param.category = static_cast<Category::Type>(41); },
        [](CustomParam& param) {
            param.graph_method = static_cast<PreferredGraphCalculationMethod::Type>(7);
        },
        [](CustomParam& param) { param.unit = UnitKind{1000}; }};
    for (const auto make_unknown : spoil) {
        refused.push_back({Custom("Fine")});
        make_unknown(refused.back()[0]);
    }
    Registry registry(kOld);
    DataParamList values;
    for (const auto& params : refused) {
        EXPECT_EQ(registry.RegisterCustom(params, values).MessageId(), 20571U) << params[0].name;
    }
    EXPECT_TRUE(values.empty());
    EXPECT_TRUE(registry.CustomParams().empty());
    EXPECT_TRUE(registry.RegisterCustom({{Custom("Fine")}}, values).Succeeded());
    EXPECT_TRUE(registry.RegisterCustom({{Custom("Fine")}}, values).Failed());
}

// Property: the parameters of one call follow each other; readers see complete rows or none.
TEST(Registry, RegistersFromManyThreadsWhileOthersRead) {
    Registry registry(kOld);
    std::atomic<bool> done = false;
    std::atomic<int> torn = 0;
    std::thread reader([&] {
        while (!done.load()) {
            for (const DataParamType param : registry.CustomParams()) {
                const bool composed = registry.RowOf(param).kind == Kind::Composed;
                if (registry.Find(registry.DescriptionOf(param).name) != param ||
                    registry.RowOf(param).components.size() != (composed ? 3U : 0U)) {
                    ++torn;
                }
            }
        }
    });
    std::vector<DataParamList> given(4 * 5);
    lmw::test::InThreads(4, [&](std::size_t writer) {
        for (std::size_t k = 0; k < 5; ++k) {
            const std::size_t at = writer * 5 + k;
            registry.RegisterCustom(Vector("Writer" + std::to_string(at)), given[at]).Ignore();
        }
    });
    done = true;
    reader.join();
    EXPECT_EQ(torn.load(), 0);
    EXPECT_EQ(registry.CustomParams().size(), 80U);
    for (const DataParamList& values : given) {
        ASSERT_EQ(values.size(), 4U);
        EXPECT_EQ(values, From(static_cast<std::uint32_t>(values.front()), 4));
    }
}

}  // namespace
