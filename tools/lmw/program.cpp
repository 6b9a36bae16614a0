#include "tools/lmw/program.h"

#include "common/version.h"

#include "tools/lmw/commands.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <exception>
#include <ostream>

namespace lmw::tool {
namespace {

constexpr int kBadInput = 2;
constexpr int kFault = 1;

int Report(std::ostream& err, const char* what, int exit_code) {
    err << "lmw: " << OneLine(what) << '\n';
    return exit_code;
}

}  // namespace

int RunProgram(std::vector<std::string> arguments, std::ostream& out, std::ostream& err) {
    CLI::App program("Curves, tables and pictures from measured soil data.", "lmw");
    program.set_version_flag("--version", LMW_VERSION_STRING);
    program.require_subcommand(1);
    program.failure_message([](const CLI::App*, const CLI::Error& error) { return error.what(); });
    try {
        std::reverse(arguments.begin(), arguments.end());  // the parser takes them from the back
        program.parse(arguments);
    } catch (const CLI::Success& request) {  // help or version
        program.exit(request, out, err);
    } catch (const CLI::ParseError& error) {
        return Report(err, error.what(), kBadInput);
    } catch (const Failure& failure) {
        return Report(err, failure.what(), kBadInput);
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
