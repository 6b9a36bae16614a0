#include "common/file_sink.h"

#include "common/detail/log_line.h"
#include "common/errors.h"
#include "common/sys/append_file.h"
#include "common/sys/last_error.h"
#include "common/sys/utf8.h"
#include "common/system_error.h"

#include <chrono>
#include <mutex>

namespace lmw::diag {

struct FileSink::Impl {
    explicit Impl(const std::wstring& file_path) : path(file_path), file(file_path) {}

    std::wstring path;
    sys::AppendFile file;
    mutable std::mutex mutex;  // of status
    gtl::status status;
};

FileSink::FileSink(const std::wstring& path) : impl_(std::make_unique<Impl>(path)) {
    if (!impl_->file.IsOpen()) {
        const unsigned reason = sys::LastError();
        impl_->status = LmwError::File::open(path, impl::SysCodeAsString_(reason));
    }
}

FileSink::~FileSink() = default;

gtl::status FileSink::Status() const {
    const std::lock_guard lock(impl_->mutex);
    return impl_->status;
}

void FileSink::Log(int level, int category, const std::wstring& message, const char* file, int line,
                   const char* function) {
    const std::wstring text =
        lmw::detail::TimeStamp(std::chrono::system_clock::now()) + L" " +
        lmw::detail::LogLine({level, category, message, file, line, function}) + L"\n";
    if (!impl_->file.IsOpen() ||
        impl_->file.Append(sys::Utf8FromWide(text, sys::LoosePairs::kReplace))) {
        return;
    }
    const unsigned reason = sys::LastError();
    const std::lock_guard lock(impl_->mutex);
    if (impl_->status.Succeeded()) {
        impl_->status = LmwError::File::write(impl_->path, impl::SysCodeAsString_(reason));
    }
}

}  // namespace lmw::diag
