#include "common/sys/command_line.h"

#include "tools/lmw/program.h"
#include "tools/lmw/text.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <type_traits>
#include <vector>

namespace {

// Where file names are wide, main's narrow arguments have already lost characters, so the wide ones
// are asked for. Where file names are bytes, main's arguments are those bytes.
std::vector<std::string> Arguments(int count, char** values) {
    std::vector<std::string> arguments;
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>) {
        for (const std::wstring& argument : sys::CommandLine()) {
            arguments.push_back(lmw::tool::Utf8(argument));
        }
    } else {
        arguments.assign(values, values + count);
    }
    if (!arguments.empty()) {
        arguments.erase(arguments.begin());  // the program's own name
    }
    return arguments;
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    return lmw::tool::RunProgram(Arguments(argc, argv), std::cout, std::cerr);
}
