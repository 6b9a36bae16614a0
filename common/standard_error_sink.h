#pragma once

// The sink that writes messages to standard error.

#include "common/event_sink.h"
#include "common/export.h"

#include <string>

namespace lmw::diag {

/// Writes each message of its level and above as one line, "warning [io]: text (file.cpp:12,
/// Load)", in UTF-8, in one piece and without buffering. On a terminal the level is coloured,
/// unless the environment variable "NO_COLOR" is defined. Line ends and other control characters of
/// a message are shown as escapes such as "\n", so that no message can look like two or command the
/// terminal.
class LMW_API StandardErrorSink : public IEventSink {
 public:
    explicit StandardErrorSink(int min_level) : min_level_(min_level) {}

    void Log(int level, int category, const std::wstring& message, const char* file, int line,
             const char* function) override;

 private:
    int min_level_;
};

}  // namespace lmw::diag
