#include "tools/lmw/progress_bar.h"

#include "common/sys/error_stream.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace lmw::tool {
namespace {

constexpr std::string_view kWipe = "\r\x1b[K";  // to the start of the line; clear it

}  // namespace

std::string ProgressText(double part_done, std::string_view what) {
    constexpr std::size_t kWidth = 24;
    const auto filled = static_cast<std::size_t>(std::clamp(part_done, 0.0, 1.0) * kWidth);
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, '-') + "] " +
           std::string(what);
}

ProgressBar::ProgressBar() : shown_(sys::IsErrorStreamTerminal()) {}

ProgressBar::~ProgressBar() {
    End();
}

void ProgressBar::Show(double part_done, std::string_view what) {
    if (!shown_) {
        return;
    }
    std::string text = ProgressText(part_done, what);
    if (text != drawn_) {
        drawn_ = std::move(text);
        sys::WriteErrorStream(std::string(kWipe) + drawn_);
    }
}

void ProgressBar::End() {
    if (!drawn_.empty()) {
        sys::WriteErrorStream(kWipe);
        drawn_.clear();
    }
}

std::function<bool(double)> ProgressBar::Function(std::string what) {
    if (!shown_) {
        return {};
    }
    return [this, text = std::move(what)](double part_done) {
        Show(part_done, text);
        return true;
    };
}

}  // namespace lmw::tool
