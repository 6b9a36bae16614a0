#include "common/datatable/param_registry.h"
#include "common/str/number_text.h"

#include "tools/lmw/arguments.h"
#include "tools/lmw/commands.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {
namespace {

using namespace dataparamtype;
using gtl::bound_kind;

constexpr int kEveryCategory = -1;

struct ParamsOptions {
    std::string filter;
    int category = kEveryCategory;
    bool json = false;
    bool csv = false;
};

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return lower;
}

// The parameters asked for, by category and within it by value.
DataParamList Chosen(const ParamsOptions& options) {
    const std::string sought = LowerCase(options.filter);
    const auto has = [&sought](std::string_view text) {
        return LowerCase(text).find(sought) != std::string::npos;
    };
    DataParamList chosen;
    for (std::uint32_t value = 1; value < kParamCount; ++value) {
        const DataParamType param{value};
        if (IsRegistered(param) &&
            (options.category == kEveryCategory ||
             options.category == static_cast<int>(GetCategory(param))) &&
            (has(GetName(param)) || has(GetMeaning(param)))) {
            chosen.push_back(param);
        }
    }
    std::stable_sort(chosen.begin(), chosen.end(), [](DataParamType a, DataParamType b) {
        return GetCategory(a) < GetCategory(b);
    });
    return chosen;
}

std::string_view KindName(bound_kind kind) {
    switch (kind) {
        case bound_kind::inclusive:
            return "inclusive";
        case bound_kind::exclusive:
            return "exclusive";
        default:
            return "none";
    }
}

// ">= 0", "> 0 and <= 1"; "any" for an unbounded range.
std::string RangeText(const gtl::range<double>& range) {
    std::string text;
    if (range.HasLower()) {
        text = range.lower_kind == bound_kind::inclusive ? ">= " : "> ";
        text += str::DoubleNarrowText(range.lower);
    }
    if (range.HasUpper()) {
        text += text.empty() ? "" : " and ";
        text += range.upper_kind == bound_kind::inclusive ? "<= " : "< ";
        text += str::DoubleNarrowText(range.upper);
    }
    return text.empty() ? "any" : text;
}

// Filled up with blanks to a number of characters, at least one.
std::string Listing(const DataParamList& params) {
    std::string text;
    const Category::Type* category = nullptr;
    for (const DataParamType param : params) {
        const RegistryRow& row = GetRow(param);
        if (category == nullptr || *category != row.category) {
            text += category == nullptr ? "" : "\n";
            text.append(NameOf(row.category)).append("\n");
            category = &row.category;
        }
        const std::string value = std::to_string(IndexOf(param));
        text.append("  ").append(3 - std::min<std::size_t>(value.size(), 3), ' ').append(value);
        text.append("  ").append(Padded(GetName(param), 29)).append(" ");
        text.append(Padded(NameOf(row.kind), 9)).append(" ");
        text.append(Padded(SymbolOf(GetUnitKind(param)), 11)).append(" ");
        text.append(Padded(RangeText(row.range_checker), 18)).append(" ");
        text.append(GetMeaning(param)).append("\n");
    }
    return text;
}

std::string Csv(const DataParamList& params) {
    CsvText csv;
    for (const char* const title :
         {"value", "name", "category", "kind", "quantity_class", "unit_kind", "si_unit", "lower",
          "lower_kind", "upper", "upper_kind", "graph_method", "components", "meaning"}) {
        csv.Cell(title);
    }
    csv.EndRow();
    for (const DataParamType param : params) {
        const RegistryRow& row = GetRow(param);
        std::string components;
        for (const DataParamType part : row.components) {
            components.append(components.empty() ? "" : " ").append(GetName(part));
        }
        csv.Cell(static_cast<double>(IndexOf(param)));
        csv.Cell(GetName(param)).Cell(NameOf(row.category)).Cell(NameOf(row.kind));
        csv.Cell(NameOf(row.quantity_class)).Cell(NameOf(GetUnitKind(param)));
        csv.Cell(SymbolOf(GetUnitKind(param)));
        csv.Cell(row.range_checker.lower).Cell(KindName(row.range_checker.lower_kind));
        csv.Cell(row.range_checker.upper).Cell(KindName(row.range_checker.upper_kind));
        csv.Cell(NameOf(row.graph_method)).Cell(components).Cell(GetMeaning(param)).EndRow();
    }
    return csv.Text();
}

std::string Json(const DataParamList& params) {
    JsonText json;
    json.BeginArray();
    for (const DataParamType param : params) {
        const RegistryRow& row = GetRow(param);
        const gtl::range<double>& range = row.range_checker;
        json.BeginObject();
        json.Key("value").Count(IndexOf(param));
        json.Key("name").Value(GetName(param));
        json.Key("category").Value(NameOf(row.category));
        json.Key("kind").Value(NameOf(row.kind));
        json.Key("quantity_class").Value(NameOf(row.quantity_class));
        json.Key("unit_kind").Value(NameOf(GetUnitKind(param)));
        json.Key("si_unit").Value(SymbolOf(GetUnitKind(param)));
        json.Key("lower").Value(range.lower).Key("lower_kind").Value(KindName(range.lower_kind));
        json.Key("upper").Value(range.upper).Key("upper_kind").Value(KindName(range.upper_kind));
        json.Key("graph_method").Value(NameOf(row.graph_method));
        json.Key("components").BeginArray();
        for (const DataParamType part : row.components) {
            json.Value(GetName(part));
        }
        json.End();
        json.Key("meaning").Value(GetMeaning(param));
        json.End();
    }
    json.End();
    return json.Text();
}

void RunParams(const ParamsOptions& options, std::ostream& out) {
    const DataParamList params = Chosen(options);
    if (params.empty()) {
        throw Failure("no parameter has " + Quoted(options.filter) +
                      " in its name or meaning here");
    }
    out << (options.json ? Json(params) : options.csv ? Csv(params) : Listing(params));
}

std::vector<Word<int>> CategoryWords() {
    std::vector<Word<int>> words;
    for (int category = 0;; ++category) {
        const std::string_view name = NameOf(static_cast<Category::Type>(category));
        if (name.empty()) {
            return words;
        }
        words.push_back({std::string(name), category});
    }
}

}  // namespace

void AddParams(CLI::App& program, std::ostream& out) {
    const auto options = std::make_shared<ParamsOptions>();
    CLI::App* const command =
        program.add_subcommand("params", "List the parameter types of data tables");
    command
        ->add_option("FILTER", options->filter,
                     "Only those with this text in the name or the meaning, in any case")
        ->type_name("");
    AddWord<int>(*command, "--category", options->category, CategoryWords(),
                 "Only those of this category");
    CLI::Option* const json = command->add_flag("--json", options->json, "Print JSON");
    command->add_flag("--csv", options->csv, "Print CSV")->excludes(json);
    command->footer(
        "Prints for each parameter its value, name, kind, SI unit, valid range and meaning, under\n"
        "its category. JSON and CSV hold all that the registry knows. A bound of 0 with the kind\n"
        "none is no bound.\n\n"
        "Examples:\n"
        "  lmw params stress\n"
        "  lmw params --category Climate --csv\n"
        "  lmw params --json > params.json\n");
    command->callback([options, &out] { RunParams(*options, out); });
}

}  // namespace lmw::tool
