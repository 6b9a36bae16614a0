#pragma once

// The directory of an ordinary archive, read and checked without the archive library: far faster,
// because nothing is made of the entries.

#include "common/file/input_stream.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace lmw::file::detail {

class OrdinaryDirectory {
 public:
    OrdinaryDirectory() = default;
    OrdinaryDirectory(const OrdinaryDirectory&) = delete;
    OrdinaryDirectory& operator=(const OrdinaryDirectory&) = delete;
    ~OrdinaryDirectory() = default;

    /// Reads and checks the end record and every entry. False for whatever is out of the ordinary:
    /// Zip64, several end records, data behind the archive, AES entries, a directory above 64 MiB,
    /// anything damaged. Property: the archive library opens every archive that is accepted here,
    /// with the same comment and the same entries.
    bool Read(const sys::file::IInputStream& stream);

    // Of what was read, valid as long as this object:
    [[nodiscard]] std::string_view Comment() const noexcept { return comment_; }
    [[nodiscard]] unsigned Entries() const noexcept { return entries_; }
    /// The host code of the first entry, 0 without entries.
    [[nodiscard]] std::uint8_t HostSystem() const noexcept;
    /// Whether bytes in front of the directory belong to no entry.
    [[nodiscard]] bool HasGaps(const sys::file::IInputStream& stream) const;

 private:
    std::vector<char> tail_;   // the end of the stream
    std::vector<char> apart_;  // the directory where it does not lie in the tail
    std::string_view directory_;
    std::string_view comment_;
    std::uint64_t offset_ = 0;  // of the directory
    unsigned entries_ = 0;
};

}  // namespace lmw::file::detail
