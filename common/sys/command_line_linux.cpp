#include "common/sys/command_line.h"
#include "common/sys/text_encoding.h"

#include <fstream>
#include <iterator>

namespace sys {

std::vector<std::wstring> CommandLine() {
    // Each argument ends in a NUL, so an empty one is a NUL of its own.
    std::ifstream record("/proc/self/cmdline", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(record),
                            std::istreambuf_iterator<char>()};
    std::vector<std::wstring> arguments;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\0', begin), bytes.size());
        arguments.push_back(Widen(std::string_view(bytes).substr(begin, end - begin)));
        begin = end + 1;
    }
    return arguments;
}

}  // namespace sys
