#include "common/sys/append_file.h"
#include "common/sys/text_encoding.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace sys {

AppendFile::AppendFile(const std::wstring& path)
    // NOLINTNEXTLINE(*-vararg): the system's interface
    : file_(open(Narrow(path).c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666)) {}

AppendFile::~AppendFile() {
    if (IsOpen()) {
        close(static_cast<int>(file_));
    }
}

bool AppendFile::IsOpen() const noexcept {
    return file_ >= 0;
}

bool AppendFile::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(static_cast<int>(file_), bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace sys
