#include "common/convert_error.h"

#include "common/message_text.h"

namespace gtl {

status Convert_error_status::InvalidCharStatus(const std::wstring& text, const std::wstring& type) {
    return status(20218, text, type);
}

status Convert_error_status::NotSupportedStatus(const std::wstring& text,
                                                const std::wstring& type) {
    return status(20219, text, type);
}

status Convert_error_status::OutOfRangeStatus(const std::wstring& text, const std::wstring& type) {
    return status(20220, text, type);
}

status Convert_error_status::OverflowStatus(const std::wstring& text, const std::wstring& type) {
    return status(20221, text, type);
}

std::wstring Convert_error_status::FloatingPointString() {
    return lmw::MessageText(20898);
}

std::wstring Convert_error_status::WholeNumberString() {
    return lmw::MessageText(21652);
}

}  // namespace gtl
