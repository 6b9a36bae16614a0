#pragma once

// One message as one line of text, for the sinks.

#include <chrono>
#include <string>

namespace lmw::detail {

/// What a sink is given; refers to the sink's arguments.
struct LogRecord {
    int level;
    int category;
    const std::wstring& message;
    const char* file;
    int line;
    const char* function;
};

/// "level [categories]: message (file:line, function)" without a line end. Categories without a
/// name, an empty file and an empty function leave out their part; of the file only the name after
/// the last separator is shown. Control characters become "\n", "\r", "\t" or "\x1b" and the like;
/// backslashes stay, so that paths stay readable.
std::wstring LogLine(const LogRecord& record);

/// A time in UTC to the millisecond below: "2026-11-21T09:30:00.125Z".
std::wstring TimeStamp(std::chrono::system_clock::time_point time);

}  // namespace lmw::detail
