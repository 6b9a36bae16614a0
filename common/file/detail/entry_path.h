#pragma once

// Where an entry may be written when it is extracted. Entry names come from strangers, so that they
// are taken apart and judged here, in the same way on every platform.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::file::detail {

/// The place of an extracted entry below the target folder.
struct EntryPath {
    std::vector<std::wstring> parts;  ///< single names, at least one
    bool is_folder = false;           ///< the name ended in a separator
};

/// Cuts `name` at "\" and "/"; empty parts in the middle and "." are left out. No value for a name
/// that must not be written: an empty one; one that begins with a separator (absolute, or a
/// computer's name); one that holds ":" (a drive, or a stream of a file) or a NUL; one with a part
/// that ends in a dot or a blank ("..", which climbs out, what Windows reads as "..", and "a.",
/// which on Windows becomes either "a" or a file that no ordinary program can open or delete); one
/// with a part that names a device on Windows ("con", "LPT1.txt").
[[nodiscard]] std::optional<EntryPath> SafeEntryPath(std::wstring_view name);

}  // namespace lmw::file::detail
