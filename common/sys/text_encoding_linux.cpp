#include "common/sys/text_encoding.h"
#include "common/sys/utf8.h"

namespace sys {

std::string Narrow(std::wstring_view text) {
    return Utf8FromWide(text, LoosePairs::kReplace);
}

std::wstring Widen(std::string_view text) {
    return WideFromUtf8(text);
}

}  // namespace sys
