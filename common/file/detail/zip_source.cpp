#include "common/file/detail/zip_source.h"

#include "common/system_error.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <utility>

namespace lmw::file::detail {

namespace {

constexpr std::size_t kReadAhead = 32U << 10;
constexpr std::size_t kWritePiece = 256U << 10;

// One source of the library; the library owns it and ends it with ZIP_SOURCE_FREE.
class Source {
 public:
    Source(sys::file::InputStream stream, Replacement* replacement, SourceFailure failure)
        : stream_(std::move(stream)), replacement_(replacement), failure_(std::move(failure)) {
        zip_error_init(&error_);
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() { zip_error_fini(&error_); }

    static zip_int64_t Call(void* user, void* data, zip_uint64_t size, zip_source_cmd_t command) {
        auto* const source = static_cast<Source*>(user);
        if (command == ZIP_SOURCE_FREE) {
            const std::unique_ptr<Source> ended(source);
            return 0;
        }
        try {
            return source->Do_(data, size, command);
        } catch (const std::exception& failure) {
            const std::string text = failure.what();
            return source->Fail_(ZIP_ER_INTERNAL, std::wstring(text.begin(), text.end()));
        } catch (...) {
            return source->Fail_(ZIP_ER_INTERNAL, {});
        }
    }

 private:
    zip_int64_t Do_(void* data, zip_uint64_t size, zip_source_cmd_t command) {
        switch (command) {
            case ZIP_SOURCE_SUPPORTS:
                return replacement_ != nullptr ? ZIP_SOURCE_SUPPORTS_WRITABLE
                                               : ZIP_SOURCE_SUPPORTS_SEEKABLE;
            case ZIP_SOURCE_OPEN:
                offset_ = 0;
                ahead_size_ = 0;
                return UpdateSize_() ? 0 : -1;
            case ZIP_SOURCE_READ:
                return Read_({static_cast<std::byte*>(data), static_cast<std::size_t>(size)});
            case ZIP_SOURCE_CLOSE:
                return 0;
            case ZIP_SOURCE_STAT:
                return Stat_(static_cast<zip_stat_t*>(data));
            case ZIP_SOURCE_ERROR:
                return zip_error_to_data(&error_, data, size);
            case ZIP_SOURCE_SEEK: {
                const zip_int64_t to =
                    zip_source_seek_compute_offset(offset_, size_, data, size, &error_);
                offset_ = to < 0 ? offset_ : static_cast<std::uint64_t>(to);
                return to < 0 ? -1 : 0;
            }
            case ZIP_SOURCE_TELL:
                return static_cast<zip_int64_t>(offset_);
            default:
                return replacement_ != nullptr ? DoWriting_(data, size, command)
                                               : Fail_(ZIP_ER_OPNOTSUPP, {});
        }
    }

    zip_int64_t DoWriting_(void* data, zip_uint64_t size, zip_source_cmd_t command) {
        switch (command) {
            case ZIP_SOURCE_BEGIN_WRITE:
                if (const unsigned code = replacement_->file.Create(replacement_->path);
                    code != 0) {
                    return FailByCode_(ZIP_ER_TMPOPEN, code);
                }
                writer_.emplace(replacement_->file.File());
                return 0;
            case ZIP_SOURCE_WRITE:
                if (const unsigned code = Writer_().Write(data, static_cast<std::size_t>(size));
                    code != 0) {
                    return FailByCode_(ZIP_ER_WRITE, code);
                }
                return static_cast<zip_int64_t>(size);
            case ZIP_SOURCE_SEEK_WRITE: {
                const zip_int64_t to = zip_source_seek_compute_offset(
                    Writer_().Offset(), Writer_().Size(), data, size, &error_);
                if (to < 0) {
                    return -1;
                }
                const unsigned code = Writer_().Seek(static_cast<std::uint64_t>(to));
                return code == 0 ? 0 : FailByCode_(ZIP_ER_WRITE, code);
            }
            case ZIP_SOURCE_TELL_WRITE:
                return static_cast<zip_int64_t>(Writer_().Offset());
            case ZIP_SOURCE_COMMIT_WRITE:
                return Commit_();
            case ZIP_SOURCE_ROLLBACK_WRITE:
                writer_.reset();
                replacement_->file.Discard();
                return 0;
            default:  // ZIP_SOURCE_REMOVE: an archive is never deleted, see ArchiveWriter
                return Fail_(ZIP_ER_OPNOTSUPP, {});
        }
    }

    zip_int64_t Commit_() {
        if (const unsigned code = Writer_().Flush(); code != 0) {
            return FailByCode_(ZIP_ER_WRITE, code);
        }
        writer_.reset();
        if (const std::wstring refusal = replacement_->before_commit(); !refusal.empty()) {
            return Fail_(ZIP_ER_RENAME, refusal);
        }
        if (const unsigned code = replacement_->file.Commit(); code != 0) {
            return FailByCode_(ZIP_ER_RENAME, code);
        }
        return 0;
    }

    [[nodiscard]] PieceWriter& Writer_() { return *writer_; }

    bool UpdateSize_() {
        std::uint64_t size = 0;
        if (const gtl::status result = stream_->Size(size); result.Failed()) {
            Fail_(ZIP_ER_READ, result.as_wstring());
            return false;
        }
        size_ = size;
        return true;
    }

    zip_int64_t Stat_(zip_stat_t* stat) {
        if (!UpdateSize_()) {
            return -1;
        }
        zip_stat_init(stat);
        stat->size = size_;
        stat->valid = ZIP_STAT_SIZE;
        return sizeof(*stat);
    }

    // Small reads are served from a piece read ahead, large ones go straight through.
    zip_int64_t Read_(std::span<std::byte> to) {
        if (offset_ >= ahead_begin_ && offset_ - ahead_begin_ < ahead_size_) {
            const auto at = static_cast<std::size_t>(offset_ - ahead_begin_);
            const std::size_t size = std::min(to.size(), ahead_size_ - at);
            std::memcpy(to.data(), ahead_.get() + at, size);
            offset_ += size;
            return static_cast<zip_int64_t>(size);
        }
        if (to.size() >= kReadAhead) {
            std::size_t read = 0;
            if (const gtl::status result = stream_->ReadAt(offset_, to, read); result.Failed()) {
                return Fail_(ZIP_ER_READ, result.as_wstring());
            }
            read = std::min(read, to.size());
            offset_ += read;
            return static_cast<zip_int64_t>(read);
        }
        if (ahead_ == nullptr) {
            // Written before it is read: no need to clear it.
            ahead_.reset(new std::byte[kReadAhead]);
        }
        ahead_size_ = 0;
        std::size_t read = 0;
        if (const gtl::status result = stream_->ReadAt(offset_, {ahead_.get(), kReadAhead}, read);
            result.Failed()) {
            return Fail_(ZIP_ER_READ, result.as_wstring());
        }
        ahead_begin_ = offset_;
        ahead_size_ = std::min(read, kReadAhead);
        return ahead_size_ == 0 ? 0 : Read_(to);
    }

    zip_int64_t Fail_(int code, const std::wstring& text) {
        zip_error_set(&error_, code, 0);
        if (failure_ != nullptr && failure_->empty()) {
            *failure_ = text;
        }
        return -1;
    }

    zip_int64_t FailByCode_(int code, unsigned system_code) {
        return Fail_(code, lmw::diag::impl::SysCodeAsString_(system_code));
    }

    sys::file::InputStream stream_;
    Replacement* replacement_;
    SourceFailure failure_;
    zip_error_t error_{};
    std::uint64_t size_ = 0;
    std::uint64_t offset_ = 0;
    std::unique_ptr<std::byte[]> ahead_;
    std::uint64_t ahead_begin_ = 0;
    std::size_t ahead_size_ = 0;
    std::optional<PieceWriter> writer_;  // while writing
};

zip_source_t* Make(std::unique_ptr<Source> source, zip_error_t* error) {
    zip_source_t* const made = zip_source_function_create(&Source::Call, source.get(), error);
    if (made != nullptr) {
        static_cast<void>(source.release());  // the library has it now
    }
    return made;
}

}  // namespace

zip_source_t* MakeReadingSource(const sys::file::InputStream& stream, SourceFailure failure,
                                zip_error_t* error) {
    return Make(std::make_unique<Source>(stream, nullptr, std::move(failure)), error);
}

zip_source_t* MakeReplacingSource(const sys::file::InputStream& stream, Replacement& replacement,
                                  SourceFailure failure, zip_error_t* error) {
    return Make(std::make_unique<Source>(stream, &replacement, std::move(failure)), error);
}

PieceWriter::PieceWriter(sys::DiskFile& file)
    : file_(&file), buffer_(std::make_unique<std::byte[]>(kWritePiece)) {}

std::uint64_t PieceWriter::Size() const noexcept {
    return std::max(flushed_, begin_ + filled_);
}

unsigned PieceWriter::Write(const void* from, std::size_t size) {
    const auto* bytes = static_cast<const std::byte*>(from);
    while (size > 0) {
        if (at_ == kWritePiece) {
            if (const unsigned code = Flush(); code != 0) {
                return code;
            }
        }
        const std::size_t piece = std::min(size, kWritePiece - at_);
        std::memcpy(buffer_.get() + at_, bytes, piece);
        at_ += piece;
        filled_ = std::max(filled_, at_);
        bytes += piece;
        size -= piece;
    }
    return 0;
}

unsigned PieceWriter::Seek(std::uint64_t offset) {
    if (offset >= begin_ && offset - begin_ <= filled_) {
        at_ = static_cast<std::size_t>(offset - begin_);
        return 0;
    }
    if (const unsigned code = Flush(); code != 0) {
        return code;
    }
    begin_ = offset;
    return 0;
}

unsigned PieceWriter::Flush() {
    const unsigned code = filled_ > 0 ? file_->WriteAt(begin_, buffer_.get(), filled_) : 0;
    if (code == 0) {
        flushed_ = std::max(flushed_, begin_ + filled_);
        begin_ += at_;
        filled_ = 0;
        at_ = 0;
    }
    return code;
}

}  // namespace lmw::file::detail
