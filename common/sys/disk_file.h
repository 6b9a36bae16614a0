#pragma once

// Files as the archive needs them: read at a position, written beside an existing file, and put in
// its place such that a crash, a full disk or a pulled plug leaves one whole file, the old or the
// new. Files below a folder that a stranger named are in contained_file.h. Every failure is a
// system code (lmw::diag::impl::SysCodeAsString_ tells its text); 0 is success.

#include "common/export.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace sys {

enum class PathKind { kNothing, kFile, kFolder, kOther };

/// What is at a path; links are followed. kNothing also when it cannot be found out.
LMW_API PathKind KindOfPath(const std::wstring& path);

/// Whether the file is marked read-only: the attribute on Windows; on Linux no write bit for
/// anybody, or a write bit that does not help this user. Judged without trying to write, because
/// the superuser can write anyway.
LMW_API bool IsMarkedReadOnly(const std::wstring& path);

/// The path with links resolved, so that replacing the file does not replace a link to it; `path`
/// itself where there is no such file.
LMW_API std::wstring ResolvedPath(const std::wstring& path);

/// Deletes a file.
LMW_API unsigned RemoveFile(const std::wstring& path);

/// Tells one state of a file from another: equal while nobody has written to it or replaced it.
struct FileState {
    std::uint64_t volume = 0;
    std::uint64_t index = 0;
    std::uint64_t size = 0;
    std::int64_t modified = 0;  ///< nanoseconds since the start of 1970, UTC

    friend bool operator==(const FileState&, const FileState&) = default;
};

/// What others may do while the file is open here (Windows; elsewhere everyone may everything).
enum class Sharing {
    kReaders,   ///< read
    kEveryone,  ///< read, write, rename and delete
};

/// An open file. Reading at positions may be done by any number of threads at once.
class LMW_API DiskFile {
 public:
    DiskFile() noexcept = default;
    DiskFile(const DiskFile&) = delete;
    DiskFile& operator=(const DiskFile&) = delete;
    DiskFile(DiskFile&& other) noexcept : handle_(other.handle_) { other.handle_ = kClosed; }
    DiskFile& operator=(DiskFile&& other) noexcept {
        if (this != &other) {
            Close();
            handle_ = other.handle_;
            other.handle_ = kClosed;
        }
        return *this;
    }
    ~DiskFile() { Close(); }

    /// Opens an existing file; a folder is refused.
    static unsigned OpenForReading(const std::wstring& path, Sharing sharing, DiskFile& file);

    /// Creates an empty file in the folder of `path` that is gone as soon as it is closed, also
    /// when the process dies.
    static unsigned CreateScratch(const std::wstring& path, DiskFile& file);

    /// Takes over an open handle (Windows) or descriptor (Linux).
    static DiskFile FromHandle(std::intptr_t handle) noexcept {
        DiskFile file;
        file.handle_ = handle;
        return file;
    }

    [[nodiscard]] bool IsOpen() const noexcept { return handle_ != kClosed; }
    void Close() noexcept;

    unsigned State(FileState& state) const;

    /// Reads up to `size` bytes; fewer only where the file ends.
    unsigned ReadAt(std::uint64_t offset, void* to, std::size_t size, std::size_t& read) const;
    unsigned WriteAt(std::uint64_t offset, const void* from, std::size_t size);

    [[nodiscard]] std::intptr_t Handle() const noexcept { return handle_; }

 private:
    enum : std::intptr_t { kClosed = -1 };

    std::intptr_t handle_ = kClosed;
};

/// What a new file may meet at its place.
enum class Existing {
    kReplace,  ///< whatever file is there gives way
    kKeep,     ///< nothing may be there: Commit fails where something is, and it stays
};

/// A new file that is to take the place of another. Without Commit it disappears with the object;
/// where the system can keep a file without a name it also disappears when the process dies.
class LMW_API ReplacementFile {
 public:
    ReplacementFile() noexcept = default;
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;
    ~ReplacementFile() { Discard(); }

    /// Begins an empty file in the folder of `path`, which need not exist itself.
    unsigned Create(const std::wstring& path);

    [[nodiscard]] DiskFile& File() noexcept { return file_; }

    /// Flushes the content to the device, puts the file at `path` in one step and flushes the
    /// folder. Access rights of a file that was there are kept, as far as the user may give them
    /// (Windows: those that are its own, besides what its folder gives). On failure what was at
    /// `path` is untouched, unless IsInPlace. Windows: while somebody holds the old file open,
    /// tries again for two seconds.
    unsigned Commit(Existing existing = Existing::kReplace);

    /// Whether Commit has put the file in place. True after a failure of Commit when the failure
    /// was in flushing the folder: the new file is there, but might not survive a pulled plug.
    [[nodiscard]] bool IsInPlace() const noexcept { return in_place_; }

    void Discard() noexcept;

 private:
    bool in_place_ = false;
    std::wstring path_;
    std::wstring temporary_path_;  // empty while the file has no name
    DiskFile file_;
};

}  // namespace sys
