#pragma once

// Streams that an archive can be read from: a file, a file that others write meanwhile, a block of
// memory, or a class of the caller's own. Reading is by position, so that one stream serves any
// number of readers.

#include "common/export.h"
#include "common/handle.h"
#include "common/status.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace sys::file {

/// Bytes that can be read at any position. Objects are held by InputStream handles, which count
/// references and may be kept by different threads; ReadAt and Size of one object may be called
/// from several threads at once. A class of a caller's own fails by a status (made anew for each
/// call, as a status does not serve two threads); an exception it throws is turned into one.
class LMW_API IInputStream {
 public:
    IInputStream() = default;
    IInputStream(const IInputStream&) = delete;
    IInputStream& operator=(const IInputStream&) = delete;

    /// What messages call the stream: for files the path.
    [[nodiscard]] virtual std::wstring Name() const = 0;

    virtual gtl::status Size(std::uint64_t& size) const = 0;

    /// Reads into the whole of `to`; `read` is how many bytes came, fewer only where the stream
    /// ends.
    virtual gtl::status ReadAt(std::uint64_t offset, std::span<std::byte> to,
                               std::size_t& read) const = 0;

    void AddReference() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void ReleaseReference() noexcept;
    [[nodiscard]] std::uint32_t ReferenceCount() const noexcept { return references_.load(); }

 protected:
    virtual ~IInputStream();

 private:
    std::atomic<std::uint32_t> references_{0};
};

using InputStream = gtl::handle<IInputStream, gtl::handle_mgmt_refcounted>;

/// A stream over a file. The file is opened now and stays open; on Windows nobody can write to it
/// meanwhile. Never a null handle: where the file cannot be opened, each use of the stream fails
/// with the reason (message 20524 or 20526).
LMW_API InputStream MakeFileInputStream(const std::wstring& path);

/// The same, while others may read, write, rename and delete the file.
LMW_API InputStream MakeSharedFileInputStream(const std::wstring& path);

/// A stream over the caller's memory, which must outlive it; `name` is for messages.
LMW_API InputStream MakeMemoryInputStream(const std::wstring& name, const void* data,
                                          std::size_t size);

}  // namespace sys::file
