#pragma once

// Where messages go: sinks that the host adds to and removes from the process-wide event sink.
// A program that adds none has one, which writes warnings and above to standard error.

#include "common/export.h"

#include <memory>
#include <string>

namespace lmw::diag {

/// An output of messages. Derive from it and add it by EventSinks::Add.
class LMW_API IEventSink {
 public:
    IEventSink() = default;
    IEventSink(const IEventSink&) = delete;
    IEventSink& operator=(const IEventSink&) = delete;
    virtual ~IEventSink();

    /// Takes one message. The filter has been asked before, by the call site; a sink is free to
    /// leave messages out. `message` is finished text of any length, `file` and `function` are
    /// never null. Called from any thread, from several at once. What it throws is dropped, and so
    /// are messages that are logged on this thread before it returns: a sink whose own output fails
    /// must not log without end.
    virtual void Log(int level, int category, const std::wstring& message, const char* file,
                     int line, const char* function) = 0;
};

/// The process-wide event sink: passes each message to every sink added, in the order they were
/// added. Any thread; static initialisers and the end of the process included.
class LMW_API EventSinks {
 public:
    EventSinks() = delete;

    /// Adds a sink; null and one that is there already change nothing.
    static void Add(std::shared_ptr<IEventSink> sink);

    /// Removes a sink and returns whether it was there. Another thread that is passing on a message
    /// at this moment may still call it once; the sink lives until then.
    static bool Remove(const IEventSink& sink);

    /// The sink that is there from the start, for hosts that remove it: a StandardErrorSink of
    /// level kWarning. Never null, also after it has been removed.
    [[nodiscard]] static std::shared_ptr<IEventSink> Default();

    /// Passes on one message, unfiltered. Never throws, and leaves the thread's last
    /// operating-system error as it was. Null for `file` or `function` counts as empty.
    static void Log(int level, int category, const std::wstring& message, const char* file,
                    int line, const char* function) noexcept;
};

}  // namespace lmw::diag
