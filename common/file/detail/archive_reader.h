#pragma once

// The reading half of the archive: one opened archive as it lies on its stream, without regard to
// changes that are pending.

#include "common/file/detail/zip_source.h"
#include "common/file/input_stream.h"
#include "common/status.h"

#include <zip.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace lmw::file::detail {

/// Takes the bytes of an entry as they are unpacked.
class IByteSink {
 public:
    virtual ~IByteSink() = default;
    /// Room for the next bytes, never empty; valid until the next call.
    virtual std::span<std::byte> Room() = 0;
    /// `size` bytes of the room now hold content. A failure ends the reading.
    virtual gtl::status Filled(std::size_t size) = 0;

 protected:
    IByteSink() = default;
    IByteSink(const IByteSink&) = default;
    IByteSink& operator=(const IByteSink&) = default;
};

/// Reads a stream from front to end into a sink.
gtl::status CopyStream(const sys::file::IInputStream& stream, IByteSink& sink);

class ArchiveReader {
 public:
    /// Message 20526 with the library's reason when the stream is not an archive.
    gtl::status Open(const sys::file::InputStream& stream);
    void Close() noexcept;
    [[nodiscard]] bool IsOpen() const noexcept { return archive_ != nullptr; }

    /// 0 while nothing is open.
    [[nodiscard]] std::uint64_t Count() const;
    /// The name as it is stored.
    [[nodiscard]] std::string Name(std::uint64_t index) const;
    /// The archive's comment as it is stored.
    [[nodiscard]] std::string Comment() const;
    /// The host code of the first entry, 0 without entries.
    [[nodiscard]] std::uint8_t HostSystem() const;
    /// Sizes the entry claims.
    [[nodiscard]] std::uint64_t ClaimedSize(std::uint64_t index) const;
    [[nodiscard]] std::uint64_t PackedSize(std::uint64_t index) const;
    [[nodiscard]] bool IsEncrypted(std::uint64_t index) const;

    /// Unpacks an entry from front to end, checking sum and size. On failure `cause` is why, and
    /// what the sink got so far is worthless. `password` may be null. A failure of the sink is
    /// returned as it is, with an empty cause.
    gtl::status Read(std::uint64_t index, const char* password, IByteSink& sink,
                     std::wstring& cause) const;

 private:
    struct Discarder {
        void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
    };
    gtl::status FailedToRead_(std::wstring& cause, const char* text) const;
    gtl::status ReadToEnd_(zip_file_t* entry, IByteSink& sink, std::uint64_t& size,
                           std::wstring& cause) const;

    SourceFailure failure_;
    std::unique_ptr<zip_t, Discarder> archive_;
};

/// The library's text for an error, or `failure` when a stream told more.
[[nodiscard]] std::wstring CauseOf(zip_error_t* error, const SourceFailure& failure);

}  // namespace lmw::file::detail
