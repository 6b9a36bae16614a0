#include "common/sys/contained_file.h"
#include "common/sys/text_encoding.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>

namespace sys {

namespace {

unsigned Errno() noexcept {
    return static_cast<unsigned>(errno);
}

// Makes `path` and the folders above it. What is there already, links included, is used as it is.
unsigned MakeFolders(const std::string& path) {
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string part = path.substr(0, end);
        if (mkdir(part.c_str(), 0777) != 0 && errno != EEXIST) {
            return Errno();
        }
        if (end == std::string::npos) {
            return 0;
        }
    }
}

// Opens the folder `name` in `parent` after making it where it is missing; a link is refused.
unsigned Enter(int parent, const std::string& name, int& folder) {
    if (mkdirat(parent, name.c_str(), 0777) != 0 && errno != EEXIST) {
        return Errno();
    }
    folder = openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder >= 0) {
        return 0;
    }
    const unsigned code = Errno();
    struct stat info {};
    const bool is_link =
        fstatat(parent, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(info.st_mode);
    return is_link ? unsigned{ELOOP} : code;
}

unsigned OpenFolder(const std::wstring& root, std::span<const std::wstring> parts, int& folder) {
    const std::string root_name = root.empty() ? "." : Narrow(root);
    if (const unsigned code = MakeFolders(root_name); code != 0) {
        return code;
    }
    folder = open(root_name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) {
        return Errno();
    }
    for (const std::wstring& part : parts) {
        int next = -1;
        const unsigned code = Enter(folder, Narrow(part), next);
        close(folder);
        folder = next;
        if (code != 0) {
            return code;
        }
    }
    return 0;
}

}  // namespace

unsigned MakeContainedFolder(const std::wstring& root, std::span<const std::wstring> parts) {
    int folder = -1;
    const unsigned code = OpenFolder(root, parts, folder);
    if (folder >= 0) {
        close(folder);
    }
    return code;
}

unsigned ContainedFile::Create(const std::wstring& root, std::span<const std::wstring> parts) {
    Discard();
    int folder = -1;
    const unsigned code = OpenFolder(root, parts.first(parts.size() - 1), folder);
    folder_ = folder;
    if (code != 0) {
        Discard();
        return code;
    }
    static std::atomic<unsigned> counter{0};
    std::string name;
    int file = -1;
    do {  // one may be left of a process of the same number that was killed
        name = ".lmw-" + std::to_string(getpid()) + '-' + std::to_string(counter++) + ".tmp";
        file = openat(folder, name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC,
                      0666);
    } while (file < 0 && errno == EEXIST);
    if (file < 0) {
        const unsigned reason = Errno();
        Discard();
        return reason;
    }
    file_ = DiskFile::FromHandle(file);
    name_ = parts.back();
    temporary_name_ = Widen(name);
    size_ = 0;
    return 0;
}

unsigned ContainedFile::Commit() {
    const int folder = static_cast<int>(folder_);
    if (renameat(folder, Narrow(temporary_name_).c_str(), folder, Narrow(name_).c_str()) != 0) {
        return Errno();
    }
    temporary_name_.clear();
    Discard();
    return 0;
}

void ContainedFile::Discard() noexcept {
    file_.Close();
    if (!temporary_name_.empty()) {
        unlinkat(static_cast<int>(folder_), Narrow(temporary_name_).c_str(), 0);
        temporary_name_.clear();
    }
    if (folder_ >= 0) {
        close(static_cast<int>(folder_));
        folder_ = -1;
    }
}

}  // namespace sys
