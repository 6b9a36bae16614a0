#pragma once

// A password in memory.

#include <cstddef>
#include <string>

namespace lmw::file::detail {

/// Overwrites a text so that the compiler cannot leave it out.
template <class Character>
void Wipe(std::basic_string<Character>& text) noexcept {
    volatile Character* const characters = text.data();
    for (std::size_t k = 0; k < text.size(); ++k) {
        characters[k] = 0;
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
