// Functions from their definition texts: taken apart, checked, listed, evaluated.

#include "common/fn/attribute_dictionary.h"
#include "common/fn/attributes.h"
#include "common/fn/evaluate.h"
#include "common/fn/fn_reference.h"
#include "common/fn/fn_string.h"
#include "common/fn/ifn.h"
#include "common/fn/kinds.h"
#include "common/str/number_text.h"

#include "tools/lmw/arguments.h"
#include "tools/lmw/commands.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {
namespace {

struct FnOptions {
    std::string text;
    std::vector<double> at;
    std::vector<std::string> others;
    bool kinds = false;
    bool verify = false;
    bool json = false;
};

// A definition text taken apart.
struct Definition {
    std::wstring kind;
    ::fn::string::AttributePairs attributes;
};

Failure About(std::string_view text, std::string_view reason) {
    return Failure(Quoted(text) + ": " + std::string(reason));
}

Definition Parsed(const std::string& text) {
    Definition definition;
    const gtl::status result =
        ::fn::string::Parse(Wide(text), definition.kind, definition.attributes);
    if (result.Failed()) {
        throw About(text, Utf8(result.as_wstring()));
    }
    return definition;
}

// The keys that can be set, for a complaint.
std::string Keys(const FnImpl& function) {
    std::string keys;
    const fn::IAttributeDictionary& dictionary = function.Attributes();
    for (unsigned id = 0; id < dictionary.EndAttributeID(); ++id) {
        if (dictionary.IsEditableByAttributeID(id) && function.HasAttribute(id)) {
            keys += (keys.empty() ? "" : ", ") + dictionary.NameByAttributeID(id);
        }
    }
    return keys;
}

// A function of the definition, its attributes set; not prepared. Names what is wrong, which the
// status of fn::Create cannot.
IFn Defined(const std::string& text) {
    const Definition definition = Parsed(text);
    IFn function(fn::MakeFunction(definition.kind));
    if (fn::impl::IsUndefined(&*function) && definition.kind != L"Undefined") {
        throw About(text,
                    Quoted(Utf8(definition.kind)) + " is no kind (lmw fn --kinds lists them)");
    }
    for (const auto& pair : definition.attributes) {
        const std::string key = Utf8(pair.first);
        if (function->Attributes().AttributeIDOf(key) == fn::kNoAttribute) {
            const bool padded = key != Trimmed(key);
            throw About(text, Utf8(definition.kind) + " has no attribute " + Quoted(key) +
                                  (padded ? " with a blank beside it" : "") + " (" +
                                  Keys(*function) + ")");
        }
        const gtl::status result = fn::SetPersistedAttributes(function, {pair});
        if (result.Failed()) {
            throw About(text, key + ": " + Utf8(result.as_wstring()));
        }
    }
    return function;
}

// The functions given by --with, found by their numbers as long as the object lives.
class OtherFunctions final : public fn::IFunctionResolver {
 public:
    explicit OtherFunctions(const std::vector<std::string>& others) {
        for (const std::string& other : others) {
            const std::size_t equals = std::min(other.find('='), other.size());
            std::uint32_t number = 0;
            if (!ReadCount(std::string_view(other).substr(0, equals), number) || number == 0 ||
                equals == other.size()) {
                throw Failure("--with: " + Quoted(other) +
                              " is not a number above 0, an equals sign and a function");
            }
            functions_[number] = Defined(other.substr(equals + 1));
        }
        previous_ = fn::SetFunctionResolver(this);
    }
    OtherFunctions(const OtherFunctions&) = delete;
    OtherFunctions& operator=(const OtherFunctions&) = delete;
    ~OtherFunctions() override { fn::SetFunctionResolver(previous_); }

    [[nodiscard]] IFn FunctionByNumber(std::uint32_t number) const override {
        const auto found = functions_.find(number);
        return found != functions_.end() ? found->second : IFn();
    }

