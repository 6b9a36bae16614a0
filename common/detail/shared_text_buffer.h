#pragma once

// The process-wide buffer behind the functions that return `const char*` text.

#include <cstddef>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace lmw::detail {

/// Holds one NUL-terminated text that every call overwrites.
/// A pointer once returned stays readable for the life of the buffer: when a text needs more room,
/// a block of at least twice the size is added and the older ones are kept, so that a thread that
/// is still copying reads a mixed text at worst, never freed memory. The kept blocks together are
/// smaller than the newest.
class SharedTextBuffer {
 public:
    /// Copies `text` into the buffer, up to its first NUL if it has one, and returns the buffer.
    const char* Store(std::string_view text);

 private:
    std::mutex mutex_;
    std::vector<std::unique_ptr<char[]>> blocks_;
    std::size_t capacity_ = 0;
};

}  // namespace lmw::detail
