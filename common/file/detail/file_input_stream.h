#pragma once

// The stream over a file, for units that need the file behind it.

#include "common/file/input_stream.h"
#include "common/sys/disk_file.h"

namespace sys::file {

class FileInputStream final : public IInputStream {
 public:
    FileInputStream(std::wstring path, Sharing sharing);

    [[nodiscard]] std::wstring Name() const override { return path_; }
    gtl::status Size(std::uint64_t& size) const override;
    gtl::status ReadAt(std::uint64_t offset, std::span<std::byte> to,
                       std::size_t& read) const override;

    /// Which state of the file the stream reads.
    gtl::status State(FileState& state) const;

    /// Success, or why the file could not be opened.
    [[nodiscard]] gtl::status OpenStatus() const;

    /// Lets go of the file; later reads fail until Reopen.
    void Close() noexcept;
    void Reopen();

 private:
    std::wstring path_;
    Sharing sharing_;
    DiskFile file_;
    unsigned open_code_ = 0;
};

}  // namespace sys::file
