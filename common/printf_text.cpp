#include "common/printf_text.h"

#include "common/detail/render_number.h"
#include "common/sys/text_encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace lmw::diag {

namespace {

using Kind = PrintfArgument::Kind;

constexpr std::size_t kMaxWidth = 4096;

// A placeholder that has been read. `text_precision` is not bounded: it only ever shortens.
struct Placeholder {
    lmw::detail::NumberSpec number;
    std::optional<std::size_t> text_precision;
};

bool IsInteger(const PrintfArgument& argument) {
    return argument.GetKind() <= Kind::kWideCharacter;
}

bool IsNegative(const PrintfArgument& argument) {
    return argument.GetKind() != Kind::kUnsigned && static_cast<std::int64_t>(argument.Bits()) < 0;
}

std::wstring WidenAscii(std::string_view text) {
    return {text.begin(), text.end()};
}

// The elements of a text up to its NUL, its length or the precision, whichever comes first. Nothing
// behind them is read.
template <class Character>
std::basic_string_view<Character> Elements(const PrintfArgument& argument,
                                           std::optional<std::size_t> precision) {
    const auto* const first = static_cast<const Character*>(argument.Pointer());
    const std::size_t most = std::min(argument.Length(), precision.value_or(argument.Length()));
    if (argument.Length() != PrintfArgument::kUntilNul) {
        return {first, most};
    }
    std::size_t length = 0;
    while (length < most && first[length] != Character{}) {
        ++length;
    }
    return {first, length};
}

std::wstring Text(const PrintfArgument& argument, std::optional<std::size_t> precision) {
    if (argument.Pointer() == nullptr && argument.Length() == PrintfArgument::kUntilNul) {
        return L"(null)";
    }
    if (argument.GetKind() == Kind::kNarrowText) {
        return sys::Widen(Elements<char>(argument, precision));
    }
    return std::wstring(Elements<wchar_t>(argument, precision));
}

// One character by its number.
std::wstring Character(std::uint64_t code) {
    constexpr std::uint64_t kReplacement = 0xFFFD;
    if (code > 0x10FFFF || (sizeof(wchar_t) > 2 && code >= 0xD800 && code < 0xE000)) {
        code = kReplacement;
    }
    if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
        return {static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)),
                static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF))};
    }
    return std::wstring(1, static_cast<wchar_t>(code));
}

std::wstring CharacterText(const PrintfArgument& argument) {
    if (argument.GetKind() == Kind::kNarrowCharacter) {
        const char byte = static_cast<char>(argument.Bits());
        return sys::Widen(std::string_view(&byte, 1));
    }
    return Character(argument.Bits());
}

std::string PointerText(const void* pointer) {
    lmw::detail::NumberSpec spec;
    spec.conversion = 'x';
    return "0x" +
           lmw::detail::RenderInteger(false, reinterpret_cast<std::uintptr_t>(pointer), spec);
}

std::wstring NaturalText(const PrintfArgument& argument, std::optional<std::size_t> precision) {
    std::array<char, 32> number{};
    char* const end = number.data() + number.size();
    switch (argument.GetKind()) {
        case Kind::kNarrowText:
        case Kind::kWideText:
            return Text(argument, precision);
        case Kind::kNarrowCharacter:
        case Kind::kWideCharacter:
            return CharacterText(argument);
        case Kind::kSigned: {
            const auto value = static_cast<std::int64_t>(argument.Bits());
            return {number.data(), std::to_chars(number.data(), end, value).ptr};
        }
        case Kind::kUnsigned:
            return {number.data(), std::to_chars(number.data(), end, argument.Bits()).ptr};
        case Kind::kFloating:
            return {number.data(), std::to_chars(number.data(), end, argument.Floating()).ptr};
        case Kind::kPointer:
            break;
    }
    return WidenAscii(PointerText(argument.Pointer()));
}

std::wstring Padded(std::wstring text, const lmw::detail::NumberSpec& spec) {
    if (text.size() < spec.width) {
        text.insert(spec.left ? text.size() : 0, spec.width - text.size(), L' ');
    }
    return text;
}

std::wstring IntegerText(const PrintfArgument& argument, const lmw::detail::NumberSpec& spec) {
    const bool shows_sign = spec.conversion == 'd' || spec.conversion == 'i';
    const bool negative = shows_sign && IsNegative(argument);
    std::uint64_t magnitude = negative ? std::uint64_t{0} - argument.Bits() : argument.Bits();
    if (!shows_sign && argument.Size() < sizeof magnitude) {
        magnitude &= (std::uint64_t{1} << (8 * argument.Size())) - 1;
    }
    return WidenAscii(lmw::detail::RenderInteger(negative, magnitude, spec));
}

std::wstring FloatingText(const PrintfArgument& argument, const lmw::detail::NumberSpec& spec) {
    double value = argument.Floating();
    if (IsInteger(argument)) {
        value = IsNegative(argument)
                    ? static_cast<double>(static_cast<std::int64_t>(argument.Bits()))
                    : static_cast<double>(argument.Bits());
    }
    return WidenAscii(lmw::detail::RenderFloating(value, spec));
}

