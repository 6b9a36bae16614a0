#include "tools/lmw/demo_progress.h"

#include "common/sys/error_stream.h"

#include <algorithm>

namespace lmw::tool {
namespace {

constexpr std::size_t kWidth = 24;
constexpr std::string_view kWipe = "\r\x1b[K";  // to the start of the line; clear it

}  // namespace

std::string ProgressText(std::size_t done, std::size_t steps, std::string_view what) {
    const std::size_t filled = steps == 0 ? kWidth : std::min(done, steps) * kWidth / steps;
    return "[" + std::string(filled, '#') + std::string(kWidth - filled, '-') + "] " +
           std::to_string(done) + "/" + std::to_string(steps) + " " + std::string(what);
}

ProgressBar::ProgressBar(std::size_t steps) : steps_(steps), shown_(sys::IsErrorStreamTerminal()) {}

ProgressBar::~ProgressBar() {
    End();
}

void ProgressBar::Begin(std::string_view what) {
    if (shown_) {
        sys::WriteErrorStream(std::string(kWipe) + ProgressText(begun_, steps_, what));
    }
    ++begun_;
}

void ProgressBar::End() {
    if (shown_ && begun_ > 0) {
        sys::WriteErrorStream(kWipe);
    }
    begun_ = 0;
}

}  // namespace lmw::tool
