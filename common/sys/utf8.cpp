#include "common/sys/utf8.h"

#include <cstddef>

namespace sys {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kIllFormed = 0xFFFFFFFF;
constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

bool IsHighSurrogate(char32_t c) noexcept {
    return c >= 0xD800 && c <= 0xDBFF;
}

bool IsLowSurrogate(char32_t c) noexcept {
    return c >= 0xDC00 && c <= 0xDFFF;
}

bool IsCharacter(char32_t c) noexcept {
    return c <= 0x10FFFF && !IsHighSurrogate(c) && !IsLowSurrogate(c);
}

// Takes the character at `at` and moves past it.
char32_t TakeWide(std::wstring_view text, std::size_t& at, bool join_pairs) noexcept {
    const auto c = static_cast<char32_t>(text[at++]);
    if (join_pairs && IsHighSurrogate(c) && at < text.size()) {
        const auto low = static_cast<char32_t>(text[at]);
        if (IsLowSurrogate(low)) {
            ++at;
            return 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        }
    }
    return IsCharacter(c) ? c : kReplacement;
}

// Takes the character at `at` and moves past it. An ill-formed sequence is taken up to, not
// including, the first byte that cannot belong to it.
char32_t TakeUtf8(std::string_view bytes, std::size_t& at) noexcept {
    const auto lead = static_cast<unsigned char>(bytes[at++]);
    if (lead < 0x80) {
        return lead;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return kIllFormed;
    }
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    // The first following byte is narrower where a longer form would repeat a shorter one, name a
    // surrogate, or leave the code space.
    unsigned low = lead == 0xE0 ? 0xA0U : lead == 0xF0 ? 0x90U : 0x80U;
    unsigned high = lead == 0xED ? 0x9FU : lead == 0xF4 ? 0x8FU : 0xBFU;
    char32_t c = lead & (0x3FU >> following);
    for (int k = 0; k < following; ++k, ++at) {
        const unsigned next = at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
        if (next < low || next > high) {
            return kIllFormed;
        }
        c = (c << 6) | (next & 0x3FU);
        low = 0x80;
        high = 0xBF;
    }
    return c;
}

std::size_t Utf8Size(char32_t c) noexcept {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

void AppendUtf8(std::string& out, char32_t c) {
    const auto append = [&out](char32_t byte) {
        out += static_cast<char>(static_cast<unsigned char>(byte));
    };
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

void AppendWide(std::wstring& out, char32_t c) {
    if (kWideIsUtf16 && c >= 0x10000) {
        out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
        out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
        out += static_cast<wchar_t>(c);
    }
}

}  // namespace

std::string Utf8FromWide(std::wstring_view text, LoosePairs pairs) {
    const bool join_pairs = kWideIsUtf16 || pairs == LoosePairs::kJoin;
    std::size_t size = 0;
    for (std::size_t at = 0; at < text.size();) {
        size += Utf8Size(TakeWide(text, at, join_pairs));
    }
    std::string out;
    out.reserve(size);
    for (std::size_t at = 0; at < text.size();) {
        AppendUtf8(out, TakeWide(text, at, join_pairs));
    }
    return out;
}

std::wstring WideFromUtf8(std::string_view bytes) {
    std::wstring out;
    out.reserve(bytes.size());  // no sequence has more units than bytes
    for (std::size_t at = 0; at < bytes.size();) {
        const char32_t c = TakeUtf8(bytes, at);
        AppendWide(out, c == kIllFormed ? kReplacement : c);
    }
    return out;
}

bool IsUtf8(std::string_view bytes) noexcept {
    for (std::size_t at = 0; at < bytes.size();) {
        if (TakeUtf8(bytes, at) == kIllFormed) {
            return false;
        }
    }
    return true;
}

}  // namespace sys
