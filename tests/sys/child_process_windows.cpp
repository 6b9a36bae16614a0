#include "common/sys/text_encoding.h"

#include "tests/sys/child_process.h"

#include <windows.h>

namespace lmw::test {

namespace {

// Lets a debugged process run until it ends.
void ServeDebugEvents() {
    for (DEBUG_EVENT event{}; WaitForDebugEvent(&event, INFINITE) != FALSE;) {
        const bool ended = event.dwDebugEventCode == EXIT_PROCESS_DEBUG_EVENT;
        const bool breakpoint = event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT &&
                                event.u.Exception.ExceptionRecord.ExceptionCode ==
                                    static_cast<DWORD>(EXCEPTION_BREAKPOINT);
        const bool unhandled = event.dwDebugEventCode == EXCEPTION_DEBUG_EVENT && !breakpoint;
        ContinueDebugEvent(event.dwProcessId, event.dwThreadId,
                           unhandled ? static_cast<DWORD>(DBG_EXCEPTION_NOT_HANDLED)
                                     : static_cast<DWORD>(DBG_CONTINUE));
        if (ended) {
            return;
        }
    }
}

// `arguments` is the command line after the program's name, quoted as the system expects it.
int Run(const std::wstring& arguments, DWORD creation_flags) {
    const std::wstring program = sys::Widen(LMW_CHILD_PROGRAM);
    std::wstring command_line = L"\"" + program + L"\" " + arguments;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessW(program.c_str(), command_line.data(), nullptr, nullptr, FALSE,
                       creation_flags, nullptr, nullptr, &startup, &process) == FALSE) {
        return -1;
    }
    if ((creation_flags & DEBUG_ONLY_THIS_PROCESS) != 0) {
        ServeDebugEvents();
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exit_code = 0;
    const bool known = GetExitCodeProcess(process.hProcess, &exit_code) != FALSE;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return known ? static_cast<int>(exit_code) : -1;
}

}  // namespace

int RunChildWithArguments() {
    // DifficultArguments in the system's quoting, by hand: a backslash is special before a
    // quotation mark only, and there counts twice.
    return Run(std::wstring(kCompareArguments) +
                   L" \"\" \"two words\" \"say \\\"so\\\"\" end\\ a\\\\\\\\\\\"b "
                   L"\u00E4\u20AC\U0001F600",
               0);
}

int RunChild(const wchar_t* mode) {
    return Run(mode, 0);
}

int RunChildUnderDebugger(const wchar_t* mode) {
    return Run(mode, DEBUG_ONLY_THIS_PROCESS);
}

}  // namespace lmw::test
