#include "tools/lmw/text.h"

#include "common/str/number_text.h"
#include "common/sys/utf8.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lmw::tool {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsSurrogate(char32_t code_point) {
    return code_point >= 0xD800 && code_point <= 0xDFFF;
}

}  // namespace

char32_t TakeCodePoint(std::string_view& rest) {
    const auto byte = [&rest](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(rest[i]));
    };
    const char32_t lead = byte(0);
    std::size_t length = 1;
    char32_t code_point = lead;
    char32_t least = 0;
    if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        code_point = lead & 0x07;
        least = 0x10000;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        code_point = lead & 0x0F;
        least = 0x800;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        code_point = lead & 0x1F;
        least = 0x80;
    } else if (lead >= 0x80) {
        rest.remove_prefix(1);
        return kReplacement;
    }
    bool well_formed = length <= rest.size();
    for (std::size_t i = 1; well_formed && i < length; ++i) {
        well_formed = (byte(i) & 0xC0) == 0x80;
        code_point = (code_point << 6) | (byte(i) & 0x3F);
    }
    if (!well_formed || code_point < least || code_point > 0x10FFFF || IsSurrogate(code_point)) {
        rest.remove_prefix(1);
        return kReplacement;
    }
    rest.remove_prefix(length);
    return code_point;
}

void AppendUtf8(std::string& text, char32_t code_point) {
    const auto append = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (code_point < 0x80) {
        append(code_point);
    } else if (code_point < 0x800) {
        append(0xC0 | (code_point >> 6));
        append(0x80 | (code_point & 0x3F));
    } else if (code_point < 0x10000) {
        append(0xE0 | (code_point >> 12));
        append(0x80 | ((code_point >> 6) & 0x3F));
        append(0x80 | (code_point & 0x3F));
    } else {
        append(0xF0 | (code_point >> 18));
        append(0x80 | ((code_point >> 12) & 0x3F));
        append(0x80 | ((code_point >> 6) & 0x3F));
        append(0x80 | (code_point & 0x3F));
    }
}

std::string Utf8(std::wstring_view text) {
    return sys::Utf8FromWide(text, sys::LoosePairs::kJoin);
}

std::wstring Wide(std::string_view text) {
    return sys::WideFromUtf8(text);
}

std::filesystem::path PathOf(std::string_view text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string PlainName(std::string_view file) {
    const std::u8string name = PathOf(file).stem().u8string();
    return {name.begin(), name.end()};
}

std::string Joined(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (const std::string_view part : parts) {
        size += part.size();
    }
    std::string text;
    text.reserve(size);
    for (const std::string_view part : parts) {
        text += part;
    }
    return text;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

namespace {

std::string Blanks(std::string_view text, std::size_t width) {
    std::size_t characters = 0;
    for (; !text.empty(); ++characters) {
        TakeCodePoint(text);
    }
    return std::string(width - std::min(width, characters), ' ');
}

}  // namespace

std::string Padded(std::string_view text, std::size_t width) {
    return std::string(text) + Blanks(text, width);
}

std::string RightAligned(std::string_view text, std::size_t width) {
    return Blanks(text, width) + std::string(text);
}

std::string OneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        const char32_t code_point = TakeCodePoint(text);
        const bool is_control = code_point < 0x20 || (code_point >= 0x7F && code_point < 0xA0);
        AppendUtf8(line, is_control ? U' ' : code_point);
    }
    return std::string(Trimmed(line));
}

bool ReadFinite(std::string_view text, double& value) {
    double number = 0.0;
    if (str::ParseDouble(Trimmed(text), number).Failed() || !std::isfinite(number)) {
        return false;
    }
    value = number;
    return true;
}

bool ReadCount(std::string_view text, std::uint32_t& value) {
    return str::ParseUInt(Wide(Trimmed(text)), value).Succeeded();
}

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMaxCharacters = 60;
    std::string shown;
    for (std::size_t count = 0; !text.empty(); ++count) {
        if (count == kMaxCharacters) {
            shown += "...";
            break;
        }
        AppendUtf8(shown, TakeCodePoint(text));
    }
    return '"' + OneLine(shown) + '"';
}

}  // namespace lmw::tool
