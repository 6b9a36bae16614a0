#pragma once

// The program without its main function: tests run command lines through it in their own process.

#include <iosfwd>
#include <string>
#include <vector>

namespace lmw::tool {

/// Runs one command line: `arguments` without the program's name, in UTF-8. Results go to `out`.
/// Returns the exit code:
/// - 0: done, or help or the version was asked for;
/// - 2: bad usage or bad input; `err` then holds exactly one line, "lmw: <what is wrong>", `out` is
///   empty and no output file was written;
/// - 1: a fault of the program itself, likewise with one line on `err`.
[[nodiscard]] int RunProgram(std::vector<std::string> arguments, std::ostream& out,
                             std::ostream& err);

}  // namespace lmw::tool
