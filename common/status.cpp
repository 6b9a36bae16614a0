#include "common/status.h"

#include "common/detail/shared_text_buffer.h"
#include "common/message_text.h"
#include "common/str/fill_template.h"
#include "common/sys/text_encoding.h"

#include <utility>

namespace gtl {

status::status(std::uint32_t message_id, std::wstring argument1, std::wstring argument2,
               std::wstring argument3, std::wstring argument4, std::wstring argument5) {
    std::wstring text = lmw::MessageText(message_id);  // may throw: before the record is owned
    detail_ = new detail;
    detail_->message_ = std::move(text);
    detail_->message_id_ = message_id;
    detail_->arguments_ = {std::move(argument1), std::move(argument2), std::move(argument3),
                           std::move(argument4), std::move(argument5)};
    detail_->reference_count_ = 1;
}

status status::FromText(std::wstring_view text) {
    std::wstring escaped = str::fmt::Escape(text);
    status result(new detail);
    result.detail_->message_ = std::move(escaped);
    result.detail_->reference_count_ = 1;
    return result;
}

status& status::operator=(const status& other) noexcept {
    status copy(other);
    std::swap(detail_, copy.detail_);
    return *this;
}

status& status::operator=(status&& other) noexcept {
    status taken(std::move(other));
    std::swap(detail_, taken.detail_);
    return *this;
}

std::uint32_t status::MessageId() const noexcept {
    return detail_ != nullptr ? detail_->message_id_ : 0;
}

std::wstring status::as_wstring() const {
    return detail_ != nullptr ? detail_->as_wstring() : std::wstring();
}

status& status::AttachSource(std::string_view file, int line) {
    if (detail_ != nullptr) {
        detail_->source_file_ = file;
        detail_->line_ = line;
    }
    return *this;
}

status& status::AttachPart(std::wstring_view part) {
    if (detail_ != nullptr) {
        detail_->message_ += L"\n\n" + str::fmt::Escape(part);
    }
    return *this;
}

status status::Duplicate() const {
    if (detail_ == nullptr) {
        return {};
    }
    status result(new detail);
    detail& copy = *result.detail_;
    copy.reference_count_ = 1;
    copy.message_ = detail_->message_;
    copy.arguments_ = detail_->arguments_;
    copy.source_file_ = detail_->source_file_;
    copy.line_ = detail_->line_;
    copy.message_id_ = detail_->message_id_;
    return result;
}

void status::AddReference_() const noexcept {
    ++detail_->reference_count_;
}

void status::Release_() noexcept {
    if (--detail_->reference_count_ == 0) {
        delete detail_;
    }
}

std::wstring status::detail::as_wstring() const {
    return str::fmt::FillTemplate(message_, arguments_);
}

status_exception::status_exception(status reason) noexcept : reason_(std::move(reason)) {}

status_exception::~status_exception() = default;

const char* status_exception::what() const noexcept {
    // Never destroyed: exceptions are also reported while the process ends.
    static auto* const buffer = new (std::nothrow) lmw::detail::SharedTextBuffer;
    try {
        return buffer != nullptr ? buffer->Store(sys::Narrow(reason_.as_wstring())) : "";
    } catch (const std::exception&) {
        return "";
    }
}

}  // namespace gtl
