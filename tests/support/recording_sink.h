#pragma once

// A sink for tests: keeps what it is given.

#include "common/event_sink.h"

#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace lmw::test {

/// One message as a sink is given it.
struct RecordedMessage {
    int level;
    int category;
    std::wstring text;
    std::string file;
    int line;
    std::string function;
};

/// Any thread may log to it.
class RecordingSink : public diag::IEventSink {
 public:
    void Log(int level, int category, const std::wstring& message, const char* file, int line,
             const char* function) override {
        const std::lock_guard lock(mutex_);
        messages_.push_back({level, category, message, file, line, function});
    }

    /// The messages since the last call.
    [[nodiscard]] std::vector<RecordedMessage> Take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(messages_, {});
    }

 private:
    std::mutex mutex_;
    std::vector<RecordedMessage> messages_;
};

/// Adds a recording sink for its life time and takes away the default sink, so that a test which
/// logs prints nothing.
class ScopedRecordingSink {
 public:
    ScopedRecordingSink() {
        diag::EventSinks::Remove(*diag::EventSinks::Default());
        diag::EventSinks::Add(sink_);
    }
    ScopedRecordingSink(const ScopedRecordingSink&) = delete;
    ScopedRecordingSink& operator=(const ScopedRecordingSink&) = delete;
    ~ScopedRecordingSink() {
        diag::EventSinks::Remove(*sink_);
        diag::EventSinks::Add(diag::EventSinks::Default());
    }

    RecordingSink* operator->() const { return sink_.get(); }

 private:
    std::shared_ptr<RecordingSink> sink_ = std::make_shared<RecordingSink>();
};

}  // namespace lmw::test
