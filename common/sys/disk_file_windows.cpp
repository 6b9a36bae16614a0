#include "common/sys/detail/windows_path.h"
#include "common/sys/disk_file.h"

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <vector>

namespace sys {

namespace {

using detail::AsHandle;
using detail::LongPath;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// How long Commit waits for somebody else to let go of the old file: virus scanners and indexers
// hold a file for moments only.
constexpr int kTries = 40;
constexpr DWORD kMillisecondsBetweenTries = 50;

// Creates a file under a name of its own in the folder of `path`; the name is put into `name`.
HANDLE CreatePassing(const std::wstring& path, DWORD flags, std::wstring& name) {
    static std::atomic<unsigned> counter{0};
    const std::wstring folder = path.substr(0, path.find_last_of(L'\\') + 1);
    for (;;) {
        name = folder + L".lmw-" + std::to_wstring(GetCurrentProcessId()) + L'-' +
               std::to_wstring(counter++) + L".tmp";
        HANDLE file = CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                                  FILE_SHARE_DELETE, nullptr, CREATE_NEW, flags, nullptr);
        // One may be left of a process of the same number that was killed.
        if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_FILE_EXISTS) {
            return file;
        }
    }
}

OVERLAPPED AtOffset(std::uint64_t offset) noexcept {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

std::uint64_t Joined(DWORD high, DWORD low) noexcept {
    return (std::uint64_t{high} << 32) | low;
}

// What one call of ReadFile or WriteFile is asked for at most.
constexpr std::size_t kMostAtOnce = 1U << 30;

// Whether a file has rights of its own besides those that its folder gives.
bool HasOwnRights(PSECURITY_DESCRIPTOR descriptor) noexcept {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    BOOL is_present = FALSE;
    BOOL is_default = FALSE;
    PACL list = nullptr;
    if (GetSecurityDescriptorControl(descriptor, &control, &revision) == 0 ||
        GetSecurityDescriptorDacl(descriptor, &is_present, &list, &is_default) == 0 ||
        is_present == FALSE || list == nullptr) {
        return false;
    }
    if ((control & SE_DACL_PROTECTED) != 0) {
        return true;
    }
    for (DWORD k = 0; k < list->AceCount; ++k) {
        void* entry = nullptr;
        if (GetAce(list, k, &entry) != 0 &&
            (static_cast<const ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE) == 0) {
            return true;
        }
    }
    return false;
}

// Gives the new file the rights that the old one has of its own. Where that cannot be done (the
// file system knows no rights) those that the folder gives stand: saving matters more.
void TakeOverRights(const std::wstring& from, const std::wstring& to) {
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> rights(size);
    if (size == 0 || GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size,
                                      &size) == 0) {
        return;
    }
    if (HasOwnRights(rights.data())) {
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    }
}

bool IsHeldBySomebody(DWORD code) noexcept {
    return code == ERROR_SHARING_VIOLATION || code == ERROR_LOCK_VIOLATION ||
           code == ERROR_ACCESS_DENIED || code == ERROR_USER_MAPPED_FILE;
}

}  // namespace

PathKind KindOfPath(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return PathKind::kNothing;
    }
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? PathKind::kFolder
           : (attributes & FILE_ATTRIBUTE_DEVICE) != 0  ? PathKind::kOther
                                                        : PathKind::kFile;
}

bool IsMarkedReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

std::wstring ResolvedPath(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return path;
    }
    DiskFile file;
    if (DiskFile::OpenForReading(path, Sharing::kEveryone, file) != 0) {
        return path;
    }
    std::wstring resolved(32768, L'\0');
    const DWORD size =
        GetFinalPathNameByHandleW(AsHandle(file.Handle()), resolved.data(),
                                  static_cast<DWORD>(resolved.size()), FILE_NAME_NORMALIZED);
    resolved.resize(size < resolved.size() ? size : 0);
    return resolved.empty() ? path : resolved;
}

unsigned RemoveFile(const std::wstring& path) {
    return DeleteFileW(LongPath(path).c_str()) != 0 ? 0 : GetLastError();
}

