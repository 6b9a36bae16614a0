#include "common/detail/process_arguments.h"

#include "common/detail/ascii_case.h"
#include "common/sys/command_line.h"

#include <string_view>

namespace lmw::detail {

ProcessArguments ReadProcessArguments(std::span<const std::wstring> arguments) {
    ProcessArguments settings;
    for (const std::wstring& argument : arguments.subspan(arguments.empty() ? 0 : 1)) {
        const std::wstring_view text = argument;
        if (text.starts_with(L'/') || text.starts_with(L'-')) {
            const std::wstring_view name = text.substr(1);
            settings.safe_mode = settings.safe_mode || EqualIgnoringAsciiCase(name, L"safemode");
            settings.assert_interactive =
                settings.assert_interactive || EqualIgnoringAsciiCase(name, L"assertinteractive");
        }
        const std::size_t equals = text.find(L'=');
        if (equals == std::wstring_view::npos || text.find(L'=', equals + 1) != text.npos) {
            continue;
        }
        const std::wstring_view name = text.substr(0, equals);
        if (EqualIgnoringAsciiCase(name, L"level")) {
            settings.level = text.substr(equals + 1);
        } else if (EqualIgnoringAsciiCase(name, L"category")) {
            settings.category = text.substr(equals + 1);
        }
    }
    return settings;
}

const ProcessArguments& ProcessCmdLineArguments_() {
    static const auto* const settings =
        new ProcessArguments(ReadProcessArguments(sys::CommandLine()));
    return *settings;
}

}  // namespace lmw::detail
