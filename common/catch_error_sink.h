#pragma once

// The sink that notices errors, for code that asks afterwards whether there were any.

#include "common/event_sink.h"
#include "common/export.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace lmw::diag {

/// Counts the messages of level kError and above. One object for the process, from the first call
/// of Instance until the process ends. Any thread; the three values are read one by one, so between
/// two reads another thread may log.
class LMW_API CatchErrorEventSink : public IEventSink {
 public:
    /// The one sink, added to the event sink by the first call: errors before that go unnoticed.
    /// Not to be called any more by destructors of static objects that were made before that call.
    static CatchErrorEventSink& Instance();

    CatchErrorEventSink(const CatchErrorEventSink&) = delete;
    CatchErrorEventSink& operator=(const CatchErrorEventSink&) = delete;
    ~CatchErrorEventSink() override;

    /// Sets the three values to 0.
    void Reset() noexcept;

    /// Level of the last error, 0 when there was none.
    [[nodiscard]] std::int32_t LastLevel() const noexcept;
    /// Category of the last error, 0 when there was none.
    [[nodiscard]] std::int32_t LastCategory() const noexcept;
    /// Number of errors; stays at the largest number once it is reached.
    [[nodiscard]] std::int32_t Count() const noexcept;

    void Log(int level, int category, const std::wstring& message, const char* file, int line,
             const char* function) override;

 private:
    CatchErrorEventSink() = default;

    std::atomic<std::int32_t> last_level_ = 0;
    std::atomic<std::int32_t> last_category_ = 0;
    std::atomic<std::int32_t> count_ = 0;
};

}  // namespace lmw::diag
