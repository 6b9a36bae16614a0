#pragma once

// A password in memory.

#include <cstddef>
#include <string>

namespace lmw::file::detail {

/// Overwrites a text so that the compiler cannot leave it out.
inline void Wipe(std::string& text) noexcept {
    volatile char* const bytes = text.data();
    for (std::size_t k = 0; k < text.size(); ++k) {
        bytes[k] = 0;
    }
    text.clear();
}

/// Holds a password and overwrites it at its end.
class Secret {
 public:
    /// Overwrites `password`, too.
    explicit Secret(std::string& password) : text_(password) { Wipe(password); }
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    ~Secret() { Wipe(text_); }

    [[nodiscard]] const char* Text() const noexcept { return text_.c_str(); }

 private:
    std::string text_;
};

}  // namespace lmw::file::detail
