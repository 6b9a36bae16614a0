#include "common/sys/text_encoding.h"

#include "tests/sys/child_process.h"

#include <signal.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lmw::test {

namespace {

enum class Debugger { kNone, kParent };

int Run(std::vector<std::wstring> arguments, Debugger debugger) {
    arguments.insert(arguments.begin(), sys::Widen(LMW_CHILD_PROGRAM));
    std::vector<std::string> narrow;
    for (const std::wstring& argument : arguments) {
        narrow.push_back(sys::Narrow(argument));
    }
    std::vector<char*> pointers;
    for (std::string& argument : narrow) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);

    const pid_t child = fork();
    if (child == 0) {
        if (debugger == Debugger::kParent) {
            ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        }
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    int state = 0;
    while (child > 0 && waitpid(child, &state, 0) == child) {
        if (WIFEXITED(state)) {
            return WEXITSTATUS(state);
        }
        if (!WIFSTOPPED(state)) {
            break;
        }
        // The stop after exec is the debugger's own; other signals are passed on.
        const int signal_number = WSTOPSIG(state) == SIGTRAP ? 0 : WSTOPSIG(state);
        ptrace(PTRACE_CONT, child, nullptr, static_cast<long>(signal_number));
    }
    return -1;
}

}  // namespace

int RunChildWithArguments() {
    std::vector<std::wstring> arguments = DifficultArguments();
    arguments.insert(arguments.begin(), kCompareArguments);
    return Run(arguments, Debugger::kNone);
}

int RunChild(const wchar_t* mode) {
    return Run({mode}, Debugger::kNone);
}

int RunChildUnderDebugger(const wchar_t* mode) {
    return Run({mode}, Debugger::kParent);
}

}  // namespace lmw::test
