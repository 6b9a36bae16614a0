#include "common/file/detail/wildcard.h"

#include "common/file/detail/text_order.h"

#include <cstddef>

namespace lmw::file::detail {

namespace {

bool MatchesOne(wchar_t c, wchar_t wanted) noexcept {
    const auto fold = [](wchar_t x) { return x == L'/' ? L'\\' : FoldAscii(x); };
    return wanted == L'?' || fold(c) == fold(wanted);
}

}  // namespace

bool MatchesWildcard(std::wstring_view name, std::wstring_view pattern) noexcept {
    if (pattern == L"*.*") {
        return true;
    }
    std::size_t at = 0;
    std::size_t wanted = 0;
    // Behind the last "*", and where in the name what follows it was last tried. Going back to an
    // earlier "*" is never needed: what it could take, the last one can take as well.
    std::size_t after_star = std::wstring_view::npos;
    std::size_t retry = 0;
    while (at < name.size()) {
        if (wanted < pattern.size() && pattern[wanted] == L'*') {
            after_star = ++wanted;
            retry = at;
        } else if (wanted < pattern.size() && MatchesOne(name[at], pattern[wanted])) {
            ++at;
            ++wanted;
        } else if (after_star != std::wstring_view::npos) {
            at = ++retry;
            wanted = after_star;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', wanted) == std::wstring_view::npos;
}

}  // namespace lmw::file::detail
