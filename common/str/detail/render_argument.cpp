#include "common/str/detail/render_argument.h"

#include "common/detail/render_number.h"
#include "common/str/fill_template.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
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

lmw::detail::NumberSpec NumberSpecOf(const Spec& spec) {
    lmw::detail::NumberSpec number;
    number.left = spec.flag == L'-';
    number.plus = spec.flag == L'+';
    number.space = spec.flag == L' ';
    number.alternative = spec.flag == L'#';
    number.zero = spec.flag == L'0';
    number.width = spec.width;
    number.precision = spec.precision;
    number.conversion = static_cast<char>(spec.conversion);
    return number;
}

template <class Integer>
std::optional<std::wstring> RenderInteger(std::string_view argument, const Spec& spec) {
    const auto value = Read<Integer>(argument);
    if (!value) {
        return std::nullopt;
    }
    const bool negative = *value < 0;
    const auto bits = static_cast<std::uint64_t>(*value);
    const std::string text = lmw::detail::RenderInteger(
        negative, negative ? std::uint64_t{0} - bits : bits, NumberSpecOf(spec));
    return std::wstring(text.begin(), text.end());
}

std::optional<std::wstring> RenderFloating(std::string_view argument, const Spec& spec) {
    const auto value = Read<double>(argument);
    if (!value) {
        return std::nullopt;
    }
    const std::string text = lmw::detail::RenderFloating(*value, NumberSpecOf(spec));
    return std::wstring(text.begin(), text.end());
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
