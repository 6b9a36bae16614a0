#pragma once

// The settings of the process' command line that diagnostics use. They are read from the system,
// not from main, so that they work in any host without its help.

#include <span>
#include <string>

namespace lmw::detail {

struct ProcessArguments {
    std::wstring level;     ///< of "level=..."; empty when not given
    std::wstring category;  ///< of "category=..."; empty when not given
    bool safe_mode = false;
    bool assert_interactive = false;
};

/// Reads the arguments of a command line, the program's own name first; it is skipped.
///
/// 1. Switches are "safemode" and "assertinteractive" after one "/" or "-", in any case.
/// 2. "level=text" and "category=text" in any case; of several the last wins. An argument with
///    another number of "=" than one is none.
/// 3. Everything else is the host's and is ignored.
ProcessArguments ReadProcessArguments(std::span<const std::wstring> arguments);

/// Those of this process, read on first use. Any thread; never destroyed.
const ProcessArguments& ProcessCmdLineArguments_();

}  // namespace lmw::detail
