#include "common/sys/append_file.h"

#include <windows.h>

namespace sys {

namespace {

HANDLE HandleOf(std::intptr_t file) {
    return reinterpret_cast<HANDLE>(file);
}

}  // namespace

AppendFile::AppendFile(const std::wstring& path)
    // With the right to append and not to write, the system puts each write at the end; locking
    // asks for the right to read.
    : file_(reinterpret_cast<std::intptr_t>(
          CreateFileW(path.c_str(), GENERIC_READ | FILE_APPEND_DATA,
                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                      FILE_ATTRIBUTE_NORMAL, nullptr))) {}

AppendFile::~AppendFile() {
    if (IsOpen()) {
        CloseHandle(HandleOf(file_));
    }
}

bool AppendFile::IsOpen() const noexcept {
    return HandleOf(file_) != INVALID_HANDLE_VALUE;
}

bool AppendFile::Append(std::string_view bytes) {
    // Not every file system finds the end and writes there in one step. So whoever appends locks a
    // byte far behind any data, which keeps out other threads and processes; where nothing can be
    // locked, the write is as good as the file system makes it.
    OVERLAPPED guard{};
    guard.OffsetHigh = 0x7FFFFFFE;
    const bool locked =
        LockFileEx(HandleOf(file_), LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &guard) != FALSE;
    DWORD written = 0;
    const bool whole = WriteFile(HandleOf(file_), bytes.data(), static_cast<DWORD>(bytes.size()),
                                 &written, nullptr) != FALSE &&
                       written == bytes.size();
    const DWORD error = GetLastError();
    if (locked) {
        UnlockFileEx(HandleOf(file_), 0, 1, 0, &guard);
        SetLastError(error);
    }
    return whole;
}

}  // namespace sys
