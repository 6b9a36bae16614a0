#include "common/sys/text_encoding.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>

namespace sys {

namespace {

// The system counts in int, so longer texts are converted piece by piece.
constexpr std::size_t kLongestPiece = std::size_t{1} << 24U;

// A piece ends before a character, never within one.
std::size_t PieceLength(std::wstring_view text) {
    if (text.size() <= kLongestPiece) {
        return text.size();
    }
    return IS_HIGH_SURROGATE(text[kLongestPiece - 1]) ? kLongestPiece - 1 : kLongestPiece;
}

std::size_t PieceLength(std::string_view text) {
    if (text.size() <= kLongestPiece) {
        return text.size();
    }
    // Which byte starts a character depends on the code page; but below 0x30 (controls, blank,
    // punctuation) a byte is a character of its own in all of them.
    std::size_t length = kLongestPiece;
    while (length > 0 && static_cast<unsigned char>(text[length - 1]) >= 0x30) {
        --length;
    }
    return length != 0 ? length : kLongestPiece;
}

DWORD NarrowingFlags() {
    // Without the flag the system looks for a resemblance, and the infinity sign becomes an "8".
    // The two Unicode code pages know no such thing and refuse it.
    constexpr UINT kGb18030 = 54936;
    const UINT code_page = GetACP();
    return code_page == CP_UTF8 || code_page == kGb18030 ? 0 : WC_NO_BEST_FIT_CHARS;
}

}  // namespace

std::string Narrow(std::wstring_view text) {
    const DWORD flags = NarrowingFlags();
    std::string out;
    while (!text.empty()) {
        const std::wstring_view piece = text.substr(0, PieceLength(text));
        const int length = static_cast<int>(piece.size());
        const int needed =
            WideCharToMultiByte(CP_ACP, flags, piece.data(), length, nullptr, 0, nullptr, nullptr);
        const std::size_t old_size = out.size();
        out.resize(old_size + static_cast<std::size_t>(needed));
        WideCharToMultiByte(CP_ACP, flags, piece.data(), length, out.data() + old_size, needed,
                            nullptr, nullptr);
        text.remove_prefix(piece.size());
    }
    return out;
}

std::wstring Widen(std::string_view text) {
    std::wstring out;
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, PieceLength(text));
        const int length = static_cast<int>(piece.size());
        const int needed = MultiByteToWideChar(CP_ACP, 0, piece.data(), length, nullptr, 0);
        const std::size_t old_size = out.size();
        out.resize(old_size + static_cast<std::size_t>(needed));
        MultiByteToWideChar(CP_ACP, 0, piece.data(), length, out.data() + old_size, needed);
        text.remove_prefix(piece.size());
    }
    return out;
}

}  // namespace sys
