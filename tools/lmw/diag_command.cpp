// The settings of diagnostics in force, as a table for people.

#include "common/analysis_kind.h"
#include "common/app/feature.h"
#include "common/diag.h"
#include "common/log_category.h"
#include "common/log_filter.h"
#include "common/log_level.h"
#include "common/sys/text_encoding.h"
#include "common/version.h"

#include "tools/lmw/commands.h"
#include "tools/lmw/text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace lmw::tool {
namespace {

struct Switch {
    const char* name;
    const char* variable;
    bool (*is_on)();
};

std::string Row(std::string_view name, std::string_view value, std::string_view note) {
    constexpr std::size_t kNameColumns = 30;
    constexpr std::size_t kValueColumns = 14;
    std::string row = "  ";
    row += name;
    row.resize(2 + kNameColumns, ' ');
    row += value;
    if (!note.empty()) {
        row.resize(2 + kNameColumns + kValueColumns, ' ');
        row += note;
    }
    return row + "\n";
}

std::string_view OnOff(bool on) {
    return on ? "on" : "off";
}

std::string Settings() {
    const int mask = diag::LogFilter::CategoryMask();
    // Names are narrow text in the platform's encoding; the program's output is UTF-8.
    const std::string names = Utf8(sys::Widen(diag::CategoryNames(mask)));
    return "Settings\n" +
           Row("minimum level", Utf8(diag::LevelText(diag::LogFilter::MinLevel())), "level=") +
           Row("category mask", std::to_string(mask), "category=" + names) +
           Row("safe mode", OnOff(diag::IsSafeMode()), "/safemode") +
           Row("interactive assertions", OnOff(diag::IsAssertInteractive()), "/assertinteractive") +
           Row("diagnostic mode", OnOff(feature::IsDiagnosticMode()),
               "LMW_DIAG, LOAMWORKS_DIAG_MODE") +
           Row("floating-point traps", OnOff(feature::IsDiagnosticFpuTrapsEnabled()),
               "with diagnostic mode");
}

std::string Categories() {
    std::string text = "Registered categories\n";
    int mask = 8;
    for (const std::string& name : diag::RegisteredCategories()) {
        text += Row(Utf8(sys::Widen(name)), std::to_string(mask),
                    (diag::LogFilter::CategoryMask() & mask) != 0 ? "logged" : "");
        mask *= 2;
    }
    return mask == 8 ? text + "  none\n" : text;
}

std::string Switches() {
    const std::array<Switch, 10> switches = {{
        {"3D", "LMW_3D_ENABLED", feature::Is3DEnabled},
        {"draw locations", "LMW_3D_ENABLED", feature::EnableDrawLocations},
        {"data set refresh", "LMW_DATASET_REFRESH", feature::IsDataSetRefreshEnabled},
        {"draw locking", "LMW_DRAW_LOCKING", feature::IsDrawLocking},
        {"graphics double buffer", "LMW_GRAPHICS_SERVER_DOUBLE_BUFFER",
         feature::IsGraphicsServerDoubleBuffer},
        {"new reinforcement", "LMW_OLD_REINFORCEMENTS (off when defined)",
         feature::IsNewReinforcementEnabled},
        {"meshes as text", "LMW_PLY_TEXT", feature::IsPlyMeshText},
        {"reinforcement add-in", "LMW_REINFORCEMENT_ADDIN", feature::IsReinforcementAddInEnabled},
        {"Qt", "LMW_USE_QT", feature::UseQt},
        {"ruler", "LMW_USE_RULER", feature::UseRuler},
    }};
    std::string text = "Switches\n";
    for (const Switch& entry : switches) {
        text += Row(entry.name, OnOff(entry.is_on()), entry.variable);
    }
    return text;
}

std::string Modules() {
    std::string text = "Modules\n";
    for (std::int32_t value = 0; value < kAnalysisKindCount; ++value) {
        const auto kind = static_cast<AnalysisKind>(value);
        text += Row(LookupNameByKind(kind), Utf8(feature::DllByAnalysisKind(kind)),
                    feature::IsNewSolverEnabled(kind) ? "new solver" : "old solver");
    }
    return text;
}

}  // namespace

void AddDiag(CLI::App& program, std::ostream& out) {
    CLI::App* const command = program.add_subcommand(
        "diag", "Show the settings of diagnostics in force, categories, switches and modules");
    command->callback([&out] {
        out << "Loamworks Core " LMW_VERSION_STRING "\n\n"
            << Settings() << "\n"
            << Categories() << "\n"
            << Switches() << "\n"
            << Modules();
    });
}

}  // namespace lmw::tool
