#include "common/file/split_path.h"

#include <cstddef>

namespace sys::file {

PathParts SplitPath(std::wstring_view path) {
    const std::size_t separator = path.find_last_of(L"\\:");
    const std::size_t name = separator == std::wstring_view::npos ? 0 : separator + 1;
    const std::size_t dot = path.rfind(L'.');
    const std::size_t ext = dot == std::wstring_view::npos || dot < name ? path.size() : dot;
    return {std::wstring(path.substr(0, name)), std::wstring(path.substr(name, ext - name)),
            std::wstring(path.substr(ext))};
}

}  // namespace sys::file
