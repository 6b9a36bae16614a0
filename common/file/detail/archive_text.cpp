#include "common/file/detail/archive_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace lmw::file::detail {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kIllFormed = 0xFFFFFFFF;

// Code page 437, the bytes 0x80 to 0xFF. Source: Unicode Consortium, mapping table CP437.TXT.
// clang-format off
constexpr std::array<char16_t, 128> kCodePage437 = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7,
    0x00EA, 0x00EB, 0x00E8, 0x00EF, 0x00EE, 0x00EC, 0x00C4, 0x00C5,
    0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00A2, 0x00A3, 0x00A5, 0x20A7, 0x0192,
    0x00E1, 0x00ED, 0x00F3, 0x00FA, 0x00F1, 0x00D1, 0x00AA, 0x00BA,
    0x00BF, 0x2310, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x2561, 0x2562, 0x2556,
    0x2555, 0x2563, 0x2551, 0x2557, 0x255D, 0x255C, 0x255B, 0x2510,
    0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x255E, 0x255F,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x2567,
    0x2568, 0x2564, 0x2565, 0x2559, 0x2558, 0x2552, 0x2553, 0x256B,
    0x256A, 0x2518, 0x250C, 0x2588, 0x2584, 0x258C, 0x2590, 0x2580,
    0x03B1, 0x00DF, 0x0393, 0x03C0, 0x03A3, 0x03C3, 0x00B5, 0x03C4,
    0x03A6, 0x0398, 0x03A9, 0x03B4, 0x221E, 0x03C6, 0x03B5, 0x2229,
    0x2261, 0x00B1, 0x2265, 0x2264, 0x2320, 0x2321, 0x00F7, 0x2248,
    0x00B0, 0x2219, 0x00B7, 0x221A, 0x207F, 0x00B2, 0x25A0, 0x00A0,
};
// clang-format on

// Takes one UTF-8 character at `at`; kIllFormed where there is none.
std::uint32_t TakeUtf8(std::string_view bytes, std::size_t& at) noexcept {
    const auto lead = static_cast<unsigned char>(bytes[at++]);
    if (lead < 0x80) {
        return lead;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return kIllFormed;
    }
    const std::size_t following = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    std::uint32_t c = lead & (0x3FU >> following);
    for (std::size_t k = 0; k < following; ++k, ++at) {
        const unsigned next = at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
        if ((next & 0xC0U) != 0x80U) {
            return kIllFormed;
        }
        c = (c << 6) | (next & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 4> kLeast = {0, 0x80, 0x800, 0x10000};
    const bool is_character = c >= kLeast[following] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
    return is_character ? c : kIllFormed;
}

void AppendUtf8(std::string& out, std::uint32_t c) {
    const auto byte = [&out](std::uint32_t bits) {
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

void AppendWide(std::wstring& out, std::uint32_t c) {
    if constexpr (sizeof(wchar_t) == 2) {
        if (c >= 0x10000) {
            out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
            return;
        }
    }
    out += static_cast<wchar_t>(c);
}

}  // namespace

bool IsUtf8(std::string_view bytes) noexcept {
    for (std::size_t at = 0; at < bytes.size();) {
        if (TakeUtf8(bytes, at) == kIllFormed) {
            return false;
        }
    }
    return true;
}

std::string Utf8(std::wstring_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::uint32_t c = static_cast<char32_t>(text[at]);
        if (c >= 0xD800 && c <= 0xDBFF && at + 1 < text.size()) {
            const std::uint32_t low = static_cast<char32_t>(text[at + 1]);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++at;
            }
        }
        const bool is_character = c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF);
        AppendUtf8(out, is_character ? c : kReplacement);
    }
    return out;
}

std::wstring WideFromArchive(std::string_view bytes) {
    std::wstring out;
    out.reserve(bytes.size());
    if (IsUtf8(bytes)) {
        for (std::size_t at = 0; at < bytes.size();) {
            AppendWide(out, TakeUtf8(bytes, at));
        }
    } else {
        for (const char byte : bytes) {
            const auto c = static_cast<unsigned char>(byte);
            out += static_cast<wchar_t>(c < 0x80 ? c : kCodePage437[c - 0x80U]);
        }
    }
    return out;
}

std::wstring ShownName(std::string_view name) {
    std::wstring shown = WideFromArchive(name);
    std::replace(shown.begin(), shown.end(), L'/', L'\\');
    return shown;
}

std::string WrittenName(std::wstring_view name) {
    std::string written = Utf8(name);
    std::replace(written.begin(), written.end(), '\\', '/');
    return written;
}

}  // namespace lmw::file::detail
