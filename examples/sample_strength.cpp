// How likely is it that a slope fails when its strength is only known as a distribution?

#include <common/math/random.h>
#include <common/math/statistics.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

// Factor of safety of an endless dry slope of inclination `slope` with a slip surface at `depth`:
//
//     F = c / (gamma z sin b cos b) + tan phi / tan b
//
// after D. W. Taylor (1948), Fundamentals of Soil Mechanics, chapter 16.
double Safety(double cohesion, double friction_angle) {
    constexpr double kUnitWeight = 18.0;  // kN/m3
    constexpr double kDepth = 3.0;        // m
    constexpr double kSlope = 33.0 * kDegree;
    return cohesion / (kUnitWeight * kDepth * std::sin(kSlope) * std::cos(kSlope)) +
           std::tan(friction_angle * kDegree) / std::tan(kSlope);
}

}  // namespace

int main() {
    //! [sample]
    // One seed, one stream: the same numbers on every machine.
    math::Random random(42);
    std::vector<double> friction_angles(10000);  // degrees
    std::vector<double> cohesions(10000);        // kPa
    random.ComputeNormal(friction_angles, 31.0, 2.5);
    random.ComputeUniform(cohesions, 1.0, 5.0);

    const std::array<double, 4> edges = {0.9, 1.0, 1.1, 1.2};
    math::StatisticsAccumulator safety(edges);
    for (std::size_t trial = 0; trial < cohesions.size(); ++trial) {
        safety.Accumulate(Safety(cohesions[trial], friction_angles[trial]));
    }
    //! [sample]

    std::printf("trials              %d\n", static_cast<int>(safety.Count()));
    std::printf("mean                %.4f\n", safety.Mean());
    std::printf("standard deviation  %.4f\n", safety.StandardDeviation());
    std::printf("least, greatest     %.4f, %.4f\n", safety.Min(), safety.Max());
    for (std::size_t bin = 0; bin < safety.BinCounts().size(); ++bin) {
        std::printf("  %s %.1f  %5u\n", bin < edges.size() ? "below  " : "at least",
                    edges[bin < edges.size() ? bin : edges.size() - 1],
                    static_cast<unsigned>(safety.BinCounts()[bin]));
    }
    const double failures = safety.BinCounts()[0] + safety.BinCounts()[1];
    std::printf("below 1             %.2f %%\n", 100.0 * failures / safety.Count());
    return 0;
}
