#pragma once

// Paths as the wide functions of Windows take them. For the Windows sources of this room only.

#include <windows.h>

#include <cstdint>
#include <string>

namespace sys::detail {

/// The absolute path with the prefix that lifts the limit of 260 characters and switches off every
/// rewriting of names; `path` itself when it has a prefix already or is not a path.
[[nodiscard]] inline std::wstring LongPath(const std::wstring& path) {
    if (path.empty() || path.rfind(L"\\\\?\\", 0) == 0 || path.rfind(L"\\\\.\\", 0) == 0) {
        return path;
    }
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (size == 0) {
        return path;
    }
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    if (full.rfind(L"\\\\.\\", 0) == 0) {  // a device
        return full;
    }
    return full.rfind(L"\\\\", 0) == 0 ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

[[nodiscard]] inline HANDLE AsHandle(std::intptr_t handle) noexcept {
    return reinterpret_cast<HANDLE>(handle);
}

}  // namespace sys::detail
