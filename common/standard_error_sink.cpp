#include "common/standard_error_sink.h"

#include "common/detail/log_line.h"
#include "common/log_level.h"
#include "common/sys/environment.h"
#include "common/sys/error_stream.h"
#include "common/sys/utf8.h"

#include <string_view>

namespace lmw::diag {

namespace {

std::wstring_view ColourOf(int level) {
    if (level >= kError) {
        return L"\x1B[31m";  // red
    }
    if (level == kWarning) {
        return L"\x1B[33m";  // yellow
    }
    return level == kInformation ? L"\x1B[36m" : L"\x1B[2m";  // cyan, faint
}

}  // namespace

void StandardErrorSink::Log(int level, int category, const std::wstring& message, const char* file,
                            int line, const char* function) {
    if (level < min_level_) {
        return;
    }
    std::wstring text =
        lmw::detail::LogLine({level, category, message, file, line, function}) + L"\n";
    // Asked at each message: a host may redirect its streams at any time.
    if (sys::IsErrorStreamTerminal() && !sys::IsEnvironmentVariableDefined("NO_COLOR")) {
        const std::size_t length = LevelText(level).size();
        text.insert(length, L"\x1B[0m");
        text.insert(0, ColourOf(level));
    }
    sys::WriteErrorStream(sys::Utf8FromWide(text, sys::LoosePairs::kReplace));
}

}  // namespace lmw::diag
