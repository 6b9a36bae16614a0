#include "common/file/detail/entry_path.h"

#include "common/file/detail/text_order.h"

#include <algorithm>
#include <array>

namespace lmw::file::detail {

namespace {

bool IsSeparator(wchar_t c) noexcept {
    return c == L'\\' || c == L'/';
}

// Windows finds its devices under these names in every folder, whatever extension follows.
bool IsDeviceName(std::wstring_view part) {
    std::wstring_view base = part.substr(0, part.find(L'.'));
    base = base.substr(0, base.find_last_not_of(L' ') + 1);
    constexpr std::array<std::wstring_view, 6> kPlain = {L"con", L"prn",    L"aux",
                                                         L"nul", L"conin$", L"conout$"};
    constexpr std::array<std::wstring_view, 2> kNumbered = {L"com", L"lpt"};
    const auto is = [](std::wstring_view a) {
        return [a](std::wstring_view b) { return CompareFolded(a, b) == 0; };
    };
    if (std::any_of(kPlain.begin(), kPlain.end(), is(base))) {
        return true;
    }
    constexpr std::wstring_view kNumbers = L"0123456789\u00B9\u00B2\u00B3";  // superscripts count
    return base.size() == 4 && kNumbers.find(base[3]) != std::wstring_view::npos &&
           std::any_of(kNumbered.begin(), kNumbered.end(), is(base.substr(0, 3)));
}

}  // namespace

std::optional<EntryPath> SafeEntryPath(std::wstring_view name) {
    constexpr std::wstring_view kForbidden(L":\0", 2);
    if (name.empty() || IsSeparator(name.front()) ||
        name.find_first_of(kForbidden) != std::wstring_view::npos) {
        return std::nullopt;
    }
    EntryPath path;
    path.is_folder = IsSeparator(name.back());
    for (std::size_t begin = 0; begin < name.size();) {
        const std::size_t end = std::min(name.find_first_of(L"\\/", begin), name.size());
        const std::wstring_view part = name.substr(begin, end - begin);
        begin = end + 1;
        if (part.empty() || part == L".") {
            continue;
        }
        if (part.back() == L'.' || part.back() == L' ' || IsDeviceName(part)) {
            return std::nullopt;
        }
        path.parts.emplace_back(part);
    }
    if (path.parts.empty()) {
        return std::nullopt;
    }
    return path;
}

}  // namespace lmw::file::detail
