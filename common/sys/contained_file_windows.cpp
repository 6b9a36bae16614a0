#include "common/sys/contained_file.h"
#include "common/sys/detail/windows_path.h"

#include <windows.h>

#include <atomic>

namespace sys {

namespace {

using detail::AsHandle;
using detail::LongPath;

// The system's ERROR_STOPPED_ON_SYMLINK, which not every compiler's headers have.
constexpr unsigned kStoppedOnSymbolicLink = 681;

// Makes the folder with all above it; what is there already, links included, is used as it is.
unsigned MakeFolders(const std::wstring& path) {
    if (CreateDirectoryW(path.c_str(), nullptr) != 0) {
        return 0;
    }
    const DWORD code = GetLastError();
    if (code == ERROR_ALREADY_EXISTS) {
        return 0;
    }
    const std::size_t separator = path.find_last_of(L'\\');
    if (code != ERROR_PATH_NOT_FOUND || separator == std::wstring::npos || separator < 4) {
        return code;
    }
    if (const unsigned above = MakeFolders(path.substr(0, separator)); above != 0) {
        return above;
    }
    return CreateDirectoryW(path.c_str(), nullptr) != 0 ? 0 : GetLastError();
}

// Goes down from `root`, making the folders that are missing; `path` becomes the last one's path.
unsigned OpenFolder(const std::wstring& root, std::span<const std::wstring> parts,
                    std::wstring& path) {
    path = LongPath(root.empty() ? L"." : root);
    while (!path.empty() && path.back() == L'\\') {
        path.pop_back();
    }
    if (const unsigned code = MakeFolders(path); code != 0) {
        return code;
    }
    for (const std::wstring& part : parts) {
        path += L'\\' + part;
        if (CreateDirectoryW(path.c_str(), nullptr) == 0 &&
            GetLastError() != ERROR_ALREADY_EXISTS) {
            return GetLastError();
        }
        const DWORD attributes = GetFileAttributesW(path.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) {
            return GetLastError();
        }
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
            return kStoppedOnSymbolicLink;
        }
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            return ERROR_DIRECTORY;
        }
    }
    return 0;
}

}  // namespace

unsigned MakeContainedFolder(const std::wstring& root, std::span<const std::wstring> parts) {
    std::wstring path;
    return OpenFolder(root, parts, path);
}

unsigned ContainedFile::Create(const std::wstring& root, std::span<const std::wstring> parts) {
    Discard();
    if (const unsigned code = OpenFolder(root, parts.first(parts.size() - 1), folder_path_);
        code != 0) {
        return code;
    }
    static std::atomic<unsigned> counter{0};
    std::wstring name;
    HANDLE handle = INVALID_HANDLE_VALUE;
    do {  // one may be left of a process of the same number that was killed
        name = folder_path_ + L"\\.lmw-" + std::to_wstring(GetCurrentProcessId()) + L'-' +
               std::to_wstring(counter++) + L".tmp";
        handle = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                             FILE_ATTRIBUTE_NORMAL, nullptr);
    } while (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
    if (handle == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    file_ = DiskFile::FromHandle(reinterpret_cast<std::intptr_t>(handle));
    name_ = folder_path_ + L'\\' + parts.back();
    temporary_name_ = std::move(name);
    size_ = 0;
    return 0;
}

unsigned ContainedFile::Commit() {
    file_.Close();
    if (MoveFileExW(temporary_name_.c_str(), name_.c_str(), MOVEFILE_REPLACE_EXISTING) == 0) {
        return GetLastError();
    }
    temporary_name_.clear();
    return 0;
}

void ContainedFile::Discard() noexcept {
    file_.Close();
    if (!temporary_name_.empty()) {
        DeleteFileW(temporary_name_.c_str());
        temporary_name_.clear();
    }
}

}  // namespace sys
