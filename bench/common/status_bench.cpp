// Promise: success costs next to nothing; a failure costs its record and its message text.

#include "common/errors.h"
#include "common/status.h"

#include <benchmark/benchmark.h>

namespace {

void CopyAndTestSuccess(benchmark::State& state) {
    const gtl::status success;
    for (auto _ : state) {
        const gtl::status* source = &success;
        benchmark::DoNotOptimize(source);
        const gtl::status copy = *source;
        bool failed = copy.Failed();
        benchmark::DoNotOptimize(failed);
    }
}
BENCHMARK(CopyAndTestSuccess);

void CopyAndTestFailure(benchmark::State& state) {
    const gtl::status failure = LmwError::Undefined();
    for (auto _ : state) {
        const gtl::status* source = &failure;
        benchmark::DoNotOptimize(source);
        const gtl::status copy = *source;
        bool failed = copy.Failed();
        benchmark::DoNotOptimize(failed);
    }
}
BENCHMARK(CopyAndTestFailure);

void MakeFailure(benchmark::State& state) {
    const std::wstring path = L"results/node.csv";
    const std::wstring reason = L"No such file or directory";
    for (auto _ : state) {
        gtl::status failure = LmwError::File::open(path, reason);
        benchmark::DoNotOptimize(failure);
    }
}
BENCHMARK(MakeFailure);

void TextOfFailure(benchmark::State& state) {
    const gtl::status failure =
        LmwError::File::open(L"results/node.csv", L"No such file or directory");
    for (auto _ : state) {
        std::wstring text = failure.as_wstring();
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(TextOfFailure);

}  // namespace
