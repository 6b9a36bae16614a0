#include "common/log_category.h"

#include <algorithm>
#include <cstddef>
#include <mutex>
#include <utility>

namespace lmw::diag {

namespace {

// The names in the order of their bits.
class CategoryRegistry {
 public:
    // The registered bit of one name.
    int Mask(std::string_view name) {
        const std::lock_guard lock(mutex_);
        const auto found = std::find(names_.begin(), names_.end(), name);
        if (found == names_.end()) {
            if (names_.size() == kMostNames) {
                return kDefaultCategories;
            }
            names_.emplace_back(name);
            return BitOf(names_.size() - 1);
        }
        return BitOf(static_cast<std::size_t>(found - names_.begin()));
    }

    // A copy: the caller works on it without the lock.
    std::vector<std::string> Names() {
        const std::lock_guard lock(mutex_);
        return names_;
    }

    static int BitOf(std::size_t index) { return 8 << index; }

 private:
    static constexpr std::size_t kMostNames = 28;

    std::mutex mutex_;
    std::vector<std::string> names_;
};

CategoryRegistry& Registry() {
    // Never destroyed: categories are declared by static initialisers and used until the process
    // ends.
    static auto* const registry = new CategoryRegistry;
    return *registry;
}

}  // namespace

int MakeCategoryMask(std::string_view names) {
    int mask = 0;
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find(';'));
        names.remove_prefix(std::min(name.size() + 1, names.size()));
        mask |= name.empty() ? 0 : Registry().Mask(name);
    }
    return mask;
}

std::string CategoryNames(int mask) {
    if (mask == kAllCategories) {
        return "all";
    }
    std::string joined;
    if (mask < 8) {
        return joined;
    }
    const std::vector<std::string> names = Registry().Names();
    for (std::size_t index = 0; index < names.size(); ++index) {
        if ((mask & CategoryRegistry::BitOf(index)) != 0) {
            joined += joined.empty() ? "" : ";";
            joined += names[index];
        }
    }
    return joined;
}

std::vector<std::string> RegisteredCategories() {
    return Registry().Names();
}

DeclareCategoryMask::DeclareCategoryMask(std::string name)
    : name_(std::move(name)), mask_(MakeCategoryMask(name_)) {}

}  // namespace lmw::diag
