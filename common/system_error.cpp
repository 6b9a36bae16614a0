#include "common/system_error.h"

#include "common/detail/shared_text_buffer.h"
#include "common/message_text.h"
#include "common/sys/last_error.h"
#include "common/sys/text_encoding.h"

#include <string_view>

namespace lmw::diag::impl {

std::wstring SysCodeAsString_(unsigned code) {
    if (code == 0) {
        return MessageText(27550);
    }
    std::wstring text = sys::SystemErrorText(code);
    return text.empty() ? MessageText(27505, {std::to_wstring(code)}) : text;
}

std::wstring CrtCodeAsString_(int code) {
    if (code == 0) {
        return MessageText(27550);
    }
    std::wstring text = sys::RuntimeErrorText(code);
    return text.empty() ? MessageText(27505, {std::to_wstring(code)}) : text;
}

}  // namespace lmw::diag::impl

const char* LMWErrMsg(unsigned code) {
    // Never destroyed: error texts are also asked for while the process ends.
    static auto* const buffer = new lmw::detail::SharedTextBuffer;
    const std::string text = sys::Narrow(lmw::diag::impl::SysCodeAsString_(code));
    return buffer->Store(std::string_view(text).substr(0, text.find_first_of("\r\n")));
}
