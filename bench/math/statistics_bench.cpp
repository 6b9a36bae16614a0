// Accumulation within 1.1 of the plain recurrence, value by value and by ranges.

#include "common/math/statistics.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

namespace {

std::vector<double> Values() {
    std::vector<double> values(4096);
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i] = 31.0 + 2.5 * std::sin(static_cast<double>(i * i));
    }
    return values;
}

// The recurrence and nothing else.
struct Plain {
    int count = 0;
    double mean = 0.0;
    double m2 = 0.0;
    double maximum = -1e300;
    double minimum = 1e300;
    void Take(double x) {
        ++count;
        const double d = x - mean;
        mean += d / count;
        m2 += (x - mean) * d;
        maximum = x > maximum ? x : maximum;
        minimum = x < minimum ? x : minimum;
    }
};

// Values one by one with other work between, as in a loop of trials: the state is in memory.
template <class Take>
void OneByOne(benchmark::State& state, Take take) {
    const std::vector<double> values = Values();
    for (auto _ : state) {
        for (const double x : values) {
            take(x);
            benchmark::ClobberMemory();
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}

void PlainOneByOne(benchmark::State& state) {
    Plain plain;
    Plain* const escaped = &plain;
    benchmark::DoNotOptimize(escaped);
    OneByOne(state, [&](double x) { plain.Take(x); });
}
BENCHMARK(PlainOneByOne);

void PlainRange(benchmark::State& state) {
    const std::vector<double> values = Values();
    for (auto _ : state) {
        Plain plain;
        for (const double x : values) {
            plain.Take(x);
        }
        benchmark::DoNotOptimize(plain.mean + plain.m2 + plain.maximum + plain.minimum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK(PlainRange);

void AccumulateOneByOne(benchmark::State& state, const std::vector<double>& edges) {
    math::StatisticsAccumulator accumulator(edges);
    OneByOne(state, [&](double x) { accumulator.Accumulate(x); });
}
const std::vector<double> kEdges{29, 29.5, 30, 30.5, 31, 31.5, 32, 32.5};
BENCHMARK_CAPTURE(AccumulateOneByOne, without_histogram, std::vector<double>{});
BENCHMARK_CAPTURE(AccumulateOneByOne, histogram_of_9_bins, kEdges);

void AccumulateRange(benchmark::State& state, const std::vector<double>& edges) {
    const std::vector<double> values = Values();
    math::StatisticsAccumulator accumulator(edges);
    for (auto _ : state) {
        accumulator.Reset();
        accumulator.Accumulate(values);
        benchmark::DoNotOptimize(accumulator.Variance());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(values.size()));
}
BENCHMARK_CAPTURE(AccumulateRange, without_histogram, std::vector<double>{});
BENCHMARK_CAPTURE(AccumulateRange, histogram_of_9_bins, kEdges);

}  // namespace
