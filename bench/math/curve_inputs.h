#pragma once

// Curves and sites that the rows of this program share, so that our rows and those of other
// libraries measure the same work.

#include "common/math/fpoint.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// The spacing of the data points.
enum class Shape {
    kSuction,    ///< a retention curve: x from 0.1 to 1e6, evenly in its logarithm, with scatter
    kEven,       ///< a time series: x evenly spaced, with scatter
    kClustered,  ///< the worst we know: groups of points, each a millionth of the span wide
};
inline constexpr std::array kShapes = {Shape::kSuction, Shape::kEven, Shape::kClustered};

/// The order of the sites.
enum class Order { kRandom, kSequential };
inline constexpr std::array kOrders = {Order::kRandom, Order::kSequential};

inline constexpr std::array<std::size_t, 4> kSizes = {10, 50, 1000, 100000};

/// One curve and where it is evaluated; the same on every run.
struct Input {
    std::vector<double> x;
    std::vector<double> y;
    std::vector<FPOINT> points;
    /// Inside the data, spread like the data points; their number is a power of two.
    std::vector<double> sites;
};

/// Made once per argument set, kept.
const Input& InputOf(Shape shape, Order order, std::size_t size);

/// "suction/random/50".
std::string NameOf(Shape shape, Order order, std::size_t size);

/// Registers a row for every shape, order and size: `name`/<shape>/<order>/<size>.
/// `make(input)` prepares and returns a function of (site) or (site, site); two are passed for
/// integrals.
template <class Make>
void RegisterPerSite(const std::string& name, Make make) {
    for (const Shape shape : kShapes) {
        for (const Order order : kOrders) {
            for (const std::size_t size : kSizes) {
                benchmark::RegisterBenchmark((name + "/" + NameOf(shape, order, size)).c_str(),
                                             [=](benchmark::State& state) {
                                                 const Input& input = InputOf(shape, order, size);
                                                 auto function = make(input);
                                                 // In registers, so that a row holds little but the
                                                 // call.
                                                 const double* const sites = input.sites.data();
                                                 const std::size_t mask = input.sites.size() - 2;
                                                 std::size_t i = 0;
                                                 for (auto _ : state) {
                                                     const double result =
                                                         function(sites[i], sites[i + 1]);
                                                     benchmark::DoNotOptimize(result);
                                                     i = (i + 2) & mask;
                                                 }
                                             });
            }
        }
    }
}

/// Registers a row for every shape and size: the preparation of one curve.
template <class Prepare>
void RegisterPreparation(const std::string& name, Prepare prepare) {
    for (const Shape shape : {Shape::kSuction, Shape::kEven}) {
        for (const std::size_t size : kSizes) {
            benchmark::RegisterBenchmark((name + "/" + NameOf(shape, Order::kRandom, size)).c_str(),
                                         [=](benchmark::State& state) {
                                             const Input& input =
                                                 InputOf(shape, Order::kRandom, size);
                                             for (auto _ : state) {
                                                 prepare(input);
                                             }
                                         });
        }
    }
}

}  // namespace bench
