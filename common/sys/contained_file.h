#pragma once

// Files below a folder of which only the folder is trusted: their names come from a stranger's
// archive. No link below the folder is followed, so nothing can be written outside it. Failures are
// system codes, 0 is success.

#include "common/export.h"
#include "common/sys/disk_file.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace sys {

/// Creates the folder `root`/`parts`[0]/.../`parts`[n-1] with all that are missing above it. The
/// parts are single names, neither "." nor ".."; `root` itself may be or lie behind a link. Fails
/// where a part is a link.
LMW_API unsigned MakeContainedFolder(const std::wstring& root, std::span<const std::wstring> parts);

/// A file that gets its name only when it is complete, so that an older file survives a failure.
class LMW_API ContainedFile {
 public:
    ContainedFile() noexcept = default;
    ContainedFile(const ContainedFile&) = delete;
    ContainedFile& operator=(const ContainedFile&) = delete;
    ~ContainedFile() { Discard(); }

    /// Begins the file `root`/`parts`...; its folders are made as by MakeContainedFolder.
    unsigned Create(const std::wstring& root, std::span<const std::wstring> parts);

    unsigned Append(const void* from, std::size_t size) {
        const unsigned code = file_.WriteAt(size_, from, size);
        size_ += size;
        return code;
    }

    /// Gives the file its name; a file or link of that name is replaced, a folder is not.
    unsigned Commit();

    void Discard() noexcept;

 private:
    std::intptr_t folder_ = -1;  // an open folder where the system has such a thing
    std::wstring folder_path_;   // else its path
    std::wstring name_;
    std::wstring temporary_name_;
    DiskFile file_;
    std::uint64_t size_ = 0;
};

}  // namespace sys
