#pragma once

// What a search for names looks for.

namespace sys::file {

struct Finder {
    /// Which kinds of names a search finds.
    enum Filter { kFiles = 1, kFolders = 2, kFilesAndFolders = 3 };
};

}  // namespace sys::file
