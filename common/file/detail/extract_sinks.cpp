#include "common/file/detail/extract_sinks.h"

#include "common/file/detail/archive_writer.h"
#include "common/file/detail/zip_impl.h"
#include "common/system_error.h"

#include <algorithm>

namespace lmw::file::detail {

using sys::file::ErrorExtracting;

gtl::status ExtractCount::Add(std::size_t size) {
    entry_size_ += size;
    total_size_ += size;
    if (entry_size_ > limits_.entry_size) {
        return ErrorExtracting(name_, L"It is larger than the " +
                                          std::to_wstring(limits_.entry_size) +
                                          L" bytes allowed for one entry.");
    }
    if (total_size_ > limits_.total_size) {
        return ErrorExtracting(name_, L"The entries are larger than the " +
                                          std::to_wstring(limits_.total_size) +
                                          L" bytes allowed for all.");
    }
    if (*progress_ &&
        !(*progress_)(expected_ == 0 ? 1.0
                                     : std::min(1.0, static_cast<double>(total_size_) /
                                                         static_cast<double>(expected_)))) {
        return Cancelled();
    }
    return {};
}

// The buffers are written before they are read: no need to clear them.
NullSink::NullSink(ExtractCount& count) : count_(&count), buffer_(new std::byte[kSize]) {}

FileSink::FileSink(ExtractCount& count) : count_(&count), buffer_(new std::byte[kSize]) {}

MemorySink::MemorySink(std::vector<std::byte>& bytes, std::uint64_t claimed, ExtractCount& count)
    : bytes_(&bytes), claimed_(claimed), count_(&count) {
    constexpr std::uint64_t kFirst = 1U << 20;
    // Memory that the vector has already costs nothing. One byte more than claimed, so that the end
    // is seen without growing.
    const std::uint64_t free_of_cost = std::max<std::uint64_t>(kFirst, bytes.capacity());
    bytes.resize(static_cast<std::size_t>(std::min(claimed, free_of_cost - 1) + 1));
}

std::span<std::byte> MemorySink::Room() {
    if (filled_ == bytes_->size()) {
        const std::uint64_t most = std::uint64_t{filled_} * 16;
        const std::uint64_t next =
            claimed_ >= filled_ ? std::min(most, claimed_ + 1) : std::uint64_t{filled_} * 2;
        bytes_->resize(static_cast<std::size_t>(next));
    }
    return std::span(*bytes_).subspan(filled_);
}

gtl::status MemorySink::Filled(std::size_t size) {
    filled_ += size;
    return count_->Add(size);
}

void FileSink::Begin(sys::ContainedFile& file, std::wstring entry_name) {
    file_ = &file;
    entry_name_ = std::move(entry_name);
}

gtl::status FileSink::Filled(std::size_t size) {
    if (gtl::status result = count_->Add(size); result.Failed()) {
        return result;
    }
    const unsigned code = file_->Append(buffer_.get(), size);
    return code == 0 ? gtl::status()
                     : ErrorExtracting(entry_name_, lmw::diag::impl::SysCodeAsString_(code));
}

}  // namespace lmw::file::detail
