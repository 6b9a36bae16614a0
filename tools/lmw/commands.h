#pragma once

// The commands of the program, one source file each (<name>_command.cpp). A command is added by one
// function here and one call in program.cpp.

#include <CLI/CLI.hpp>
#include <iosfwd>

namespace lmw::tool {

/// Each function adds one command to `program`: its options, its help, and as its callback the work
/// itself. The callback reads and checks all its input, computes, writes its files by WriteFiles,
/// and only then prints its result to `out`. It reports bad input by throwing Failure. `out`
/// outlives the program object; options live in a shared record that the callback keeps.
void AddArchive(CLI::App& program, std::ostream& out);
void AddCurve(CLI::App& program, std::ostream& out);
void AddDemo(CLI::App& program, std::ostream& out);
void AddFit(CLI::App& program, std::ostream& out);
void AddFn(CLI::App& program, std::ostream& out);
void AddParams(CLI::App& program, std::ostream& out);
void AddDiag(CLI::App& program, std::ostream& out);
void AddSample(CLI::App& program, std::ostream& out);
void AddGeom(CLI::App& program, std::ostream& out);

}  // namespace lmw::tool
