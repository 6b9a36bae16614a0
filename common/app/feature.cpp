#include "common/app/feature.h"

#include "common/sys/environment.h"

#include <array>
#include <atomic>

namespace lmw::feature {

namespace {

struct KindFeatures {
    // 0: the new solver. Atomic only so that a late change is no data race.
    std::atomic<std::int32_t> old_solver;
    const wchar_t* module;
};

// By kind.
constinit std::array<KindFeatures, kAnalysisKindCount> kind_features = {{{0, L"lmwsolute"},
                                                                         {0, L"lmwtremor"},
                                                                         {0, L"lmwflow"},
                                                                         {0, L"lmwdeform"},
                                                                         {0, L"lmwridge"},
                                                                         {0, L"lmwheat"},
                                                                         {0, L"lmwgas"}}};

// Null for a value that is no kind.
KindFeatures* FeaturesOf(AnalysisKind kind) {
    const auto value = static_cast<std::int32_t>(kind);
    return value >= 0 && value < kAnalysisKindCount
               ? &kind_features[static_cast<std::size_t>(value)]
               : nullptr;
}

}  // namespace

bool Is3DEnabled() {
    return sys::IsEnvironmentVariableDefined("LMW_3D_ENABLED");
}

bool EnableDrawLocations() {
    return Is3DEnabled();
}

bool IsDataSetRefreshEnabled() {
    return sys::IsEnvironmentVariableDefined("LMW_DATASET_REFRESH");
}

bool IsDrawLocking() {
    return sys::IsEnvironmentVariableDefined("LMW_DRAW_LOCKING");
}

bool IsGraphicsServerDoubleBuffer() {
    return sys::IsEnvironmentVariableDefined("LMW_GRAPHICS_SERVER_DOUBLE_BUFFER");
}

bool IsNewReinforcementEnabled() {
    return !sys::IsEnvironmentVariableDefined("LMW_OLD_REINFORCEMENTS");
}

bool IsPlyMeshText() {
    return sys::IsEnvironmentVariableDefined("LMW_PLY_TEXT");
}

bool IsReinforcementAddInEnabled() {
    return sys::IsEnvironmentVariableDefined("LMW_REINFORCEMENT_ADDIN");
}

bool UseQt() {
    return sys::IsEnvironmentVariableDefined("LMW_USE_QT");
}

bool UseRuler() {
    return sys::IsEnvironmentVariableDefined("LMW_USE_RULER");
}

bool IsDiagnosticMode() {
    return sys::IsEnvironmentVariableDefined("LOAMWORKS_DIAG_MODE") ||
           sys::IsEnvironmentVariableDefined("LMW_DIAG");
}

bool IsDiagnosticFpuTrapsEnabled() {
    static const bool enabled = IsDiagnosticMode();
    return enabled;
}

bool IsNewSolverEnabled(AnalysisKind kind) {
    const KindFeatures* features = FeaturesOf(kind);
    return features != nullptr && features->old_solver.load(std::memory_order_relaxed) == 0;
}

bool SetNewSolverEnabled(AnalysisKind kind, bool enabled) {
    KindFeatures* features = FeaturesOf(kind);
    return features != nullptr &&
           features->old_solver.exchange(enabled ? 0 : 1, std::memory_order_relaxed) == 0;
}

std::wstring DllByAnalysisKind(AnalysisKind kind) {
    const KindFeatures* features = FeaturesOf(kind);
    return features != nullptr ? features->module : L"";
}

}  // namespace lmw::feature
