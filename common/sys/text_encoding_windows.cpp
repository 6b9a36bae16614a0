#include "common/sys/text_encoding.h"

#include <windows.h>

#include <algorithm>
#include <climits>

namespace sys {

namespace {

// The system counts in int; longer texts are converted piece by piece. A piece never ends within a
// surrogate pair or, since it ends at a line end or blank where it can, within a multi-byte
// character.
constexpr std::size_t kLongestPiece = std::size_t{1} << 24U;

template <class Text, class Convert>
void InPieces(Text text, Convert convert) {
    while (!text.empty()) {
        std::size_t length = std::min(text.size(), kLongestPiece);
        if (length < text.size()) {
            const auto blank =
                text.substr(0, length).find_last_of(static_cast<typename Text::value_type>(' '));
            length = blank != Text::npos ? blank + 1 : length;
        }
        convert(text.data(), static_cast<int>(length));
        text.remove_prefix(length);
    }
}

}  // namespace

std::string Narrow(std::wstring_view text) {
    std::string out;
    InPieces(text, [&out](const wchar_t* piece, int length) {
        const int needed =
            WideCharToMultiByte(CP_ACP, 0, piece, length, nullptr, 0, nullptr, nullptr);
        const std::size_t old_size = out.size();
        out.resize(old_size + static_cast<std::size_t>(needed));
        WideCharToMultiByte(CP_ACP, 0, piece, length, out.data() + old_size, needed, nullptr,
                            nullptr);
    });
    return out;
}

std::wstring Widen(std::string_view text) {
    std::wstring out;
    InPieces(text, [&out](const char* piece, int length) {
        const int needed = MultiByteToWideChar(CP_ACP, 0, piece, length, nullptr, 0);
        const std::size_t old_size = out.size();
        out.resize(old_size + static_cast<std::size_t>(needed));
        MultiByteToWideChar(CP_ACP, 0, piece, length, out.data() + old_size, needed);
    });
    return out;
}

}  // namespace sys
