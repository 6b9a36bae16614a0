#include "common/detail/shared_text_buffer.h"

#include <algorithm>

namespace lmw::detail {

const char* SharedTextBuffer::Store(std::string_view text) {
    constexpr std::size_t kFirstCapacity = 1024;
    text = text.substr(0, text.find('\0'));
    const std::scoped_lock lock(mutex_);
    if (text.size() >= capacity_) {
        const std::size_t capacity = std::max({kFirstCapacity, 2 * capacity_, text.size() + 1});
        blocks_.push_back(std::make_unique<char[]>(capacity));
        capacity_ = capacity;
    }
    char* const block = blocks_.back().get();
    *std::copy(text.begin(), text.end(), block) = '\0';
    return block;
}

}  // namespace lmw::detail
