#include "common/str/tokenize.h"

#include <cstddef>
#include <optional>

namespace str::fmt {

namespace {

enum class Modifier { none, h, l, w, i32, i64 };

bool IsDigit(char32_t c) {
    return c >= U'0' && c <= U'9';
}

bool IsOneOf(char32_t c, const char* set) {
    for (; *set != '\0'; ++set) {
        if (c == static_cast<unsigned char>(*set)) {
            return true;
        }
    }
    return false;
}

std::optional<arg_type> ClassifyInteger(char32_t conversion, Modifier modifier) {
    const bool is_signed = IsOneOf(conversion, "di");
    if (!is_signed && !IsOneOf(conversion, "Xoux")) {
        return std::nullopt;
    }
    switch (modifier) {
        case Modifier::h:
            return is_signed ? arg_type::int16 : arg_type::uint16;
        case Modifier::none:
        case Modifier::i32:
            return is_signed ? arg_type::int32 : arg_type::uint32;
        case Modifier::l:
        case Modifier::i64:
            return is_signed ? arg_type::int64 : arg_type::uint64;
        case Modifier::w:
            break;
    }
    return std::nullopt;
}

// Strings and characters share one rule: a small letter is narrow and a capital wide, unless the
// modifier says which.
std::optional<bool> IsWideText(char32_t conversion, char32_t small, char32_t capital,
                               Modifier modifier) {
    if (conversion != small && conversion != capital) {
        return std::nullopt;
    }
    switch (modifier) {
        case Modifier::none:
            return conversion == capital;
        case Modifier::h:
            return false;
        case Modifier::l:
        case Modifier::w:
            return true;
        case Modifier::i32:
        case Modifier::i64:
            break;
    }
    return std::nullopt;
}

std::optional<arg_type> Classify(char32_t conversion, Modifier modifier) {
    const bool plain = modifier == Modifier::none;
    if (plain && IsOneOf(conversion, "Gefg")) {
        return arg_type::floating;
    }
    if (const auto wide = IsWideText(conversion, U's', U'S', modifier)) {
        return *wide ? arg_type::wide_string : arg_type::narrow_string;
    }
    if (const auto integer = ClassifyInteger(conversion, modifier)) {
        return integer;
    }
    if (const auto wide = IsWideText(conversion, U'c', U'C', modifier)) {
        return *wide ? arg_type::wide_char : arg_type::narrow_char;
    }
    if (plain && conversion == U'p') {
        return arg_type::pointer;
    }
    if (plain && conversion == U'b') {
        return arg_type::boolean;
    }
    return std::nullopt;
}

// What follows a "%" that does not begin "%%".
struct Placeholder {
    std::size_t end = 0;  // one past the conversion character
    std::optional<arg_type> type;
};

template <class Char>
class Scanner {
 public:
    Scanner(std::basic_string<Char>& text, unsigned max_count, std::basic_string<Char>* specs,
            arg_type* types)
        : text_(text), max_count_(max_count), specs_(specs), types_(types) {}

    unsigned Run() {
        while (read_ < text_.size()) {
            if (text_[read_] != Char('%')) {
                Keep(1);
                ++literals_;
            } else if (read_ + 1 < text_.size() && text_[read_ + 1] == Char('%')) {
                Keep(2);
                ++literals_;
            } else if (const auto placeholder = Parse()) {
                Take(*placeholder);
            } else {
                Keep(text_.size() - read_);
            }
        }
        text_.resize(write_);
        return literals_;
    }

 private:
    [[nodiscard]] bool AtEnd(std::size_t at) const { return at >= text_.size(); }
    [[nodiscard]] char32_t At(std::size_t at) const { return static_cast<char32_t>(text_[at]); }

    [[nodiscard]] std::size_t SkipDigits(std::size_t at) const {
        while (!AtEnd(at) && IsDigit(At(at))) {
            ++at;
        }
        return at;
    }

    [[nodiscard]] bool StartsWith(std::size_t at, char32_t first, char32_t second) const {
        return !AtEnd(at + 1) && At(at) == first && At(at + 1) == second;
    }

    Modifier ParseModifier(std::size_t& at) const {
        switch (At(at)) {
            case U'h':
                ++at;
                return Modifier::h;
            case U'l':
                ++at;
                return Modifier::l;
            case U'w':
                ++at;
                return Modifier::w;
            case U'I':
                ++at;
                if (StartsWith(at, U'6', U'4')) {
                    at += 2;
                    return Modifier::i64;
                }
                if (StartsWith(at, U'3', U'2')) {
                    at += 2;
                }
                return Modifier::i32;
            default:
                return Modifier::none;
        }
    }

    // Nothing when the text ends before the conversion character.
    std::optional<Placeholder> Parse() {
        std::size_t at = read_ + 1;
        // By design: one flag only. A second one ends up as an unrecognised conversion, which
        // removes it and leaves the rest of the placeholder as literal text; accepting it would
        // change the texts of templates that are in use.
        if (!AtEnd(at) && IsOneOf(At(at), "# +-0")) {
            ++at;
        }
        at = SkipDigits(at);
        if (!AtEnd(at) && At(at) == U'.') {
            at = SkipDigits(at + 1);
        }
        if (AtEnd(at)) {
            return std::nullopt;
        }
        const Modifier modifier = ParseModifier(at);
        if (AtEnd(at)) {
            return std::nullopt;
        }
        // By design: "r" is rewritten in the template, so the stored placeholder reads "f";
        // without the rewriting a caller's renderer would meet a conversion that no printing
        // routine knows.
        if (text_[at] == Char('r')) {
            text_[at] = Char('f');
        }
        return Placeholder{at + 1, Classify(At(at), modifier)};
    }

    void Take(const Placeholder& placeholder) {
        if (placeholder.type && count_ < max_count_) {
            specs_[count_].assign(text_, read_, placeholder.end - read_);
            types_[count_] = *placeholder.type;
            ++count_;
            text_[write_++] = Char('%');  // a placeholder is never shorter than "%s"
            text_[write_++] = Char('s');
        }
        read_ = placeholder.end;
    }

    void Keep(std::size_t length) {
        for (; length > 0; --length) {
            text_[write_++] = text_[read_++];
        }
    }

    std::basic_string<Char>& text_;
    unsigned max_count_;
    std::basic_string<Char>* specs_;
    arg_type* types_;
    std::size_t read_ = 0;
    std::size_t write_ = 0;  // never beyond read_
    unsigned count_ = 0;
    unsigned literals_ = 0;
};

}  // namespace

unsigned tokenize(std::string& text, unsigned max_count, std::string* specs, arg_type* types) {
    return Scanner<char>(text, max_count, specs, types).Run();
}

unsigned tokenize(std::wstring& text, unsigned max_count, std::wstring* specs, arg_type* types) {
    return Scanner<wchar_t>(text, max_count, specs, types).Run();
}

}  // namespace str::fmt
