#include "common/sys/command_line.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>

namespace sys {

namespace {

struct LocalFreer {
    void operator()(wchar_t** memory) const noexcept { LocalFree(memory); }
};

}  // namespace

std::vector<std::wstring> CommandLine() {
    int count = 0;
    const std::unique_ptr<wchar_t*[], LocalFreer> arguments(
        CommandLineToArgvW(GetCommandLineW(), &count));
    if (!arguments) {
        return {};
    }
    return {arguments.get(), arguments.get() + count};
}

}  // namespace sys
