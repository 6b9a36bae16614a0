#include "common/sys/disk_file.h"
#include "common/sys/text_encoding.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace sys {

namespace {

unsigned Errno() noexcept {
    return static_cast<unsigned>(errno);
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

// A name for a passing file. One of that name may lie there all the same, left by a process of the
// same number that was killed.
std::string PassingName(const std::string& folder) {
    static std::atomic<unsigned> counter{0};
    return folder + ".lmw-" + std::to_string(getpid()) + '-' + std::to_string(counter++) + ".tmp";
}

// Opens a file without a name in a folder; -1 where the file system or the kernel cannot do that,
// or where it could not be given a name later.
int OpenNameless(const std::string& folder) {
    const int file = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (file >= 0 && access("/proc/self/fd", X_OK) != 0) {
        close(file);
        return -1;
    }
    return file;
}

// Creates a file under a name of its own, which is put into `name`.
int OpenPassing(const std::string& folder, std::string& name) {
    for (;;) {
        name = PassingName(folder);
        const int file =
            open(name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST) {
            return file;
        }
    }
}

// Begins a passing file, without a name (which `name` then lacks) where that can be had.
int OpenTemporary(const std::string& folder, std::string& name) {
    name.clear();
    const int file = OpenNameless(folder);
    return file >= 0 ? file : OpenPassing(folder, name);
}

// Gives an open file without a name a name of its own.
unsigned LinkPassing(int file, const std::string& folder, std::string& name) {
    const std::string self = "/proc/self/fd/" + std::to_string(file);
    for (;;) {
        name = PassingName(folder);
        if (linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            return 0;
        }
        if (errno != EEXIST) {
            return Errno();
        }
    }
}

// Renames a file to a name that nothing has yet, in one step.
unsigned RenameToFreeName(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return Errno();
    }
    // A file system without that step; a second name comes about in one as well.
    if (link(from.c_str(), to.c_str()) != 0) {
        return Errno();
    }
    unlink(from.c_str());
    return 0;
}

// Some file systems cannot flush a folder and say so by these codes; there is nothing to wait for.
bool CannotFlush(int code) noexcept {
    return code == EINVAL || code == ENOTSUP || code == EROFS;
}

unsigned FlushFolder(const std::string& folder) {
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return errno == EACCES ? 0 : Errno();  // a folder may be writable and not readable
    }
    const unsigned code = fsync(handle) != 0 && !CannotFlush(errno) ? Errno() : 0;
    close(handle);
    return code;
}

}  // namespace

PathKind KindOfPath(const std::wstring& path) {
    struct stat info {};
    if (stat(Narrow(path).c_str(), &info) != 0) {
        return PathKind::kNothing;
    }
    return S_ISREG(info.st_mode)   ? PathKind::kFile
           : S_ISDIR(info.st_mode) ? PathKind::kFolder
                                   : PathKind::kOther;
}

