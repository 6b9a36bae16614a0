// The settings of diagnostics in force, as a table for people or as JSON.

#include "common/analysis_kind.h"
#include "common/app/feature.h"
#include "common/diag.h"
#include "common/log_category.h"
#include "common/log_filter.h"
#include "common/log_level.h"
#include "common/message_text.h"
#include "common/sys/text_encoding.h"
#include "common/version.h"

#include "tools/lmw/commands.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace lmw::tool {
namespace {

struct Switch {
    const char* name;
    const char* variable;
    bool (*is_on)();
};

struct Row {
    std::string name;
    std::string value;
    std::string note;  // how it is set; empty where there is nothing to say
};

struct Group {
    const char* title;
    const char* key;
    std::vector<Row> rows;
};

std::string OnOff(bool on) {
    return on ? "on" : "off";
}

Group Settings() {
    const int mask = diag::LogFilter::CategoryMask();
    // Names are narrow text in the platform's encoding; the program's output is UTF-8.
    const std::string names = Utf8(sys::Widen(diag::CategoryNames(mask)));
    return {
        "Settings",
        "settings",
        {{"minimum level", Utf8(diag::LevelText(diag::LogFilter::MinLevel())), "level="},
         {"category mask", std::to_string(mask), "category=" + names},
         {"safe mode", OnOff(diag::IsSafeMode()), "/safemode"},
         {"interactive assertions", OnOff(diag::IsAssertInteractive()), "/assertinteractive"},
         {"diagnostic mode", OnOff(feature::IsDiagnosticMode()), "LMW_DIAG, LOAMWORKS_DIAG_MODE"},
         {"floating-point traps", OnOff(feature::IsDiagnosticFpuTrapsEnabled()),
          "with diagnostic mode"}}};
}

Group Categories() {
    Group group = {"Registered categories", "categories", {}};
    int mask = 8;
    for (const std::string& name : diag::RegisteredCategories()) {
        group.rows.push_back({Utf8(sys::Widen(name)), std::to_string(mask),
                              (diag::LogFilter::CategoryMask() & mask) != 0 ? "logged" : ""});
        mask *= 2;
    }
    return group;
}

Group Switches() {
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
    Group group = {"Switches", "switches", {}};
    for (const Switch& entry : switches) {
        group.rows.push_back({entry.name, OnOff(entry.is_on()), entry.variable});
    }
    return group;
}

Group Modules() {
    Group group = {"Modules", "modules", {}};
    for (std::int32_t value = 0; value < kAnalysisKindCount; ++value) {
        const auto kind = static_cast<AnalysisKind>(value);
        group.rows.push_back({std::string(LookupNameByKind(kind)),
                              Utf8(feature::DllByAnalysisKind(kind)),
                              feature::IsNewSolverEnabled(kind) ? "new solver" : "old solver"});
    }
    return group;
}

std::string Table(const std::vector<Group>& groups) {
    constexpr std::size_t kNameColumns = 30;
    constexpr std::size_t kValueColumns = 14;
    std::string text = "Loamworks Core " LMW_VERSION_STRING "\n";
    for (const Group& group : groups) {
        text += std::string("\n") + group.title + "\n" + (group.rows.empty() ? "  none\n" : "");
        for (const Row& row : group.rows) {
            std::string line = "  " + row.name;
            line.resize(2 + kNameColumns, ' ');
            line += row.value;
            if (!row.note.empty()) {
                line.resize(2 + kNameColumns + kValueColumns, ' ');
                line += row.note;
            }
            text += line + "\n";
        }
    }
    return text;
}

std::string Json(const std::vector<Group>& groups) {
    JsonText json;
    json.BeginObject().Key("version").Value(LMW_VERSION_STRING);
    for (const Group& group : groups) {
        json.Key(group.key).BeginArray();
        for (const Row& row : group.rows) {
            json.BeginObject().Key("name").Value(row.name).Key("value").Value(row.value);
            json.Key("note").Value(row.note).End();
        }
        json.End();
    }
    json.End();
    return json.Text();
}

// All messages of the library. Numbers have five digits at most.
std::string Messages(bool as_json) {
    constexpr std::uint32_t kMostNumbers = 100'000;
    CsvText csv;
    JsonText json;
    csv.Cell("number").Cell("text").EndRow();
    json.BeginArray();
    for (std::uint32_t number = 1; number < kMostNumbers; ++number) {
        const std::string text = Utf8(MessageText(number));
        if (!text.empty()) {
            csv.Cell(std::to_string(number)).Cell(text).EndRow();
            json.BeginObject().Key("number").Count(number).Key("text").Value(text).End();
        }
    }
    json.End();
    return as_json ? json.Text() : csv.Text();
}

}  // namespace

void AddDiag(CLI::App& program, std::ostream& out) {
    CLI::App* const command = program.add_subcommand(
        "diag", "Show the settings of diagnostics in force, categories, switches and modules");
    struct Options {
        bool messages = false;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    command->add_flag("--messages", options->messages,
                      "List the messages that a host translates instead: number and English text");
    command->add_flag("--json", options->json, "Print JSON instead of tables");
    command->callback([options, &out] {
        if (options->messages) {
            out << Messages(options->json);
            return;
        }
        const std::vector<Group> groups = {Settings(), Categories(), Switches(), Modules()};
        out << (options->json ? Json(groups) : Table(groups));
    });
}

}  // namespace lmw::tool
