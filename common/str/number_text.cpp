#include "common/str/number_text.h"

#include "common/convert_error.h"
#include "common/sys/text_encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <type_traits>

namespace str {

namespace {

template <class Number>
std::wstring TypeName() {
    return std::is_floating_point_v<Number> ? gtl::Convert_error_status::FloatingPointString()
                                            : gtl::Convert_error_status::WholeNumberString();
}

// The power of ten of the first significant digit of a decimal number, the exponent clamped: enough
// to tell a number that is too large for a double from one that is too small.
long LeadingExponent(std::string_view number) {
    const auto mantissa = number.substr(0, number.find_first_of("eE"));
    long exponent = 0;
    if (mantissa.size() < number.size()) {
        auto text = number.substr(mantissa.size() + 1);
        text.remove_prefix(text.starts_with('+') ? 1 : 0);
        const auto result = std::from_chars(text.data(), text.data() + text.size(), exponent);
        if (result.ec == std::errc::result_out_of_range) {
            return text.starts_with('-') ? -1 : 1;
        }
    }
    const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long>(mantissa.find_first_of("123456789"));
    return exponent + (first < point ? point - first - 1 : point - first);
}

// `std::from_chars` over the whole text, and its outcome as a status that names `shown`.
template <class Number>
gtl::status Parse(std::string_view text, const auto& shown, Number& value) {
    std::string_view digits = text;
    if (digits.size() > 1 && digits.front() == '+' && digits[1] != '-') {
        digits.remove_prefix(1);
    }
    Number parsed{};
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), parsed);
    if (error == std::errc::invalid_argument || end != digits.data() + digits.size()) {
        return gtl::Convert_error_status::InvalidCharStatus(shown(), TypeName<Number>());
    }
    if (error == std::errc::result_out_of_range) {
        if constexpr (std::is_floating_point_v<Number>) {
            const bool tiny = LeadingExponent(digits) < 0;
            if (tiny) {
                return gtl::Convert_error_status::OutOfRangeStatus(shown(), TypeName<Number>());
            }
        }
        return gtl::Convert_error_status::OverflowStatus(shown(), TypeName<Number>());
    }
    value = parsed;
    return {};
}

template <class Number>
gtl::status ParseWide(std::wstring_view text, Number& value) {
    // Every character of a number is ASCII; anything else becomes one that belongs to no number.
    std::string narrow;
    narrow.reserve(text.size());
    for (const wchar_t c : text) {
        narrow += c > L'\0' && c < L'\x7F' ? static_cast<char>(c) : '?';
    }
    return Parse(
        narrow, [text] { return std::wstring(text); }, value);
}

}  // namespace

std::string DoubleNarrowText(double value) {
    std::array<char, 32> text{};  // the longest is 24 characters
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

std::wstring DoubleText(double value) {
    const std::string text = DoubleNarrowText(value);
    return {text.begin(), text.end()};
}

gtl::status ParseDouble(std::wstring_view text, double& value) {
    return ParseWide(text, value);
}
gtl::status ParseInt(std::wstring_view text, std::int32_t& value) {
    return ParseWide(text, value);
}
gtl::status ParseUInt(std::wstring_view text, std::uint32_t& value) {
    return ParseWide(text, value);
}
gtl::status ParseInt64(std::wstring_view text, std::int64_t& value) {
    return ParseWide(text, value);
}
gtl::status ParseUInt64(std::wstring_view text, std::uint64_t& value) {
    return ParseWide(text, value);
}

gtl::status ParseDouble(std::string_view text, double& value) {
    return Parse(
        text, [text] { return sys::Widen(text); }, value);
}

}  // namespace str
