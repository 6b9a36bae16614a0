// Promise: tokenizing a message template is one pass over its characters.

#include "common/str/fill_template.h"
#include "common/str/number_text.h"
#include "common/str/tokenize.h"

#include <benchmark/benchmark.h>

#include <array>
#include <string>

namespace {

constexpr const wchar_t* kTemplate =
    L"The file \"%s\" could not be copied to \"%s\": step %5d of %-8.3f (100%%). %s";

void Tokenize(benchmark::State& state) {
    std::array<std::wstring, 5> specs;
    std::array<str::fmt::arg_type, 5> types{};
    const std::wstring original = kTemplate;
    std::wstring text;
    for (auto _ : state) {
        text = original;
        unsigned literals = str::fmt::tokenize(text, 5, specs.data(), types.data());
        benchmark::DoNotOptimize(literals);
    }
}
BENCHMARK(Tokenize);

void FillTemplate(benchmark::State& state) {
    const std::array<std::wstring, 5> arguments = {L"a.csv", L"b.csv", L"12", L"3.14159",
                                                   L"Disk full"};
    for (auto _ : state) {
        std::wstring text = str::fmt::FillTemplate(kTemplate, arguments);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(FillTemplate);

void DoubleTextAndBack(benchmark::State& state) {
    double value = 0.1 + 0.2;
    for (auto _ : state) {
        double parsed = 0.0;
        bool failed = str::ParseDouble(str::DoubleText(value), parsed).Failed();
        benchmark::DoNotOptimize(failed);
        benchmark::DoNotOptimize(parsed);
    }
}
BENCHMARK(DoubleTextAndBack);

}  // namespace
