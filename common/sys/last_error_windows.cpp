#include "common/sys/last_error.h"

#include <windows.h>

#include <array>
#include <cstring>
#include <memory>
#include <type_traits>

namespace sys {

namespace {

// Network services number their errors here; their texts are in a module of their own.
constexpr unsigned kFirstNetworkCode = 2100;
constexpr unsigned kEndOfNetworkCodes = 3000;

struct ModuleReleaser {
    void operator()(HMODULE module) const noexcept { FreeLibrary(module); }
};
using Module = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleReleaser>;

struct LocalFreer {
    void operator()(wchar_t* memory) const noexcept { LocalFree(memory); }
};

}  // namespace

unsigned LastError() noexcept {
    return GetLastError();
}

void SetLastError(unsigned code) noexcept {
    ::SetLastError(code);
}

std::wstring SystemErrorText(unsigned code) {
    DWORD flags =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM;
    Module network_messages;
    if (code >= kFirstNetworkCode && code < kEndOfNetworkCodes) {
        network_messages.reset(LoadLibraryExW(L"netmsg.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE));
        if (network_messages) {
            flags |= FORMAT_MESSAGE_FROM_HMODULE;
        }
    }
    wchar_t* allocated = nullptr;
    const DWORD length = FormatMessageW(flags, network_messages.get(), code,
                                        MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
                                        reinterpret_cast<wchar_t*>(&allocated), 0, nullptr);
    const std::unique_ptr<wchar_t, LocalFreer> text(allocated);
    return length != 0 ? std::wstring(text.get(), length) : std::wstring();
}

std::wstring RuntimeErrorText(int code) {
    // The runtime answers every number it does not know with one and the same text.
    std::array<wchar_t, 256> text{};
    std::array<wchar_t, 256> unknown{};
    if (_wcserror_s(text.data(), text.size(), code) != 0 ||
        _wcserror_s(unknown.data(), unknown.size(), -1) != 0 ||
        wcscmp(text.data(), unknown.data()) == 0) {
        return {};
    }
    return text.data();
}

}  // namespace sys
