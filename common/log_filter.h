#pragma once

// The process-wide filter of messages: a minimum level and a mask of categories.
// It starts with what the process' command line says, "level=warning" and "category=io;mesh" for
// example, else with level kInformation and kDefaultCategories. Call sites use the macros of
// common/log.h, which ask it before they format anything.

#include "common/export.h"
#include "common/log_category.h"
#include "common/log_level.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace lmw::diag {

/// The two values are independent 32-bit words. A change is seen by other threads soon, without any
/// order relative to the other word or to other memory.
class LMW_API LogFilter {
 public:
    LogFilter() = delete;

    [[nodiscard]] static int MinLevel();
    [[nodiscard]] static int CategoryMask();

    /// Sets the minimum level unless `level_text` is empty or means none (LevelByText), and the
    /// mask to MakeCategoryMask of the narrow `category_text` unless that is empty. By design:
    /// there is no name for all categories. A category may be called "all" like anything else; who
    /// wants to see everything sets the mask kAllCategories.
    static void Set(const std::wstring& level_text, const std::wstring& category_text);

    /// Sets both unchanged.
    static void Set(int min_level, int category_mask);
};

/// Whether a message is to be logged: its level is the minimum or above, and its category contains
/// kEveryFilter or shares a bit with the mask. So kAllCategories passes every mask and 0 none.
LMW_API bool IsLogged(int level, int category);

namespace impl {

/// The minimum level once the filter is in use; until then the lowest integer, which every level
/// reaches, so that the first message asks IsLogged, which reads the command line.
LMW_API extern std::atomic<std::int32_t> filter_min_level;

/// False only when IsLogged would be false: the one comparison that a filtered message costs.
inline bool MayBeLogged_(int level) noexcept {
    return level >= filter_min_level.load(std::memory_order_relaxed);
}

}  // namespace impl

}  // namespace lmw::diag
