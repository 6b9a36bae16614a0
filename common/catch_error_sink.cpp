#include "common/catch_error_sink.h"

#include "common/log_level.h"

#include <limits>
#include <memory>

namespace lmw::diag {

CatchErrorEventSink::~CatchErrorEventSink() = default;

CatchErrorEventSink& CatchErrorEventSink::Instance() {
    struct Registration {
        // The constructor is private, so std::make_shared cannot be used.
        std::shared_ptr<CatchErrorEventSink> sink{new CatchErrorEventSink};

        Registration() { EventSinks::Add(sink); }
        Registration(const Registration&) = delete;
        Registration& operator=(const Registration&) = delete;
        ~Registration() { EventSinks::Remove(*sink); }
    };
    static const Registration registration;
    return *registration.sink;
}

void CatchErrorEventSink::Reset() noexcept {
    last_level_.store(0, std::memory_order_relaxed);
    last_category_.store(0, std::memory_order_relaxed);
    count_.store(0, std::memory_order_relaxed);
}

std::int32_t CatchErrorEventSink::LastLevel() const noexcept {
    return last_level_.load(std::memory_order_relaxed);
}

std::int32_t CatchErrorEventSink::LastCategory() const noexcept {
    return last_category_.load(std::memory_order_relaxed);
}

std::int32_t CatchErrorEventSink::Count() const noexcept {
    return count_.load(std::memory_order_relaxed);
}

void CatchErrorEventSink::Log(int level, int category, const std::wstring& /*message*/,
                              const char* /*file*/, int /*line*/, const char* /*function*/) {
    if (level < kError) {
        return;
    }
    last_level_.store(level, std::memory_order_relaxed);
    last_category_.store(category, std::memory_order_relaxed);
    std::int32_t count = count_.load(std::memory_order_relaxed);
    while (count < std::numeric_limits<std::int32_t>::max() &&
           !count_.compare_exchange_weak(count, count + 1, std::memory_order_relaxed)) {
    }
}

}  // namespace lmw::diag
