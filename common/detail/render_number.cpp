#include "common/detail/render_number.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace lmw::detail {

namespace {

// Sign or prefix and digits put together under width and flags. `zero_fill` is the "0" flag where
// it applies.
std::string Assemble(std::string_view sign, std::string_view digits, const NumberSpec& spec,
                     bool zero_fill) {
    const std::size_t length = sign.size() + digits.size();
    const std::size_t fill = length < spec.width ? spec.width - length : 0;
    std::string text(sign);
    text.append(zero_fill && !spec.left ? fill : 0, '0');
    text.append(digits);
    if (text.size() < spec.width) {
        text.insert(spec.left ? text.size() : 0, fill, ' ');
    }
    return text;
}

std::string_view SignOf(bool negative, const NumberSpec& spec) {
    if (negative) {
        return "-";
    }
    return spec.plus ? "+" : spec.space ? " " : "";
}

void ToUpper(std::string& text) {
    for (char& c : text) {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
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

// %a without its "0x"; without a precision as many digits as the number has.
std::string HexadecimalDigits(double magnitude, std::optional<unsigned> precision) {
    if (precision) {
        return Digits(magnitude, std::chars_format::hex, *precision);
    }
    std::array<char, 40> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::hex);
    return {text.data(), result.ptr};
}

char LowerConversion(const NumberSpec& spec) {
    return spec.conversion >= 'A' && spec.conversion <= 'Z'
               ? static_cast<char>(spec.conversion - 'A' + 'a')
               : spec.conversion;
}

// The digits of a finite number by its conversion.
std::string FiniteDigits(double magnitude, const NumberSpec& spec) {
    const unsigned precision = spec.precision.value_or(6);
    std::string digits;
    switch (LowerConversion(spec)) {
        case 'f':
            digits = Digits(magnitude, std::chars_format::fixed, precision);
            break;
        case 'e':
            digits = Digits(magnitude, std::chars_format::scientific, precision);
            break;
        case 'a':
            digits = HexadecimalDigits(magnitude, spec.precision);
            break;
        default:
            digits = spec.alternative ? GeneralWithTrailingZeros(magnitude, precision)
                                      : Digits(magnitude, std::chars_format::general, precision);
            break;
    }
    if (spec.alternative && digits.find('.') == std::string::npos) {
        const char exponent_mark = LowerConversion(spec) == 'a' ? 'p' : 'e';
        digits.insert(std::min(digits.find(exponent_mark), digits.size()), 1, '.');
    }
    return digits;
}

}  // namespace

std::string RenderInteger(bool negative, std::uint64_t magnitude, const NumberSpec& spec) {
    const char conversion = LowerConversion(spec);
    const bool hexadecimal = conversion == 'x';
    const bool octal = conversion == 'o';
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
    if (spec.alternative && octal && !digits.starts_with('0')) {
        digits.insert(0, 1, '0');
    }
    std::string sign(conversion == 'd' || conversion == 'i' ? SignOf(negative, spec) : "");
    if (spec.alternative && hexadecimal && magnitude != 0) {
        sign = "0x";
    }
    if (spec.conversion == 'X') {
        ToUpper(digits);
        ToUpper(sign);
    }
    return Assemble(sign, digits, spec, spec.zero && !spec.precision);
}

std::string RenderFloating(double value, const NumberSpec& spec) {
    const double magnitude = std::fabs(value);
    const bool finite = magnitude <= std::numeric_limits<double>::max();
    std::string sign(SignOf(std::signbit(value), spec));
    std::string digits;
    if (finite) {
        digits = FiniteDigits(magnitude, spec);
        sign += LowerConversion(spec) == 'a' ? "0x" : "";
    } else {
        digits = std::isnan(magnitude) ? "nan" : "inf";
    }
    if (LowerConversion(spec) != spec.conversion) {
        ToUpper(digits);
        ToUpper(sign);
    }
    return Assemble(sign, digits, spec, spec.zero && finite);
}

}  // namespace lmw::detail
