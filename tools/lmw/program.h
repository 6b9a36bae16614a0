#pragma once

// The program without its main function: tests run command lines through it in their own process.

#include <iosfwd>
#include <string>
#include <vector>

namespace lmw::tool {

/// Runs one command line: `arguments` without the program's name, in UTF-8. Results go to `out`.
/// Arguments of diagnostics, such as "level=warning", are skipped wherever they stand: the library
/// takes them from the process itself. (A file of such a name is reached as "./level=1".)
/// Returns the exit code:
/// - 0: done, or help or the version was asked for;
/// - 2: bad usage or bad input; `err` then holds exactly one line, "lmw: <what is wrong>", `out` is
///   empty and no output file was written (lmw archive extract keeps the files that were complete);
/// - 1: lmw archive test found damage, which it lists on `out`; or a fault of the program itself.
///   One line on `err` likewise.
[[nodiscard]] int RunProgram(std::vector<std::string> arguments, std::ostream& out,
                             std::ostream& err);

}  // namespace lmw::tool
