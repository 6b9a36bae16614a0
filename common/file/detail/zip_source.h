#pragma once

// How the archive library reads our streams and writes our files. Both adapters hold their stream
// by one reference for as long as the library uses them, let no exception into the library, and
// keep the text of the first failure, which says more than the library's own code for it.

#include "common/file/input_stream.h"
#include "common/sys/disk_file.h"

#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace lmw::file::detail {

/// The text of the first failure of a source; empty while there is none.
using SourceFailure = std::shared_ptr<std::wstring>;

/// A source that reads `stream` from front to end. Null on failure, with `error` set.
[[nodiscard]] zip_source_t* MakeReadingSource(const sys::file::InputStream& stream,
                                              SourceFailure failure, zip_error_t* error);

/// Called just before a new archive takes its place: makes sure that the old one may be replaced
/// and lets go of it. Returns why not, the empty text when all is well.
using BeforeCommit = std::function<std::wstring()>;

/// What becomes of the file a replacing source writes.
struct Replacement {
    sys::ReplacementFile file;
    std::wstring path;
    BeforeCommit before_commit;
};

/// A source that reads `stream` and writes a whole new file, which takes the place of
/// `replacement.path` when the library commits. `replacement` must outlive the source.
[[nodiscard]] zip_source_t* MakeReplacingSource(const sys::file::InputStream& stream,
                                                Replacement& replacement, SourceFailure failure,
                                                zip_error_t* error);

/// Writes one file from front to back with occasional steps back, in large pieces. Codes as of
/// sys::DiskFile.
class PieceWriter {
 public:
    explicit PieceWriter(sys::DiskFile& file);

    unsigned Write(const void* from, std::size_t size);
    /// Continues at `offset`, at most the size written so far.
    unsigned Seek(std::uint64_t offset);
    [[nodiscard]] std::uint64_t Offset() const noexcept { return begin_ + at_; }
    [[nodiscard]] std::uint64_t Size() const noexcept;
    unsigned Flush();

 private:
    sys::DiskFile* file_;
    std::unique_ptr<std::byte[]> buffer_;
    std::uint64_t begin_ = 0;    // where the buffer begins in the file
    std::size_t filled_ = 0;     // bytes in the buffer
    std::size_t at_ = 0;         // where in the buffer the next byte goes
    std::uint64_t flushed_ = 0;  // the file's size without the buffer
};

}  // namespace lmw::file::detail
