#include "tools/lmw/program.h"

#include "common/version.h"

#include "tools/lmw/commands.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <memory>
#include <new>
#include <ostream>

namespace lmw::tool {
namespace {

constexpr int kBadInput = 2;
constexpr int kFault = 1;

// The parser's help, with long descriptions broken into lines.
class HelpFormatter : public CLI::Formatter {
 public:
    HelpFormatter() { label("SUBCOMMAND", "COMMAND"); }

    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_name().empty() ? "" : " " + option->get_type_name();
    }

    std::string make_option_desc(const CLI::Option* option) const override {
        constexpr std::size_t kColumns = 68;
        std::string text = option->get_description();
        for (std::size_t start = 0; text.size() - start > kColumns;) {
            const std::size_t blank = text.rfind(' ', start + kColumns);
            if (blank == std::string::npos || blank <= start) {
                break;
            }
            text[blank] = '\n';
            start = blank + 1;
        }
        return text;
    }

    // For --help-all: commands within commands too, which the parser only names.
    std::string make_expanded(const CLI::App* command) const override {
        std::string text = CLI::Formatter::make_expanded(command);
        for (const CLI::App* const inner : command->get_subcommands({})) {
            text += "\n" + command->get_name() + " " + make_expanded(inner);
        }
        return text;
    }
};

// The parser would only say that a command is missing.
void CheckCommand(const CLI::App& program, const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        throw Failure("no command given (lmw --help lists them)");
    }
    const std::string& word = arguments.front();
    const auto named = [&word](const CLI::App* command) { return command->check_name(word); };
    if (!word.starts_with('-') && program.get_subcommands(named).empty()) {
        throw Failure(Quoted(word) + " is no command (lmw --help lists them)");
    }
}

// Whether the library takes an argument from the process' command line: "level=..." or
// "category=..." with one "=", or one of its switches after one hyphen, in any case. (The same
// switches after a slash might be file names, and are left to the commands.)
bool IsForDiagnostics(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    std::string name = argument.substr(0, equals);
    for (char& c : name) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    if (equals == std::string::npos) {
        return name == "-safemode" || name == "-assertinteractive";
    }
    return (name == "level" || name == "category") &&
           argument.find('=', equals + 1) == std::string::npos;
}

int Report(std::ostream& err, const char* what, int exit_code) {
    err << "lmw: " << OneLine(what) << '\n';
    return exit_code;
}

}  // namespace

int RunProgram(std::vector<std::string> arguments, std::ostream& out, std::ostream& err) {
    CLI::App program(
        "Curves, functions, tables, geometry and project archives of measured soil data.", "lmw");
    program.allow_windows_style_options(false);  // "/data/soil.csv" is a path on every platform
    program.set_help_all_flag("--help-all", "Print the help of all commands and exit");
    program.set_version_flag("--version", LMW_VERSION_STRING);
    program.require_subcommand(1);
    program.failure_message([](const CLI::App*, const CLI::Error& error) { return error.what(); });
    program.formatter(std::make_shared<HelpFormatter>());
    AddArchive(program, out);
    AddCurve(program, out);
    AddDemo(program, out);
    AddDiag(program, out);
    AddFit(program, out);
    AddFn(program, out);
    AddGeom(program, out);
    AddParams(program, out);
    AddSample(program, out);
    for (CLI::App* const command : program.get_subcommands({})) {
        command->group("Commands");
    }
    program.footer(
        "Each command has its own help: lmw COMMAND --help\n"
        "level=LEVEL and category=NAME;NAME anywhere set what is logged (lmw diag).\n");
    std::erase_if(arguments, IsForDiagnostics);
    try {
        CheckCommand(program, arguments);
        std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the back
        program.parse(arguments);
    } catch (const CLI::Success& request) {  // help or version
        program.exit(request, out, err);
    } catch (const CLI::ParseError& error) {
        return Report(err, error.what(), kBadInput);
    } catch (const Failure& failure) {
        return Report(err, failure.what(), kBadInput);
    } catch (const std::bad_alloc&) {
        return Report(err, "not enough memory", kFault);
    } catch (const std::exception& fault) {
        return Report(err, fault.what(), kFault);
    }
    out.flush();
    if (!out) {
        return Report(err, "the output cannot be written", kBadInput);
    }
    return 0;
}

}  // namespace lmw::tool
