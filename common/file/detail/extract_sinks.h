#pragma once

// Where the bytes of entries go: into memory, into a file, or nowhere; and the limits they count
// against.

#include "common/file/detail/archive_reader.h"
#include "common/file/zip_options.h"
#include "common/status.h"
#include "common/sys/contained_file.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace lmw::file::detail {

/// Counts the bytes of one call against its limits and tells its progress.
class ExtractCount {
 public:
    /// `expected` bytes are all of the call, as far as known beforehand.
    ExtractCount(const sys::file::zip::ExtractLimits& limits,
                 const sys::file::zip::Progress& progress, std::uint64_t expected)
        : limits_(limits), progress_(&progress), expected_(expected) {}

    void BeginEntry(std::wstring name) {
        name_ = std::move(name);
        entry_size_ = 0;
    }
    /// Fails when a limit is exceeded or the progress function cancels.
    gtl::status Add(std::size_t size);

 private:
    sys::file::zip::ExtractLimits limits_;
    const sys::file::zip::Progress* progress_;
    std::uint64_t expected_;
    std::uint64_t entry_size_ = 0;
    std::uint64_t total_size_ = 0;
    std::wstring name_;
};

/// Keeps nothing.
class NullSink final : public IByteSink {
 public:
    explicit NullSink(ExtractCount& count);
    std::span<std::byte> Room() override { return {buffer_.get(), kSize}; }
    gtl::status Filled(std::size_t size) override { return count_->Add(size); }

 private:
    static constexpr std::size_t kSize = 256U << 10;
    ExtractCount* count_;
    std::unique_ptr<std::byte[]> buffer_;
};

/// Collects an entry in memory. `claimed` only says where growing ends: the memory taken is at most
/// a megabyte, or sixteen times what has really come.
class MemorySink final : public IByteSink {
 public:
    MemorySink(std::vector<std::byte>& bytes, std::uint64_t claimed, ExtractCount& count);
    std::span<std::byte> Room() override;
    gtl::status Filled(std::size_t size) override;
    /// Cuts the vector to what has come.
    void Finish() { bytes_->resize(filled_); }

 private:
    std::vector<std::byte>* bytes_;
    std::uint64_t claimed_;
    std::size_t filled_ = 0;
    ExtractCount* count_;
};

/// Appends to a file below the target folder.
class FileSink final : public IByteSink {
 public:
    explicit FileSink(ExtractCount& count);
    void Begin(sys::ContainedFile& file, std::wstring entry_name);
    std::span<std::byte> Room() override { return {buffer_.get(), kSize}; }
    gtl::status Filled(std::size_t size) override;

 private:
    static constexpr std::size_t kSize = 256U << 10;
    ExtractCount* count_;
    std::unique_ptr<std::byte[]> buffer_;
    sys::ContainedFile* file_ = nullptr;
    std::wstring entry_name_;
};

}  // namespace lmw::file::detail
