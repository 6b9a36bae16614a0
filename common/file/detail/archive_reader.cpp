#include "common/file/detail/archive_reader.h"

#include "common/errors.h"
#include "common/sys/text_encoding.h"

namespace lmw::file::detail {

namespace {

constexpr const char* kInconsistent = "Zip archive inconsistent";

struct EntryCloser {
    void operator()(zip_file_t* entry) const noexcept { zip_fclose(entry); }
};

zip_stat_t StatOf(zip_t* archive, std::uint64_t index) {
    zip_stat_t stat;
    zip_stat_init(&stat);
    zip_stat_index(archive, index, 0, &stat);
    return stat;
}

std::string TextOf(int code) {
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    std::string text = zip_error_strerror(&error);
    zip_error_fini(&error);
    return text;
}

}  // namespace

std::wstring CauseOf(zip_error_t* error, const SourceFailure& failure) {
    return failure != nullptr && !failure->empty() ? *failure
                                                   : sys::Widen(zip_error_strerror(error));
}

gtl::status CopyStream(const sys::file::IInputStream& stream, IByteSink& sink) {
    for (std::uint64_t offset = 0;;) {
        const std::span<std::byte> room = sink.Room();
        std::size_t read = 0;
        if (gtl::status result = stream.ReadAt(offset, room, read); result.Failed()) {
            return result;
        }
        if (read == 0) {
            return {};
        }
        if (gtl::status result = sink.Filled(read); result.Failed()) {
            return result;
        }
        offset += read;
    }
}

gtl::status ArchiveReader::Open(const sys::file::InputStream& stream) {
    Close();
    if (!stream) {
        return LmwError::File::open({}, {});
    }
    failure_ = std::make_shared<std::wstring>();
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = MakeReadingSource(stream, failure_, &error);
    if (source != nullptr) {
        archive_.reset(zip_open_from_source(source, ZIP_RDONLY, &error));
        if (archive_ == nullptr) {
            zip_source_free(source);
        }
    }
    gtl::status result;
    if (archive_ == nullptr) {
        result = LmwError::File::open(stream->Name(), CauseOf(&error, failure_));
    }
    zip_error_fini(&error);
    return result;
}

void ArchiveReader::Close() noexcept {
    archive_.reset();
    failure_.reset();
}

std::uint64_t ArchiveReader::Count() const {
    return IsOpen() ? static_cast<std::uint64_t>(zip_get_num_entries(archive_.get(), 0)) : 0;
}

std::string ArchiveReader::Name(std::uint64_t index) const {
    const char* const name = zip_get_name(archive_.get(), index, ZIP_FL_ENC_RAW);
    return name != nullptr ? name : "";
}

std::string ArchiveReader::Comment() const {
    int size = 0;
    const char* const comment = zip_get_archive_comment(archive_.get(), &size, ZIP_FL_ENC_RAW);
    return comment != nullptr && size > 0 ? std::string(comment, static_cast<std::size_t>(size))
                                          : std::string();
}

std::uint8_t ArchiveReader::HostSystem() const {
    zip_uint8_t host = 0;
    zip_uint32_t attributes = 0;
    return Count() > 0 &&
                   zip_file_get_external_attributes(archive_.get(), 0, 0, &host, &attributes) == 0
               ? host
               : 0;
}

std::uint64_t ArchiveReader::ClaimedSize(std::uint64_t index) const {
    return StatOf(archive_.get(), index).size;
}

std::uint64_t ArchiveReader::PackedSize(std::uint64_t index) const {
    return StatOf(archive_.get(), index).comp_size;
}

bool ArchiveReader::IsEncrypted(std::uint64_t index) const {
    return StatOf(archive_.get(), index).encryption_method != ZIP_EM_NONE;
}

gtl::status ArchiveReader::FailedToRead_(std::wstring& cause, const char* text) const {
    cause = failure_->empty() ? sys::Widen(text) : *failure_;
    failure_->clear();
    return LmwError::File::read({}, cause);
}

gtl::status ArchiveReader::ReadToEnd_(zip_file_t* entry, IByteSink& sink, std::uint64_t& size,
                                      std::wstring& cause) const {
    for (;;) {
        const std::span<std::byte> room = sink.Room();
        const zip_int64_t read = zip_fread(entry, room.data(), room.size());
        if (read < 0) {
            return FailedToRead_(cause, zip_file_strerror(entry));
        }
        if (read == 0) {
            return {};
        }
        size += static_cast<std::uint64_t>(read);
        if (gtl::status result = sink.Filled(static_cast<std::size_t>(read)); result.Failed()) {
            return result;
        }
    }
}

gtl::status ArchiveReader::Read(std::uint64_t index, const char* password, IByteSink& sink,
                                std::wstring& cause) const {
    cause.clear();
    failure_->clear();
    const zip_stat_t stat = StatOf(archive_.get(), index);
    // The library loses memory, our stream with it, when it meets an encryption it does not know.
    if (stat.encryption_method != ZIP_EM_NONE &&
        zip_encryption_method_supported(stat.encryption_method, 0) == 0) {
        return FailedToRead_(cause, TextOf(ZIP_ER_ENCRNOTSUPP).c_str());
    }
    std::unique_ptr<zip_file_t, EntryCloser> entry(
        zip_fopen_index_encrypted(archive_.get(), index, 0, password));
    if (entry == nullptr) {
        return FailedToRead_(cause, zip_strerror(archive_.get()));
    }
    std::uint64_t size = 0;
    if (gtl::status result = ReadToEnd_(entry.get(), sink, size, cause); result.Failed()) {
        return result;
    }
    if (const int code = zip_fclose(entry.release()); code != 0) {
        return FailedToRead_(cause, TextOf(code).c_str());
    }
    // The library neither compares the sizes nor, where nothing is packed, the sum.
    const bool sum_unchecked = stat.comp_size == 0 && stat.crc != 0;
    if (((stat.valid & ZIP_STAT_SIZE) != 0 && stat.size != size) || sum_unchecked) {
        return FailedToRead_(cause, kInconsistent);
    }
    return {};
}

}  // namespace lmw::file::detail
