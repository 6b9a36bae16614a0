#pragma once

// A file that is only ever appended to, such as a log.

#include "common/export.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace sys {

/// Opened for appending, or made when it is not there; readers and other writers may have it open
/// at the same time. Closed by the destructor.
class LMW_API AppendFile {
 public:
    /// On failure IsOpen is false and LastError tells why.
    explicit AppendFile(const std::wstring& path);
    AppendFile(const AppendFile&) = delete;
    AppendFile& operator=(const AppendFile&) = delete;
    ~AppendFile();

    [[nodiscard]] bool IsOpen() const noexcept;

    /// Writes `bytes` in one piece at the end of the file as it is then, unbuffered. False when
    /// they, or a part of them, could not be written; LastError then tells why. Any thread, several
    /// at once.
    bool Append(std::string_view bytes);

 private:
    std::intptr_t file_;  // the system's handle or descriptor
};

}  // namespace sys
