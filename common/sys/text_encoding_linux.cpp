#include "common/sys/text_encoding.h"

#include <cstddef>
#include <cstdint>

namespace sys {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsCharacter(char32_t c) {
    return c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
}

void AppendUtf8(std::string& out, char32_t c) {
    const auto byte = [&out](char32_t bits) {
        out += static_cast<char>(static_cast<unsigned char>(bits));
    };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6));
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | (c >> 18));
        byte(0x80 | ((c >> 12) & 0x3F));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

// Reads one character at `at` and moves past it. An ill-formed sequence is taken up to, not
// including, the first byte that cannot belong to it.
char32_t NextCharacter(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) {
        return lead;
    }
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    if (lead < 0xC2 || lead > 0xF4) {
        return kReplacement;
    }
    // The first following byte is narrower where a longer form would repeat a shorter one, name a
    // surrogate, or leave the code space.
    unsigned low = lead == 0xE0 ? 0xA0U : lead == 0xF0 ? 0x90U : 0x80U;
    unsigned high = lead == 0xED ? 0x9FU : lead == 0xF4 ? 0x8FU : 0xBFU;
    char32_t c = lead & (0x3FU >> following);
    for (int k = 0; k < following; ++k) {
        if (at == text.size()) {
            return kReplacement;
        }
        const auto next = static_cast<unsigned char>(text[at]);
        if (next < low || next > high) {
            return kReplacement;
        }
        c = (c << 6) | (next & 0x3FU);
        low = 0x80;
        high = 0xBF;
        ++at;
    }
    return c;
}

}  // namespace

std::string Narrow(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (const wchar_t unit : text) {
        const auto c = static_cast<char32_t>(unit);
        AppendUtf8(out, IsCharacter(c) ? c : kReplacement);
    }
    return out;
}

std::wstring Widen(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        out += static_cast<wchar_t>(NextCharacter(text, at));
    }
    return out;
}

}  // namespace sys
