#include "common/log_filter.h"

#include "common/detail/last_error_keeper.h"
#include "common/detail/process_arguments.h"
#include "common/sys/text_encoding.h"

#include <limits>

namespace lmw::diag {

namespace impl {

constinit std::atomic<std::int32_t> filter_min_level = std::numeric_limits<std::int32_t>::min();

}  // namespace impl

namespace {

constinit std::atomic<std::int32_t> filter_categories = kDefaultCategories;

// The words are atomic for the sake of the language alone; nothing is ordered by them.
constexpr auto kRelaxed = std::memory_order_relaxed;

// Sets the words from the command line, once, before anything else reads or sets them.
void PrepareFilter() {
    [[maybe_unused]] static const bool prepared = [] {
        const lmw::detail::LastErrorKeeper keeper;
        const lmw::detail::ProcessArguments& arguments = lmw::detail::ProcessCmdLineArguments_();
        const int level = LevelByText(arguments.level);
        if (!arguments.category.empty()) {
            filter_categories.store(MakeCategoryMask(sys::Narrow(arguments.category)), kRelaxed);
        }
        impl::filter_min_level.store(level != kNoLevel ? level : kInformation, kRelaxed);
        return true;
    }();
}

}  // namespace

int LogFilter::MinLevel() {
    PrepareFilter();
    return impl::filter_min_level.load(kRelaxed);
}

int LogFilter::CategoryMask() {
    PrepareFilter();
    return filter_categories.load(kRelaxed);
}

void LogFilter::Set(const std::wstring& level_text, const std::wstring& category_text) {
    PrepareFilter();
    const int level = LevelByText(level_text);
    if (level != kNoLevel) {
        impl::filter_min_level.store(level, kRelaxed);
    }
    if (!category_text.empty()) {
        filter_categories.store(MakeCategoryMask(sys::Narrow(category_text)), kRelaxed);
    }
}

void LogFilter::Set(int min_level, int category_mask) {
    PrepareFilter();
    impl::filter_min_level.store(min_level, kRelaxed);
    filter_categories.store(category_mask, kRelaxed);
}

bool IsLogged(int level, int category) {
    PrepareFilter();
    if (level < impl::filter_min_level.load(kRelaxed)) {
        return false;
    }
    return (category & (filter_categories.load(kRelaxed) | kEveryFilter)) != 0;
}

}  // namespace lmw::diag
