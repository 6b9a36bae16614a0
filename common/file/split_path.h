#pragma once

// Paths as text: the one rule by which the library cuts a path into directory, file name and
// extension. Nothing here looks at a disk. Surprising: "/" is an ordinary character.

#include "common/export.h"

#include <string>
#include <string_view>

namespace sys::file {

/// The three parts of a path; joined in this order they give the path back.
struct PathParts {
    std::wstring directory;  ///< up to and including the last "\" or ":", else empty
    std::wstring fname;      ///< without extension
    std::wstring ext;        ///< with its leading ".", else empty
};

/// Cuts a path. The extension begins at the last "." that stands after the last "\" or ":".
/// By design: "/" does not end the directory. Project and entry names are written with "\" on every
/// platform, and a "/" inside one must not change which part is its file name.
LMW_API PathParts SplitPath(std::wstring_view path);

}  // namespace sys::file
