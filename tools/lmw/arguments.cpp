#include "tools/lmw/arguments.h"

#include "tools/lmw/text.h"

#include <cstdint>
#include <string_view>

namespace lmw::tool {
namespace {

double NumberOrThrow(const std::string& option, std::string_view text) {
    double value = 0.0;
    if (!ReadFinite(text, value)) {
        throw CLI::ValidationError(option, Quoted(text) + " is not a number");
    }
    return value;
}

// The long name of "-n,--name", as messages show it.
std::string LongName(const std::string& names) {
    return names.substr(names.rfind(',') + 1);
}

}  // namespace

CLI::Option* AddNumber(CLI::App& command, const std::string& names, std::optional<double>& value,
                       const std::string& description) {
    const std::string option = LongName(names);
    return command
        .add_option_function<std::string>(
            names,
            [&value, option](const std::string& text) { value = NumberOrThrow(option, text); },
            description)
        ->type_name("NUMBER");
}

CLI::Option* AddNumberList(CLI::App& command, const std::string& names, std::vector<double>& values,
                           const std::string& description) {
    const std::string option = LongName(names);
    const auto read = [&values, option](const std::string& text) {
        std::string_view rest = text;
        values.clear();
        for (bool more = true; more;) {
            const std::size_t comma = rest.find(',');
            values.push_back(NumberOrThrow(option, rest.substr(0, comma)));
            more = comma != std::string_view::npos;
            rest.remove_prefix(more ? comma + 1 : 0);
        }
    };
    return command.add_option_function<std::string>(names, read, description)
        ->type_name("NUMBER,...");
}

CLI::Option* AddCount(CLI::App& command, const std::string& names, unsigned& value, unsigned least,
                      unsigned most, const std::string& description) {
    const std::string option = LongName(names);
    const auto read = [&value, option, least, most](const std::string& text) {
        std::uint32_t count = 0;
        if (!ReadCount(text, count) || count < least || count > most) {
            throw CLI::ValidationError(option, Quoted(text) + " is not a whole number from " +
                                                   std::to_string(least) + " to " +
                                                   std::to_string(most));
        }
        value = count;
    };
    return command.add_option_function<std::string>(names, read, description)->type_name("COUNT");
}

void ThrowUnknownWord(const std::string& names, const std::string& text,
                      const std::vector<std::string>& allowed) {
    std::string list;
    for (const std::string& word : allowed) {
        list += (list.empty() ? "" : ", ") + word;
    }
    throw CLI::ValidationError(LongName(names), Quoted(text) + " is none of " + list);
}

}  // namespace lmw::tool
