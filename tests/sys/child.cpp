// The program that the tests of the platform room start: it answers by its exit code.

#include "common/sys/command_line.h"
#include "common/sys/debugger.h"

#include "tests/sys/child_process.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace {

int Answer(const std::vector<std::wstring>& arguments) {
    using namespace lmw::test;
    if (arguments.size() < 2) {
        return EXIT_FAILURE;
    }
    if (arguments[1] == kCompareArguments) {
        const std::vector<std::wstring> rest(arguments.begin() + 2, arguments.end());
        return rest == DifficultArguments() ? kYes : kNo;
    }
    if (arguments[1] == kReportDebugger) {
        return sys::IsDebuggerAttached() ? kYes : kNo;
    }
    return EXIT_FAILURE;
}

}  // namespace

int main() {
    // Without the library's and the sanitizers' work at exit, which a debugger would disturb.
    std::_Exit(Answer(sys::CommandLine()));
}
