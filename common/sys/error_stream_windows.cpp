#include "common/sys/error_stream.h"

#include <windows.h>

#include <string>

namespace sys {

namespace {

bool IsConsole(HANDLE stream, DWORD& mode) {
    return stream != nullptr && stream != INVALID_HANDLE_VALUE &&
           GetConsoleMode(stream, &mode) != FALSE;
}

}  // namespace

bool IsErrorStreamTerminal() {
    // A console understands colour sequences after it has been asked to.
    HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return IsConsole(stream, mode) &&
           SetConsoleMode(stream, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != FALSE;
}

void WriteErrorStream(std::string_view text) {
    HANDLE stream = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    DWORD written = 0;
    if (IsConsole(stream, mode)) {
        const int size = static_cast<int>(text.size());
        std::wstring wide(text.size(), L'\0');  // never more units than bytes
        const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
        WriteConsoleW(stream, wide.data(), static_cast<DWORD>(length), &written, nullptr);
        return;
    }
    while (!text.empty() &&
           WriteFile(stream, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
               FALSE &&
           written > 0) {
        text.remove_prefix(written);
    }
}

}  // namespace sys
