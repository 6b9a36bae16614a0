#pragma once

// The sink that appends messages to a file.

#include "common/event_sink.h"
#include "common/export.h"
#include "common/status.h"

#include <memory>
#include <string>

namespace lmw::diag {

/// Appends each message as one line in UTF-8:
/// "2026-11-21T09:30:00.125Z error [io]: text (file.cpp:12, Load)", the time in UTC.
///
/// 1. One line per message: line ends and other control characters of a message are shown as
///    escapes such as "\n".
/// 2. Each line is one write at the end of the file as it is then, unbuffered: nothing is lost in a
///    crash, and several threads, sinks and processes may append to one file.
/// 3. It takes every level; the process-wide filter decides which messages there are.
class LMW_API FileSink : public IEventSink {
 public:
    /// Opens the file for appending, or makes it.
    explicit FileSink(const std::wstring& path);
    FileSink(const FileSink&) = delete;
    FileSink& operator=(const FileSink&) = delete;
    ~FileSink() override;

    /// Success while everything has been written so far; else the first failure (message 20526 when
    /// the file could not be opened, 20541 when it could not be written). Lines after a failed one
    /// are still tried.
    [[nodiscard]] gtl::status Status() const;

    void Log(int level, int category, const std::wstring& message, const char* file, int line,
             const char* function) override;

 private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace lmw::diag
