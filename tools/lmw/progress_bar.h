#pragma once

// How far a long command is, for somebody who watches.

#include <functional>
#include <string>
#include <string_view>

namespace lmw::tool {

/// The bar when a part from 0 to 1 of the work is done, in one line without a line end:
/// "[########----------------] writing".
[[nodiscard]] std::string ProgressText(double part_done, std::string_view what);

/// A bar on standard error while that is a terminal; where it is a file or a pipe, there is none.
class ProgressBar {
 public:
    ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    /// As End.
    ~ProgressBar();

    /// Shows how much is done, if that changes the bar.
    void Show(double part_done, std::string_view what);
    /// Wipes the bar away, so that what is printed next stands alone.
    void End();

    /// Show as the archive's operations take it, for as long as the bar lives; they go on while it
    /// answers true. Empty where there is no bar: they do without then.
    [[nodiscard]] std::function<bool(double)> Function(std::string what);

 private:
    bool shown_;
    std::string drawn_;
};

}  // namespace lmw::tool
