#include "common/event_sink.h"

#include "common/detail/last_error_keeper.h"
#include "common/log_level.h"
#include "common/standard_error_sink.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <utility>
#include <vector>

namespace lmw::diag {

namespace {

using SinkList = std::vector<std::shared_ptr<IEventSink>>;

// A message takes the list as it is and passes on without a lock, so that a sink may log, add and
// remove, and a slow one holds up nobody else. Changes, which are rare, make a new list.
struct Registry {
    std::mutex mutex;
    std::shared_ptr<IEventSink> standard = std::make_shared<StandardErrorSink>(kWarning);
    std::shared_ptr<const SinkList> sinks = std::make_shared<SinkList>(1, standard);

    std::shared_ptr<const SinkList> Snapshot() {
        const std::lock_guard lock(mutex);
        return sinks;
    }
};

Registry& TheRegistry() {
    // Never destroyed: messages come until the process ends.
    static auto* const registry = new Registry;
    return *registry;
}

bool Contains(const SinkList& sinks, const IEventSink& sink) {
    return std::any_of(sinks.begin(), sinks.end(),
                       [&sink](const auto& added) { return added.get() == &sink; });
}

thread_local bool passing_on = false;

// One sink's failure is neither the caller's nor another sink's.
void LogTo(IEventSink& sink, int level, int category, const std::wstring& message, const char* file,
           int line, const char* function) noexcept {
    try {
        sink.Log(level, category, message, file, line, function);
    } catch (...) {  // NOLINT(bugprone-empty-catch): there is nowhere left to report it
    }
}

}  // namespace

IEventSink::~IEventSink() = default;

void EventSinks::Add(std::shared_ptr<IEventSink> sink) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    if (sink != nullptr && !Contains(*registry.sinks, *sink)) {
        auto sinks = std::make_shared<SinkList>(*registry.sinks);
        sinks->push_back(std::move(sink));
        registry.sinks = std::move(sinks);
    }
}

bool EventSinks::Remove(const IEventSink& sink) {
    Registry& registry = TheRegistry();
    std::shared_ptr<const SinkList> before;  // destroyed without the lock: sinks may go with it
    const std::lock_guard lock(registry.mutex);
    if (!Contains(*registry.sinks, sink)) {
        return false;
    }
    auto sinks = std::make_shared<SinkList>();
    std::copy_if(registry.sinks->begin(), registry.sinks->end(), std::back_inserter(*sinks),
                 [&sink](const auto& added) { return added.get() != &sink; });
    before = std::exchange(registry.sinks, std::move(sinks));
    return true;
}

std::shared_ptr<IEventSink> EventSinks::Default() {
    return TheRegistry().standard;
}

void EventSinks::Log(int level, int category, const std::wstring& message, const char* file,
                     int line, const char* function) noexcept {
    if (passing_on) {
        return;
    }
    const lmw::detail::LastErrorKeeper keeper;
    passing_on = true;
    const std::shared_ptr<const SinkList> sinks = TheRegistry().Snapshot();
    for (const std::shared_ptr<IEventSink>& sink : *sinks) {
        LogTo(*sink, level, category, message, file != nullptr ? file : "", line,
              function != nullptr ? function : "");
    }
    passing_on = false;
}

}  // namespace lmw::diag
