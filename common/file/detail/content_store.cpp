#include "common/file/detail/content_store.h"

#include "common/errors.h"
#include "common/file/detail/memory_input_stream.h"
#include "common/system_error.h"

#include <algorithm>
#include <span>

namespace lmw::file::detail {

namespace {

constexpr std::size_t kCopyBuffer = 0x400000;
constexpr std::uint64_t kLargestInMemory = 1U << 20;
constexpr std::uint64_t kAllInMemory = 64U << 20;

gtl::status Failed(gtl::status (*factory)(const std::wstring&, const std::wstring&),
                   const std::wstring& path, unsigned code) {
    return factory(path, lmw::diag::impl::SysCodeAsString_(code));
}

}  // namespace

class ContentStore::Region final : public sys::file::IInputStream {
 public:
    Region(std::wstring name, std::shared_ptr<Scratch> scratch, std::uint64_t begin,
           std::uint64_t size)
        : name_(std::move(name)), scratch_(std::move(scratch)), begin_(begin), size_(size) {}

    [[nodiscard]] std::wstring Name() const override { return name_; }
    gtl::status Size(std::uint64_t& size) const override {
        size = size_;
        return {};
    }
    gtl::status ReadAt(std::uint64_t offset, std::span<std::byte> to,
                       std::size_t& read) const override {
        read = 0;
        if (offset >= size_) {
            return {};
        }
        const auto most =
            static_cast<std::size_t>(std::min<std::uint64_t>(to.size(), size_ - offset));
        const unsigned code = scratch_->file.ReadAt(begin_ + offset, to.data(), most, read);
        return code == 0 ? gtl::status() : Failed(&LmwError::File::read, name_, code);
    }

 private:
    std::wstring name_;
    std::shared_ptr<Scratch> scratch_;
    std::uint64_t begin_;
    std::uint64_t size_;
};

gtl::status ContentStore::Take(const std::wstring& source_path, TakenContent& taken) {
    sys::DiskFile source;
    if (const unsigned code =
            sys::DiskFile::OpenForReading(source_path, sys::Sharing::kEveryone, source);
        code != 0) {
        return sys::KindOfPath(source_path) == sys::PathKind::kNothing
                   ? LmwError::File::file_not_found(source_path)
                   : Failed(&LmwError::File::open, source_path, code);
    }
    sys::FileState state;
    if (const unsigned code = source.State(state); code != 0) {
        return Failed(&LmwError::File::read, source_path, code);
    }
    taken.modified = state.modified / 1'000'000'000;
    return state.size <= kLargestInMemory && in_memory_ + state.size <= kAllInMemory
               ? TakeToMemory_(source, source_path, state.size, taken)
               : TakeToScratch_(source, source_path, taken);
}

gtl::status ContentStore::TakeToMemory_(const sys::DiskFile& source, const std::wstring& path,
                                        std::uint64_t size, TakenContent& taken) {
    // One byte more than the size: reading it shows that the file has grown meanwhile.
    std::vector<std::byte> bytes(static_cast<std::size_t>(size) + 1);
    std::size_t read = 0;
    if (const unsigned code = source.ReadAt(0, bytes.data(), bytes.size(), read); code != 0) {
        return Failed(&LmwError::File::read, path, code);
    }
    if (read == bytes.size()) {
        return TakeToScratch_(source, path, taken);
    }
    bytes.resize(read);
    in_memory_ += read;
    taken.stream = sys::file::InputStream(new sys::file::MemoryInputStream(path, std::move(bytes)));
    return {};
}

gtl::status ContentStore::TakeToScratch_(const sys::DiskFile& source, const std::wstring& path,
                                         TakenContent& taken) {
    if (scratch_ == nullptr) {
        auto scratch = std::make_shared<Scratch>();
        if (const unsigned code = sys::DiskFile::CreateScratch(archive_path_, scratch->file);
            code != 0) {
            return Failed(&LmwError::File::write, archive_path_, code);
        }
        scratch_ = std::move(scratch);
    }
    buffer_.resize(kCopyBuffer);
    std::uint64_t size = 0;
    for (;;) {
        std::size_t read = 0;
        if (const unsigned code = source.ReadAt(size, buffer_.data(), buffer_.size(), read);
            code != 0) {
            return Failed(&LmwError::File::read, path, code);
        }
        if (const unsigned code =
                scratch_->file.WriteAt(scratch_->size + size, buffer_.data(), read);
            code != 0) {
            return Failed(&LmwError::File::write, archive_path_, code);
        }
        size += read;
        if (read < buffer_.size()) {
            break;
        }
    }
    taken.stream = sys::file::InputStream(new Region(path, scratch_, scratch_->size, size));
    scratch_->size += size;
    return {};
}

}  // namespace lmw::file::detail
