#include "common/str/fill_template.h"

#include "common/str/detail/render_argument.h"
#include "common/str/tokenize.h"

#include <array>

namespace str::fmt {

std::wstring FillTemplate(std::wstring_view text, std::span<const std::wstring> arguments) {
    std::wstring normalised(text);
    std::array<std::wstring, kMaxPlaceholders> specs;
    std::array<arg_type, kMaxPlaceholders> types{};
    std::size_t length = tokenize(normalised, kMaxPlaceholders, specs.data(), types.data());

    std::array<std::wstring, kMaxPlaceholders> rendered;
    for (std::size_t k = 0; k < kMaxPlaceholders && k < arguments.size() && !specs[k].empty();
         ++k) {
        rendered[k] = detail::RenderArgument(specs[k], types[k], arguments[k]);
        length += rendered[k].size();
    }

    std::wstring result;
    result.reserve(length);
    std::size_t next = 0;
    for (std::size_t at = 0; at < normalised.size(); ++at) {
        if (normalised[at] != L'%') {
            result += normalised[at];
            continue;
        }
        // What tokenize leaves behind a "%" is "%", "s" or the unfinished end of the text.
        const wchar_t kind = ++at < normalised.size() ? normalised[at] : L'\0';
        if (kind == L'%') {
            result += L'%';
        } else if (kind == L's' && next < kMaxPlaceholders && !specs[next].empty()) {
            result += rendered[next++];
        } else {
            return {};
        }
    }
    return result;
}

std::wstring Escape(std::wstring_view text) {
    std::wstring escaped;
    escaped.reserve(text.size());
    for (const wchar_t c : text) {
        escaped.append(c == L'%' ? 2 : 1, c);
    }
    return escaped;
}

}  // namespace str::fmt
