#include "common/detail/utf8_text.h"

#include <cstddef>

namespace lmw::detail {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t c, char32_t first) {
    return c >= first && c < first + 0x400;
}

void AppendUtf8(std::string& text, char32_t c) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        append(c);
        return;
    }
    if (c < 0x800) {
        append(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            append(0xE0 | (c >> 12));
        } else {
            append(0xF0 | (c >> 18));
            append(0x80 | ((c >> 12) & 0x3F));
        }
        append(0x80 | ((c >> 6) & 0x3F));
    }
    append(0x80 | (c & 0x3F));
}

// Where wchar_t has 32 bits a pair of surrogates is two ill-formed characters.
bool IsPairAt(std::wstring_view text, std::size_t i) {
    return sizeof(wchar_t) == 2 && i + 1 < text.size() &&
           IsSurrogate(static_cast<char32_t>(text[i]), 0xD800) &&
           IsSurrogate(static_cast<char32_t>(text[i + 1]), 0xDC00);
}

}  // namespace

std::string Utf8Text(std::wstring_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<char32_t>(text[i]);
        if (IsPairAt(text, i)) {
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(text[i + 1]) - 0xDC00);
            ++i;
        } else if (IsSurrogate(c, 0xD800) || IsSurrogate(c, 0xDC00) || c > 0x10FFFF) {
            c = kReplacement;
        }
        AppendUtf8(result, c);
    }
    return result;
}

}  // namespace lmw::detail
