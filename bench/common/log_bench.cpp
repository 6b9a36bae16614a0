// A message that is filtered out must cost next to nothing, since calls of LMW_LOG stand in inner
// loops.

#include "common/event_sink.h"
#include "common/log.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

using namespace lmw::diag;

class NullSink : public IEventSink {
    void Log(int /*level*/, int /*category*/, const std::wstring& message, const char* /*file*/,
             int /*line*/, const char* /*function*/) override {
        benchmark::DoNotOptimize(message.data());
    }
};

// The loop alone.
void NoMessage(benchmark::State& state) {
    int element = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(++element);
    }
}
BENCHMARK(NoMessage);

void MessageBelowTheLevel(benchmark::State& state) {
    LogFilter::Set(kWarning, kDefaultCategories);
    int element = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(++element);
        LMW_LOG(kVerbose, 1, L"element %d of %s", element, L"mesh");
    }
}
BENCHMARK(MessageBelowTheLevel);

void MessageOfAFilteredCategory(benchmark::State& state) {
    LogFilter::Set(kWarning, kDefaultCategories);
    int element = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(++element);
        LMW_LOG(kError, 8, L"element %d of %s", element, L"mesh");
    }
}
BENCHMARK(MessageOfAFilteredCategory);

void MessageThatPasses(benchmark::State& state) {
    LogFilter::Set(kWarning, kDefaultCategories);
    EventSinks::Remove(*EventSinks::Default());
    const auto sink = std::make_shared<NullSink>();
    EventSinks::Add(sink);
    int element = 0;
    for (auto _ : state) {
        LMW_LOG(kError, 1, L"element %d of %s", ++element, L"mesh");
    }
    EventSinks::Remove(*sink);
    EventSinks::Add(EventSinks::Default());
}
BENCHMARK(MessageThatPasses);

}  // namespace