 private:
    std::map<std::uint32_t, IFn> functions_;
    const fn::IFunctionResolver* previous_ = nullptr;
};

struct AttributeRow {
    unsigned id;
    std::string key;
    std::string type;
    std::string value;
    bool editable;
};

std::vector<AttributeRow> AttributesOf(const FnImpl& function) {
    std::vector<AttributeRow> rows;
    const fn::IAttributeDictionary& dictionary = function.Attributes();
    for (unsigned id = 0; id < dictionary.EndAttributeID(); ++id) {
        std::wstring value;
        if (!function.HasAttribute(id) ||
            fn::attributes::PersistedValueOf(&function, id, value).Failed()) {
            continue;
        }
        const auto type = fn::attribute::storage::NameOf(dictionary.TypeByAttributeID(id));
        rows.push_back({id, dictionary.NameByAttributeID(id), std::string(type), Utf8(value),
                        dictionary.IsEditableByAttributeID(id)});
    }
    return rows;
}

struct ValueRow {
    double x;
    double value;
    double derivative;
};

std::vector<ValueRow> ValuesOf(const FnImpl& function, const std::vector<double>& places) {
    std::vector<ValueRow> rows;
    rows.reserve(places.size());
    for (const double x : places) {
        rows.push_back({x, fn::impl::SafeCalculate(function, &x, nullptr),
                        fn::impl::DyDx(x, math::algorithm::Tolerance<double>(), function).value});
    }
    return rows;
}

std::string Listing(const FnImpl& function) {
    std::string text = Utf8(function.KindName()) + "\n";
    for (const AttributeRow& row : AttributesOf(function)) {
        std::string line = std::string(row.id < 10 ? "   " : "  ") + std::to_string(row.id) + "  " +
                           Padded(row.key, 16) + "  " + Padded(row.type, 9) + "  " +
                           OneLine(row.value) + (row.editable ? "" : "  (cannot be set)");
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

std::string Csv(const std::vector<ValueRow>& rows) {
    CsvText csv;
    csv.Cell("x").Cell("value").Cell("derivative").EndRow();
    for (const ValueRow& row : rows) {
        csv.Cell(row.x).Cell(row.value).Cell(row.derivative).EndRow();
    }
    return csv.Text();
}

std::string Json(const FnImpl& function, const std::vector<ValueRow>& rows) {
    JsonText json;
    json.BeginObject();
    json.Key("kind").Value(Utf8(function.KindName()));
    json.Key("text").Value(Utf8(fn::impl::as_wstring(function)));
    json.Key("attributes").BeginArray();
    for (const AttributeRow& row : AttributesOf(function)) {
        json.BeginObject().Key("id").Count(row.id).Key("key").Value(row.key);
        json.Key("type").Value(row.type).Key("value").Value(row.value).End();
    }
    json.End().Key("values").BeginArray();
    for (const ValueRow& row : rows) {
        json.BeginObject().Key("x").Value(row.x).Key("value").Value(row.value);
        json.Key("derivative").Value(row.derivative).End();
    }
    json.End().End();
    return json.Text();
}

std::string Parts(const Definition& definition) {
    std::string text = Utf8(definition.kind) + "\n";
    for (const auto& [key, value] : definition.attributes) {
        text += "  " + Padded(Utf8(key), 16) + "  " + OneLine(Utf8(value)) + "\n";
    }
    return text;
}

std::string PartsJson(const Definition& definition) {
    JsonText json;
    json.BeginObject().Key("kind").Value(Utf8(definition.kind)).Key("attributes").BeginArray();
    for (const auto& [key, value] : definition.attributes) {
        json.BeginObject().Key("key").Value(Utf8(key)).Key("value").Value(Utf8(value)).End();
    }
    json.End().End();
    return json.Text();
}

std::string KindList() {
    std::string text;
    for (const std::wstring& kind : fn::KindNames()) {
        text += Utf8(kind) + "\n";
    }
    return text;
}

std::string KindListJson() {
    JsonText json;
    json.BeginArray();
    for (const std::wstring& kind : fn::KindNames()) {
        json.Value(Utf8(kind));
    }
    json.End();
    return json.Text();
}

void RunFn(const FnOptions& options, std::ostream& out) {
    if (options.kinds) {
        out << (options.json ? KindListJson() : KindList());
        return;
    }
    if (options.text.empty()) {
        throw Failure("no function given, such as \"Linear(DataInit=0 1;2 3)\"");
    }
    if (options.verify) {
        const Definition definition = Parsed(options.text);
        out << (options.json ? PartsJson(definition) : Parts(definition));
        return;
    }
    const OtherFunctions others(options.others);
    IFn function = Defined(options.text);
    const gtl::status result = function.UpdateCalculatedValues();
    if (result.Failed()) {
        throw About(options.text, Utf8(result.as_wstring()));
    }
    const std::vector<ValueRow> values = ValuesOf(*function, options.at);
    if (options.json) {
        out << Json(*function, values);
    } else {
        out << (options.at.empty() ? Listing(*function) : Csv(values));
    }
}

}  // namespace

void AddFn(CLI::App& program, std::ostream& out) {
    const auto options = std::make_shared<FnOptions>();
    CLI::App* const command =
        program.add_subcommand("fn", "Check, list and evaluate a function given by its text");
    command->add_option("TEXT", options->text, "The function: its kind and its attributes")
        ->type_name("");
    AddNumberList(*command, "--at", options->at, "Evaluate at these x");
    command
        ->add_option("--with", options->others,
                     "Another function that the text may refer to by number, as 3=TEXT; may be "
                     "given more than once")
        ->type_name("NUMBER=TEXT")
        ->expected(1)
        ->take_all();
    CLI::Option* const kinds =
        command->add_flag("--kinds", options->kinds, "List the kinds of function");
    CLI::Option* const verify = command->add_flag(
        "--verify", options->verify, "Only take the text apart: its name, keys and values");
    command->add_flag("--json", options->json, "Print JSON");
    verify->excludes(kinds);
    command->footer(
        "Prints the attributes of the function, or with --at one row for each x:\n"
        "x,value,derivative. A cell is empty where there is none. Points are x y;x y;...\n\n"
        "Examples:\n"
        "  lmw fn --kinds\n"
        "  lmw fn \"Spline(DataInit=0 0.4;10 0.3;100 0.1,Tension=50)\"\n"
        "  lmw fn \"FredlundXing(A=12,N=1.8,M=0.6,SatWC=0.42)\" --at -1,-10,-100\n"
        "  lmw fn \"VolWC(3)\" --with \"3=Linear(DataInit=0 1;2 3)\" --at 0.5\n");
    command->callback([options, &out] { RunFn(*options, out); });
}

}  // namespace lmw::tool
