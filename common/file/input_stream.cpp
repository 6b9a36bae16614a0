#include "common/file/input_stream.h"

#include "common/errors.h"
#include "common/file/detail/file_input_stream.h"
#include "common/file/detail/memory_input_stream.h"
#include "common/system_error.h"

#include <utility>

namespace sys::file {

IInputStream::~IInputStream() = default;

void IInputStream::ReleaseReference() noexcept {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete this;
    }
}

FileInputStream::FileInputStream(std::wstring path, Sharing sharing)
    : path_(std::move(path)), sharing_(sharing) {
    Reopen();
}

gtl::status FileInputStream::OpenStatus() const {
    if (file_.IsOpen()) {
        return {};
    }
    return KindOfPath(path_) == PathKind::kNothing
               ? LmwError::File::file_not_found(path_)
               : LmwError::File::open(path_, lmw::diag::impl::SysCodeAsString_(open_code_));
}

gtl::status FileInputStream::State(FileState& state) const {
    if (!file_.IsOpen()) {
        return OpenStatus();
    }
    const unsigned code = file_.State(state);
    return code == 0 ? gtl::status()
                     : LmwError::File::read(path_, lmw::diag::impl::SysCodeAsString_(code));
}

gtl::status FileInputStream::Size(std::uint64_t& size) const {
    FileState state;
    gtl::status result = State(state);
    size = state.size;
    return result;
}

gtl::status FileInputStream::ReadAt(std::uint64_t offset, std::span<std::byte> to,
                                    std::size_t& read) const {
    read = 0;
    if (!file_.IsOpen()) {
        return OpenStatus();
    }
    const unsigned code = file_.ReadAt(offset, to.data(), to.size(), read);
    return code == 0 ? gtl::status()
                     : LmwError::File::read(path_, lmw::diag::impl::SysCodeAsString_(code));
}

void FileInputStream::Close() noexcept {
    file_.Close();
}

void FileInputStream::Reopen() {
    open_code_ = DiskFile::OpenForReading(path_, sharing_, file_);
}

InputStream MakeFileInputStream(const std::wstring& path) {
    return InputStream(new FileInputStream(path, Sharing::kReaders));
}

InputStream MakeSharedFileInputStream(const std::wstring& path) {
    return InputStream(new FileInputStream(path, Sharing::kEveryone));
}

InputStream MakeMemoryInputStream(const std::wstring& name, const void* data, std::size_t size) {
    return InputStream(
        new MemoryInputStream(name, std::span(static_cast<const std::byte*>(data), size)));
}

}  // namespace sys::file