unsigned DiskFile::OpenForReading(const std::wstring& path, Sharing sharing, DiskFile& file) {
    HANDLE handle = CreateFileW(LongPath(path).c_str(), GENERIC_READ,
                                sharing == Sharing::kEveryone ? kShareAll : FILE_SHARE_READ,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    file = FromHandle(reinterpret_cast<std::intptr_t>(handle));
    if (GetFileType(handle) != FILE_TYPE_DISK) {
        file.Close();
        return ERROR_SEEK_ON_DEVICE;
    }
    return 0;
}

unsigned DiskFile::CreateScratch(const std::wstring& path, DiskFile& file) {
    std::wstring name;
    HANDLE handle =
        CreatePassing(LongPath(path), FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, name);
    if (handle == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    file = FromHandle(reinterpret_cast<std::intptr_t>(handle));
    return 0;
}

void DiskFile::Close() noexcept {
    if (handle_ != kClosed) {
        CloseHandle(AsHandle(handle_));
        handle_ = kClosed;
    }
}

unsigned DiskFile::State(FileState& state) const {
    BY_HANDLE_FILE_INFORMATION info{};
    if (GetFileInformationByHandle(AsHandle(handle_), &info) == 0) {
        return GetLastError();
    }
    state.volume = info.dwVolumeSerialNumber;
    state.index = Joined(info.nFileIndexHigh, info.nFileIndexLow);
    state.size = Joined(info.nFileSizeHigh, info.nFileSizeLow);
    // File times count 100 ns from the start of 1601.
    constexpr std::int64_t kStartOf1970 = 116'444'736'000'000'000;
    const auto ticks = static_cast<std::int64_t>(
        Joined(info.ftLastWriteTime.dwHighDateTime, info.ftLastWriteTime.dwLowDateTime));
    state.modified = (ticks - kStartOf1970) * 100;
    return 0;
}

unsigned DiskFile::ReadAt(std::uint64_t offset, void* to, std::size_t size,
                          std::size_t& read) const {
    read = 0;
    while (read < size) {
        OVERLAPPED place = AtOffset(offset + read);
        DWORD got = 0;
        if (ReadFile(AsHandle(handle_), static_cast<char*>(to) + read,
                     static_cast<DWORD>(std::min(size - read, kMostAtOnce)), &got, &place) == 0) {
            const DWORD code = GetLastError();
            return code == ERROR_HANDLE_EOF ? 0 : code;
        }
        if (got == 0) {
            break;
        }
        read += got;
    }
    return 0;
}

unsigned DiskFile::WriteAt(std::uint64_t offset, const void* from, std::size_t size) {
    std::size_t written = 0;
    while (written < size) {
        OVERLAPPED place = AtOffset(offset + written);
        DWORD put = 0;
        if (WriteFile(AsHandle(handle_), static_cast<const char*>(from) + written,
                      static_cast<DWORD>(std::min(size - written, kMostAtOnce)), &put,
                      &place) == 0) {
            return GetLastError();
        }
        if (put == 0) {
            return ERROR_DISK_FULL;
        }
        written += put;
    }
    return 0;
}

unsigned ReplacementFile::Create(const std::wstring& path) {
    Discard();
    in_place_ = false;
    path_ = LongPath(path);
    std::wstring name;
    HANDLE handle = CreatePassing(path_, FILE_ATTRIBUTE_NORMAL, name);
    if (handle == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    temporary_path_ = std::move(name);
    file_ = DiskFile::FromHandle(reinterpret_cast<std::intptr_t>(handle));
    return 0;
}

unsigned ReplacementFile::Commit(Existing existing) {
    if (FlushFileBuffers(AsHandle(file_.Handle())) == 0) {
        return GetLastError();
    }
    file_.Close();
    if (existing == Existing::kReplace) {
        TakeOverRights(path_, temporary_path_);
    }
    // Write-through: the call comes back when the folder's change is on the device.
    const DWORD flags = existing == Existing::kReplace
                            ? MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH
                            : MOVEFILE_WRITE_THROUGH;
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(temporary_path_.c_str(), path_.c_str(), flags) != 0) {
            in_place_ = true;
            temporary_path_.clear();
            return 0;
        }
        const DWORD code = GetLastError();
        if (!IsHeldBySomebody(code) || attempt == kTries) {
            return code;
        }
        Sleep(kMillisecondsBetweenTries);
    }
}

void ReplacementFile::Discard() noexcept {
    file_.Close();
    if (!temporary_path_.empty()) {
        DeleteFileW(temporary_path_.c_str());
        temporary_path_.clear();
    }
}

}  // namespace sys
