#pragma once

// The content of entries that are added but not yet written: taken from its file at once, so that
// what happens to that file afterwards does not matter. Small content stays in memory, large goes
// to a scratch file beside the archive, where there must be room for it anyway.

#include "common/file/input_stream.h"
#include "common/status.h"
#include "common/sys/disk_file.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace lmw::file::detail {

struct TakenContent {
    sys::file::InputStream stream;
    std::int64_t modified = 0;  ///< of the source, seconds since the start of 1970
};

/// Takes and keeps contents. They stay readable after the store is gone.
class ContentStore {
 public:
    /// `archive_path`: the scratch file is made in its folder, when it is first needed.
    explicit ContentStore(std::wstring archive_path) : archive_path_(std::move(archive_path)) {}

    /// Reads the file from end to end. Fails, changing nothing, when it is missing, is a folder or
    /// cannot be read, and when there is no room.
    gtl::status Take(const std::wstring& source_path, TakenContent& taken);

 private:
    struct Scratch {
        sys::DiskFile file;
        std::uint64_t size = 0;
    };
    class Region;

    gtl::status TakeToMemory_(const sys::DiskFile& source, const std::wstring& path,
                              std::uint64_t size, TakenContent& taken);
    gtl::status TakeToScratch_(const sys::DiskFile& source, const std::wstring& path,
                               TakenContent& taken);

    std::wstring archive_path_;
    std::uint64_t in_memory_ = 0;
    std::shared_ptr<Scratch> scratch_;
    std::vector<std::byte> buffer_;
};

}  // namespace lmw::file::detail
