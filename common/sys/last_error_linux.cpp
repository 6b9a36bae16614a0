#include "common/sys/last_error.h"
#include "common/sys/text_encoding.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>

namespace sys {

unsigned LastError() noexcept {
    return static_cast<unsigned>(errno);
}

void SetLastError(unsigned code) noexcept {
    errno = static_cast<int>(code);
}

std::wstring SystemErrorText(unsigned code) {
    return code <= static_cast<unsigned>(INT_MAX) ? RuntimeErrorText(static_cast<int>(code))
                                                  : std::wstring();
}

std::wstring RuntimeErrorText(int code) {
    // The runtime invents a text ("Unknown error 4711") for any number; only the table of
    // descriptions tells which codes exist.
    if (strerrordesc_np(code) == nullptr) {
        return {};
    }
    std::array<char, 256> buffer{};
    return Widen(strerror_r(code, buffer.data(), buffer.size()));
}

}  // namespace sys
