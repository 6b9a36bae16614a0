#include "tools/lmw/svg_text.h"

#include "tools/lmw/text.h"

#include <array>
#include <charconv>

namespace lmw::tool {
namespace {

// The advance of a character in units of the font size, rounded up from DejaVu Sans, one of the
// widest faces a viewer may choose.
double Advance(char32_t code_point) {
    if (code_point >= 0x1100) {
        // Punctuation, superscripts and Greek extensions are narrow, East Asian characters are
        // square.
        return code_point >= 0x1E00 && code_point < 0x2E00 ? 0.84 : 1.0;
    }
    if (code_point >= 0x80) {
        return code_point < 0x250 ? 0.7 : 0.9;
    }
    const auto character = static_cast<char>(code_point);
    constexpr std::string_view kNarrow = " !'(),./:;I[]\\fijlrt|`";
    constexpr std::string_view kWide = "%@MWmw+<=>~#";
    if (kNarrow.find(character) != std::string_view::npos) {
        return 0.42;
    }
    if (kWide.find(character) != std::string_view::npos) {
        return 1.0;
    }
    return character >= 'A' && character <= 'Z' ? 0.79 : 0.645;
}

}  // namespace

std::string XmlEscaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const char32_t code_point = TakeCodePoint(text);
        switch (code_point) {
            case U'&':
                result += "&amp;";
                break;
            case U'<':
                result += "&lt;";
                break;
            case U'>':
                result += "&gt;";
                break;
            case U'"':
                result += "&quot;";
                break;
            default: {
                const bool control = code_point < 0x20 || code_point == 0x7F;
                const bool noncharacter = code_point == 0xFFFE || code_point == 0xFFFF;
                AppendUtf8(result, control || noncharacter ? U'\uFFFD' : code_point);
            }
        }
    }
    return result;
}

double TextWidth(std::string_view text, double font_size) {
    double width = 0.0;
    while (!text.empty()) {
        width += Advance(TakeCodePoint(text));
    }
    return width * font_size;
}

std::string Shortened(std::string_view text, double font_size, double width) {
    if (TextWidth(text, font_size) <= width) {
        return std::string(text);
    }
    const double room = width - font_size;  // for the ellipsis
    std::string result;
    double used = 0.0;
    while (!text.empty()) {
        const char32_t code_point = TakeCodePoint(text);
        used += Advance(code_point) * font_size;
        if (used > room) {
            break;
        }
        AppendUtf8(result, code_point);
    }
    return std::string(Trimmed(result)) + "…";
}

std::vector<std::string> Wrapped(std::string_view text, double font_size, double width,
                                 std::size_t max_lines) {
    std::vector<std::string> lines;
    text = Trimmed(text);
    while (!text.empty()) {
        if (lines.size() + 1 == max_lines || TextWidth(text, font_size) <= width) {
            lines.push_back(Shortened(text, font_size, width));
            break;
        }
        std::size_t end = 0;  // of the words that fit
        for (std::size_t blank = text.find(' '); blank != std::string_view::npos;
             blank = text.find(' ', blank + 1)) {
            if (TextWidth(text.substr(0, blank), font_size) > width) {
                break;
            }
            end = blank;
        }
        if (end == 0) {  // one word alone is too wide
            lines.push_back(Shortened(text, font_size, width));
            break;
        }
        lines.emplace_back(Trimmed(text.substr(0, end)));
        text = Trimmed(text.substr(end));
    }
    return lines;
}

std::string Pixels(double value) {
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, 2);
    std::string text(buffer.data(), result.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

}  // namespace lmw::tool
