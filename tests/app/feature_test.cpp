#include "common/app/feature.h"

#include "tests/support/environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace lmw::feature;
using namespace lmw::test;

struct SwitchRow {
    bool (*is_on)();
    const char* variable;
    bool when_defined;
};

// Not constexpr: the address of a function of another library is known at run time only.
const SwitchRow kSwitches[] = {
    {Is3DEnabled, "LMW_3D_ENABLED", true},
    {EnableDrawLocations, "LMW_3D_ENABLED", true},
    {IsDataSetRefreshEnabled, "LMW_DATASET_REFRESH", true},
    {IsDrawLocking, "LMW_DRAW_LOCKING", true},
    {IsGraphicsServerDoubleBuffer, "LMW_GRAPHICS_SERVER_DOUBLE_BUFFER", true},
    {IsNewReinforcementEnabled, "LMW_OLD_REINFORCEMENTS", false},
    {IsPlyMeshText, "LMW_PLY_TEXT", true},
    {IsReinforcementAddInEnabled, "LMW_REINFORCEMENT_ADDIN", true},
    {UseQt, "LMW_USE_QT", true},
    {UseRuler, "LMW_USE_RULER", true},
    {IsDiagnosticMode, "LMW_DIAG", true},
    {IsDiagnosticMode, "LOAMWORKS_DIAG_MODE", true},
};

class FeatureSwitch : public ::testing::Test {
 protected:
    FeatureSwitch() { RemoveAll(); }
    ~FeatureSwitch() override { RemoveAll(); }

    static void RemoveAll() {
        for (const SwitchRow& row : kSwitches) {
            RemoveEnvironmentVariable(row.variable);
        }
    }
};

TEST_F(FeatureSwitch, FollowsItsOwnVariableAtEachCallWhateverTheValue) {
    for (const SwitchRow& defined : kSwitches) {
        SCOPED_TRACE(defined.variable);
        for (const char* value : {"1", "", "0"}) {
            DefineEnvironmentVariable(defined.variable, value);
            for (const SwitchRow& asked : kSwitches) {
                // IsDiagnosticMode stands in the table twice, once for each of its variables.
                const bool concerned =
                    asked.is_on == defined.is_on ||
                    std::string_view(asked.variable) == std::string_view(defined.variable);
                EXPECT_EQ(asked.is_on(), concerned == asked.when_defined) << asked.variable;
            }
            RemoveEnvironmentVariable(defined.variable);
            EXPECT_EQ(defined.is_on(), !defined.when_defined);
        }
    }
}

// The only test of this program that asks for the traps, so its first call is the process' first.
TEST_F(FeatureSwitch, FloatingPointTrapsKeepTheirFirstAnswer) {
    DefineEnvironmentVariable("LMW_DIAG", "");
    EXPECT_TRUE(IsDiagnosticFpuTrapsEnabled());
    RemoveEnvironmentVariable("LMW_DIAG");
    EXPECT_FALSE(IsDiagnosticMode());
    EXPECT_TRUE(IsDiagnosticFpuTrapsEnabled());
}

const std::vector<AnalysisKind> kKinds = {
    AnalysisKind::Solute, AnalysisKind::Tremor, AnalysisKind::Flow, AnalysisKind::Deform,
    AnalysisKind::Ridge,  AnalysisKind::Heat,   AnalysisKind::Gas};

const std::vector<AnalysisKind> kNoKinds = {
    AnalysisKind::None, static_cast<AnalysisKind>(7), static_cast<AnalysisKind>(-1),
    static_cast<AnalysisKind>(std::numeric_limits<std::int32_t>::min())};

TEST(NewSolver, IsOnForEveryKindUntilItIsSwitchedOffForThatKind) {
    for (const AnalysisKind kind : kKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        EXPECT_TRUE(SetNewSolverEnabled(kind, true));
        EXPECT_TRUE(SetNewSolverEnabled(kind, false));
        for (const AnalysisKind other : kKinds) {
            EXPECT_EQ(IsNewSolverEnabled(other), other != kind);
        }
        EXPECT_FALSE(SetNewSolverEnabled(kind, true));
    }
}

TEST(NewSolver, DoesNotExistForValuesThatAreNoKind) {
    for (const AnalysisKind kind : kNoKinds) {
        SCOPED_TRACE(static_cast<std::int32_t>(kind));
        EXPECT_FALSE(SetNewSolverEnabled(kind, true));
        EXPECT_FALSE(IsNewSolverEnabled(kind));
    }
    EXPECT_TRUE(std::all_of(kKinds.begin(), kKinds.end(), IsNewSolverEnabled));
}

TEST(ModuleName, IsMadeOfTheLookupNameAndEmptyForNone) {
    EXPECT_EQ(DllByAnalysisKind(AnalysisKind::Solute), L"lmwsolute");
    for (const AnalysisKind kind : kKinds) {
        const std::string lookup = LookupNameByKind(kind);
        EXPECT_EQ(DllByAnalysisKind(kind), L"lmw" + std::wstring(lookup.begin(), lookup.end()));
    }
    for (const AnalysisKind kind : kNoKinds) {
        EXPECT_EQ(DllByAnalysisKind(kind), L"") << static_cast<std::int32_t>(kind);
    }
}

}  // namespace
