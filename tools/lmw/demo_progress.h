#pragma once

// How far a long command is, for somebody who watches.

#include <cstddef>
#include <string>
#include <string_view>

namespace lmw::tool {

/// The bar with so many of its steps done, in one line without a line end:
/// "[#######-------------] 3/8 functions".
[[nodiscard]] std::string ProgressText(std::size_t done, std::size_t steps, std::string_view what);

/// A bar on standard error while it is a terminal; where standard error is a file or a pipe, there
/// is none.
class ProgressBar {
 public:
    explicit ProgressBar(std::size_t steps);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    /// As End.
    ~ProgressBar();

    /// Shows that the next step has begun.
    void Begin(std::string_view what);
    /// Wipes the bar away, so that what is printed next stands alone.
    void End();

 private:
    std::size_t steps_;
    std::size_t begun_ = 0;
    bool shown_;
};

}  // namespace lmw::tool
