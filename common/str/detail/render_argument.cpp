#include "common/str/detail/render_argument.h"

#include "common/str/fill_template.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace str::fmt::detail {

namespace {

struct Spec {
    wchar_t flag = L'\0';
    unsigned width = 0;
    std::optional<unsigned> precision;
    wchar_t conversion = L's';
};

unsigned ParseDigits(std::wstring_view text, std::size_t& at) {
    unsigned value = 0;
    for (; at < text.size() && text[at] >= L'0' && text[at] <= L'9'; ++at) {
        value = std::min(value * 10 + static_cast<unsigned>(text[at] - L'0'), kMaxFieldWidth);
    }
    return value;
}

Spec ParseSpec(std::wstring_view text) {
    Spec spec;
    std::size_t at = 1;
    if (at < text.size() && std::wstring_view(L"# +-0").find(text[at]) != std::wstring_view::npos) {
        spec.flag = text[at++];
    }
    spec.width = ParseDigits(text, at);
    if (at < text.size() && text[at] == L'.') {
        spec.precision = ParseDigits(text, ++at);
    }
    spec.conversion = text.back();
    return spec;
}

std::wstring Pad(std::wstring text, const Spec& spec) {
    if (text.size() < spec.width) {
        text.insert(spec.flag == L'-' ? text.size() : 0, spec.width - text.size(), L' ');
    }
    return text;
}

std::wstring RenderText(const std::wstring& argument, const Spec& spec) {
    std::wstring text = argument;
    if (spec.precision && *spec.precision < text.size()) {
        std::size_t length = *spec.precision;
        const wchar_t cut = text[length];
        if (length > 0 && cut >= wchar_t{0xDC00} && cut <= wchar_t{0xDFFF}) {
            --length;  // never half of a surrogate pair
        }
        text.resize(length);
    }
    return Pad(std::move(text), spec);
}

// Sign, prefix and digits put together under width and flag. `zero_fill` is the "0" flag where it
// applies.
std::wstring Assemble(std::string_view sign, std::string_view digits, const Spec& spec,
                      bool zero_fill) {
    std::wstring text(sign.begin(), sign.end());
    const std::size_t length = sign.size() + digits.size();
    if (zero_fill && length < spec.width) {
        text.append(spec.width - length, L'0');
    }
    text.append(digits.begin(), digits.end());
    return Pad(std::move(text), spec);
}

std::string_view SignOf(bool negative, const Spec& spec) {
    if (negative) {
        return "-";
    }
    return spec.flag == L'+' ? "+" : spec.flag == L' ' ? " " : "";
}

// The whole of `text` as a number, with an optional "+" before it.
template <class Number>
std::optional<Number> Read(std::string_view text) {
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

void ToUpper(std::string& text) {
    for (char& c : text) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
}

template <class Integer>
std::optional<std::wstring> RenderInteger(std::string_view argument, const Spec& spec) {
    const auto value = Read<Integer>(argument);
    if (!value) {
        return std::nullopt;
    }
    const bool negative = *value < 0;
    const auto magnitude = negative ? std::uint64_t{0} - static_cast<std::uint64_t>(*value)
                                    : static_cast<std::uint64_t>(*value);
    const bool hexadecimal = spec.conversion == L'x' || spec.conversion == L'X';
    const bool octal = spec.conversion == L'o';
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                      hexadecimal ? 16
                                      : octal     ? 8
                                                  : 10);
    std::string digits(buffer.data(), result.ptr);
    if (spec.precision) {
        digits = *spec.precision == 0 && magnitude == 0 ? "" : digits;
        digits.insert(0, *spec.precision > digits.size() ? *spec.precision - digits.size() : 0,
                      '0');
    }
    if (spec.flag == L'#' && octal && !digits.starts_with('0')) {
        digits.insert(0, 1, '0');
    }
    std::string sign(std::is_signed_v<Integer> ? SignOf(negative, spec) : "");
    if (spec.flag == L'#' && hexadecimal && magnitude != 0) {
        sign = "0x";
    }
    if (spec.conversion == L'X') {
        ToUpper(digits);
        ToUpper(sign);
    }
    return Assemble(sign, digits, spec, spec.flag == L'0' && !spec.precision);
}

std::string Digits(double magnitude, std::chars_format format, unsigned precision) {
    std::string text(std::size_t{precision} + 400, '\0');  // the largest double has 309 digits
    const auto result = std::to_chars(text.data(), text.data() + text.size(), magnitude, format,
                                      static_cast<int>(precision));
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

// The exponent of a number in scientific form, as in "1.5e+07".
int DecimalExponent(std::string_view scientific) {
    std::string_view digits = scientific.substr(scientific.find('e') + 1);
    digits.remove_prefix(digits.starts_with('+') ? 1 : 0);
    int exponent = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    return exponent;
}

// %#g: the form that %g would choose, with its trailing zeros kept.
std::string GeneralWithTrailingZeros(double magnitude, unsigned precision) {
    const unsigned significant = std::max(precision, 1U);
    std::string scientific = Digits(magnitude, std::chars_format::scientific, significant - 1);
    const int exponent = DecimalExponent(scientific);
    if (exponent < -4 || exponent >= static_cast<int>(significant)) {
        return scientific;
    }
    return Digits(magnitude, std::chars_format::fixed,
                  static_cast<unsigned>(static_cast<int>(significant) - 1 - exponent));
}

std::optional<std::wstring> RenderFloating(std::string_view argument, const Spec& spec) {
    const auto value = Read<double>(argument);
    if (!value) {
        return std::nullopt;
    }
    const double magnitude = std::fabs(*value);
    const std::string_view sign = SignOf(std::signbit(*value), spec);
    const bool finite = magnitude <= std::numeric_limits<double>::max();
    std::string digits;
    if (!finite) {
        digits = std::isnan(magnitude) ? "nan" : "inf";
    } else {
        const unsigned precision = spec.precision.value_or(6);
        const bool alternative = spec.flag == L'#';
        if (spec.conversion == L'f') {
            digits = Digits(magnitude, std::chars_format::fixed, precision);
        } else if (spec.conversion == L'e') {
            digits = Digits(magnitude, std::chars_format::scientific, precision);
        } else {
            digits = alternative ? GeneralWithTrailingZeros(magnitude, precision)
                                 : Digits(magnitude, std::chars_format::general, precision);
        }
        if (alternative && digits.find('.') == std::string::npos) {
            digits.insert(std::min(digits.find('e'), digits.size()), 1, '.');
        }
    }
    if (spec.conversion == L'G') {
        ToUpper(digits);
    }
    return Assemble(sign, digits, spec, spec.flag == L'0' && finite);
}

std::optional<std::wstring> RenderNumber(std::string_view argument, const Spec& spec,
                                         arg_type type) {
    switch (type) {
        case arg_type::int16:
            return RenderInteger<std::int16_t>(argument, spec);
        case arg_type::int32:
            return RenderInteger<std::int32_t>(argument, spec);
        case arg_type::int64:
            return RenderInteger<std::int64_t>(argument, spec);
        case arg_type::uint16:
            return RenderInteger<std::uint16_t>(argument, spec);
        case arg_type::uint32:
            return RenderInteger<std::uint32_t>(argument, spec);
        case arg_type::uint64:
            return RenderInteger<std::uint64_t>(argument, spec);
        case arg_type::floating:
            return RenderFloating(argument, spec);
        default:
            return std::nullopt;
    }
}

}  // namespace

std::wstring RenderArgument(std::wstring_view spec_text, arg_type type,
                            const std::wstring& argument) {
    Spec spec = ParseSpec(spec_text);
    switch (type) {
        case arg_type::narrow_string:
        case arg_type::wide_string:
            return RenderText(argument, spec);
        case arg_type::narrow_char:
        case arg_type::wide_char:
        case arg_type::pointer:
        case arg_type::boolean:
            spec.precision.reset();
            return RenderText(argument, spec);
        default:
            break;
    }
    std::string narrow;
    narrow.reserve(argument.size());
    for (const wchar_t c : argument) {
        narrow +=
            c > L'\0' && c < L'\x7F' ? static_cast<char>(c) : '?';  // "?" belongs to no number
    }
    return RenderNumber(narrow, spec, type).value_or(argument);
}

}  // namespace str::fmt::detail