std::wstring Rendered(const Placeholder& placeholder, const PrintfArgument& argument) {
    const lmw::detail::NumberSpec& spec = placeholder.number;
    const bool number = IsInteger(argument) || argument.GetKind() == Kind::kFloating;
    switch (spec.conversion) {
        case 's':
        case 'S':
            return Padded(NaturalText(argument, placeholder.text_precision), spec);
        case 'c':
        case 'C':
            return Padded(
                IsInteger(argument) ? CharacterText(argument) : NaturalText(argument, std::nullopt),
                spec);
        case 'd':
        case 'i':
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            return IsInteger(argument) ? IntegerText(argument, spec)
                                       : Padded(NaturalText(argument, std::nullopt), spec);
        case 'p':
            return Padded(number ? NaturalText(argument, std::nullopt)
                                 : WidenAscii(PointerText(argument.Pointer())),
                          spec);
        case 'n':
            return {};
        default:
            return number ? FloatingText(argument, spec)
                          : Padded(NaturalText(argument, std::nullopt), spec);
    }
}

// Walks once over a format.
class Formatter {
 public:
    Formatter(std::wstring_view format, std::span<const PrintfArgument> arguments)
        : format_(format), arguments_(arguments) {}

    std::wstring Run() {
        std::wstring result;
        while (at_ < format_.size()) {
            const std::size_t percent = std::min(format_.find(L'%', at_), format_.size());
            result.append(format_.substr(at_, percent - at_));
            at_ = percent;
            if (at_ < format_.size()) {
                AppendPlaceholder_(result);
            }
        }
        return result;
    }

 private:
    // at_ is at "%". What is not filled is copied as it stands.
    void AppendPlaceholder_(std::wstring& result) {
        const std::size_t begin = at_++;
        const std::size_t first_argument = next_;
        Placeholder placeholder;
        const bool complete = ReadFlagsWidthPrecision_(placeholder) && SkipLength_();
        if (complete && format_[at_] == L'%') {
            ++at_;
            result += L'%';
            return;
        }
        const bool known = complete && IsConversion_(format_[at_]);
        if (known && next_ < arguments_.size()) {
            placeholder.number.conversion = static_cast<char>(format_[at_++]);
            result += Rendered(placeholder, arguments_[next_++]);
            return;
        }
        if (known) {
            ++at_;
        } else {
            next_ = first_argument;
        }
        result.append(format_.substr(begin, at_ - begin));
    }

    static bool IsConversion_(wchar_t c) {
        return c != L'\0' &&
               std::wstring_view(L"diuoxXcCsSpnfFeEgGaA").find(c) != std::wstring_view::npos;
    }

    [[nodiscard]] bool AtOneOf_(std::wstring_view characters) const {
        return at_ < format_.size() && characters.find(format_[at_]) != std::wstring_view::npos;
    }

    // False when the format ends first.
    bool ReadFlagsWidthPrecision_(Placeholder& placeholder) {
        lmw::detail::NumberSpec& spec = placeholder.number;
        for (; AtOneOf_(L"-+ #0"); ++at_) {
            const wchar_t flag = format_[at_];
            spec.left = spec.left || flag == L'-';
            spec.plus = spec.plus || flag == L'+';
            spec.space = spec.space || flag == L' ';
            spec.alternative = spec.alternative || flag == L'#';
            spec.zero = spec.zero || flag == L'0';
        }
        const std::int64_t width = ReadNumber_();
        spec.left = spec.left || width < 0;
        spec.width = Bounded_(width < 0 ? -width : width);
        if (AtOneOf_(L".")) {
            ++at_;
            const std::int64_t precision = ReadNumber_();
            if (precision >= 0) {
                spec.precision = Bounded_(precision);
                placeholder.text_precision = static_cast<std::size_t>(precision);
            }
        }
        return at_ < format_.size();
    }

    static unsigned Bounded_(std::int64_t number) {
        return static_cast<unsigned>(
            std::min<std::int64_t>(number, static_cast<std::int64_t>(kMaxWidth)));
    }

    // Digits or the argument that "*" stands for, within 32 bits; 0 when there is neither.
    std::int64_t ReadNumber_() {
        constexpr std::int64_t kMost = 0x7FFFFFFF;
        if (AtOneOf_(L"*")) {
            ++at_;
            if (next_ >= arguments_.size() || !IsInteger(arguments_[next_])) {
                next_ = std::min(next_ + 1, arguments_.size());
                return 0;
            }
            const PrintfArgument& argument = arguments_[next_++];
            return IsNegative(argument)
                       ? std::max(static_cast<std::int64_t>(argument.Bits()), -kMost)
                       : static_cast<std::int64_t>(
                             std::min(argument.Bits(), static_cast<std::uint64_t>(kMost)));
        }
        std::int64_t number = 0;
        for (; AtOneOf_(L"0123456789"); ++at_) {
            number = std::min<std::int64_t>(number * 10 + (format_[at_] - L'0'), kMost);
        }
        return number;
    }

    // False when the format ends first.
    bool SkipLength_() {
        while (AtOneOf_(L"hljztLwI")) {
            const bool sized = format_[at_++] == L'I';
            const std::wstring_view rest = format_.substr(at_);
            if (sized && (rest.starts_with(L"32") || rest.starts_with(L"64"))) {
                at_ += 2;
            }
        }
        return at_ < format_.size();
    }

    std::wstring_view format_;
    std::span<const PrintfArgument> arguments_;
    std::size_t at_ = 0;
    std::size_t next_ = 0;
};

}  // namespace

std::wstring PrintfText(std::wstring_view format, std::span<const PrintfArgument> arguments) {
    return Formatter(format, arguments).Run();
}

}  // namespace lmw::diag