bool IsMarkedReadOnly(const std::wstring& path) {
    const std::string name = Narrow(path);
    struct stat info {};
    if (stat(name.c_str(), &info) != 0) {
        return false;
    }
    return (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 ||
           faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0;
}

std::wstring ResolvedPath(const std::wstring& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(
        realpath(Narrow(path).c_str(), nullptr), &std::free);
    if (resolved == nullptr) {
        return path;
    }
    std::wstring wide = Widen(resolved.get());
    return Narrow(wide) == resolved.get() ? wide
                                          : path;  // a link into a folder of unnameable bytes
}

unsigned RemoveFile(const std::wstring& path) {
    return unlink(Narrow(path).c_str()) == 0 ? 0 : Errno();
}

unsigned DiskFile::OpenForReading(const std::wstring& path, Sharing /*sharing*/, DiskFile& file) {
    // Without O_NONBLOCK a pipe under that name would wait for its writer here.
    const int handle = open(Narrow(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (handle < 0) {
        return Errno();
    }
    file.Close();
    file.handle_ = handle;
    struct stat info {};
    const unsigned code = fstat(handle, &info) != 0    ? Errno()
                          : S_ISDIR(info.st_mode)      ? unsigned{EISDIR}
                          : S_ISREG(info.st_mode) == 0 ? unsigned{ESPIPE}
                                                       : 0U;
    if (code != 0) {
        file.Close();
    }
    return code;
}

unsigned DiskFile::CreateScratch(const std::wstring& path, DiskFile& file) {
    std::string name;
    const int handle = OpenTemporary(FolderOf(Narrow(path)), name);
    if (handle < 0) {
        return Errno();
    }
    if (!name.empty()) {
        unlink(name.c_str());
    }
    file = FromHandle(handle);
    return 0;
}

void DiskFile::Close() noexcept {
    if (handle_ != kClosed) {
        close(static_cast<int>(handle_));
        handle_ = kClosed;
    }
}

unsigned DiskFile::State(FileState& state) const {
    struct stat info {};
    if (fstat(static_cast<int>(handle_), &info) != 0) {
        return Errno();
    }
    state.volume = info.st_dev;
    state.index = info.st_ino;
    state.size = static_cast<std::uint64_t>(info.st_size);
    state.modified = std::int64_t{info.st_mtim.tv_sec} * 1'000'000'000 + info.st_mtim.tv_nsec;
    return 0;
}

unsigned DiskFile::ReadAt(std::uint64_t offset, void* to, std::size_t size,
                          std::size_t& read) const {
    read = 0;
    while (read < size) {
        const ssize_t got = pread(static_cast<int>(handle_), static_cast<char*>(to) + read,
                                  size - read, static_cast<off_t>(offset + read));
        if (got == 0) {
            break;
        }
        if (got > 0) {
            read += static_cast<std::size_t>(got);
        } else if (errno != EINTR) {
            return Errno();
        }
    }
    return 0;
}

unsigned DiskFile::WriteAt(std::uint64_t offset, const void* from, std::size_t size) {
    std::size_t written = 0;
    while (written < size) {
        const ssize_t put =
            pwrite(static_cast<int>(handle_), static_cast<const char*>(from) + written,
                   size - written, static_cast<off_t>(offset + written));
        if (put > 0) {
            written += static_cast<std::size_t>(put);
        } else if (put == 0) {
            return ENOSPC;
        } else if (errno != EINTR) {
            return Errno();
        }
    }
    return 0;
}

unsigned ReplacementFile::Create(const std::wstring& path) {
    Discard();
    in_place_ = false;
    path_ = path;
    std::string name;
    const int handle = OpenTemporary(FolderOf(Narrow(path)), name);
    if (handle < 0) {
        return Errno();
    }
    temporary_path_ = Widen(name);
    file_ = DiskFile::FromHandle(handle);
    return 0;
}

unsigned ReplacementFile::Commit(Existing existing) {
    const std::string target = Narrow(path_);
    const int handle = static_cast<int>(file_.Handle());
    struct stat old {};
    if (existing == Existing::kReplace && stat(target.c_str(), &old) == 0) {
        // The owner can be kept by the superuser only; rights without the owner mean less, not
        // more.
        [[maybe_unused]] const int owner_kept = fchown(handle, old.st_uid, old.st_gid);
        if (fchmod(handle, old.st_mode & 07777) != 0) {
            return Errno();
        }
    }
    if (fsync(handle) != 0) {
        return Errno();
    }
    if (temporary_path_.empty()) {
        std::string name;
        if (const unsigned code = LinkPassing(handle, FolderOf(target), name); code != 0) {
            return code;
        }
        temporary_path_ = Widen(name);
    }
    const std::string temporary = Narrow(temporary_path_);
    if (existing == Existing::kKeep) {
        if (const unsigned code = RenameToFreeName(temporary, target); code != 0) {
            return code;
        }
    } else if (std::rename(temporary.c_str(), target.c_str()) != 0) {
        return Errno();
    }
    in_place_ = true;
    temporary_path_.clear();
    file_.Close();
    return FlushFolder(FolderOf(target));
}

void ReplacementFile::Discard() noexcept {
    file_.Close();
    if (!temporary_path_.empty()) {
        unlink(Narrow(temporary_path_).c_str());
        temporary_path_.clear();
    }
}

}  // namespace sys
