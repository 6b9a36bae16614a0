#include "common/sys/append_file.h"

#include <windows.h>

namespace sys {

namespace {

HANDLE HandleOf(std::intptr_t file) {
    return reinterpret_cast<HANDLE>(file);
}

}  // namespace

AppendFile::AppendFile(const std::wstring& path)
    // With the right to append and not to write, the system puts each write at the end.
    : file_(reinterpret_cast<std::intptr_t>(CreateFileW(
          path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
          nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr))) {}

AppendFile::~AppendFile() {
    if (IsOpen()) {
        CloseHandle(HandleOf(file_));
    }
}

bool AppendFile::IsOpen() const noexcept {
    return HandleOf(file_) != INVALID_HANDLE_VALUE;
}

bool AppendFile::Append(std::string_view bytes) {
    DWORD written = 0;
    return WriteFile(HandleOf(file_), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) != FALSE &&
           written == bytes.size();
}

}  // namespace sys
