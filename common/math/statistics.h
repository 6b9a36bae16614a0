#pragma once

// Running statistics: count, mean, variance, extremes and a histogram of values that are seen once
// and not kept. common/math/random.h draws such values. Surprising: NaN and the undefined value are
// passed over, so the count may be smaller than the number of calls.

#include "common/export.h"
#include "common/undefined.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace math {

/// A one-pass accumulator (B. P. Welford, "Note on a method for calculating corrected sums of
/// squares and products", Technometrics 4 (1962) 419-420). Results have the unit of the values, the
/// variance its square. Default-constructed it is empty and has no histogram.
///
/// 1. NaN and lmw::kUndefined are counted nowhere, nor is any value after the 2^31 - 1 that the
///    count can hold. An infinite value counts: it shows in the extremes and the histogram, and
///    makes mean and variance infinite or NaN.
/// 2. Every query of an empty accumulator gives the undefined value.
/// 3. With n edges the histogram has n + 1 bins; a value goes to the bin whose number is the number
///    of edges at or below it, so an edge belongs to the bin above it.
/// 4. The error of mean and variance grows with the number of roundings, not with the ratio of mean
///    to deviation as that of a sum of squares would.
///
/// A copy copies the histogram. One object must not be changed by several threads at once: give
/// each its own and merge them. Accumulate allocates nothing.
///
///     const std::vector<double> edges{0.9, 1.0, 1.1};
///     math::StatisticsAccumulator safety(edges);
///     for (const double factor : factors) safety.Accumulate(factor);
///     const auto failed = safety.BinCounts()[0] + safety.BinCounts()[1];  // below 1.0
class LMW_API StatisticsAccumulator {
 public:
    StatisticsAccumulator() = default;

    /// An empty accumulator with a histogram. The edges ascend strictly and none is NaN; other
    /// edges are a mistake of the caller, which an assertion reports in a debug build, and give an
    /// accumulator without histogram.
    explicit StatisticsAccumulator(std::span<const double> edges);

    /// Takes one value in.
    void Accumulate(double x) noexcept;

    /// Takes all of `values` in, in order: the same bits as one by one, in two thirds of the time.
    void Accumulate(std::span<const double> values) noexcept;

    /// Takes in what `other` has taken in, as if both had been one (T. F. Chan, G. H. Golub, R. J.
    /// LeVeque, "Updating formulae and a pairwise algorithm for computing sample variances",
    /// Technical Report STAN-CS-79-773, Stanford 1979): the same counts and extremes exactly, the
    /// same mean and variance up to rounding. `other` may be this accumulator. Returns false and
    /// changes nothing when the edges differ or the counts are too large for one accumulator.
    [[nodiscard]] bool Merge(const StatisticsAccumulator& other) noexcept;

    /// Empties the accumulator and its bins; the edges stay.
    void Reset() noexcept;

    /// The number of values taken in.
    [[nodiscard]] std::int32_t Count() const noexcept { return count_; }
    [[nodiscard]] double Mean() const noexcept { return count_ < 1 ? lmw::kUndefined : mean_; }
    /// The sample variance, M2 / (count - 1); 0 for one value.
    [[nodiscard]] double Variance() const noexcept;
    [[nodiscard]] double StandardDeviation() const noexcept;
    [[nodiscard]] double Min() const noexcept { return count_ < 1 ? lmw::kUndefined : minimum_; }
    [[nodiscard]] double Max() const noexcept { return count_ < 1 ? lmw::kUndefined : maximum_; }

    /// The edges and the counts of the bins, one more than there are edges; both empty without
    /// histogram. The counts may be used until the accumulator changes.
    [[nodiscard]] std::span<const double> BinEdges() const noexcept { return bin_edges_; }
    [[nodiscard]] std::span<const std::uint32_t> BinCounts() const noexcept { return bin_counts_; }

 private:
    static bool Counts_(double x) noexcept {
        // x != x is the test of NaN that raises no floating-point exception.
        return !(x != x) && lmw::IsDefined(x);
    }
    void AddToBin_(double x) noexcept;

    std::int32_t count_ = 0;
    double running_mean_ = 0.0;
    double mean_ = lmw::kUndefined;  // as reported
    double running_m2_ = 0.0;        // sum of squared deviations from the mean
    double m2_ = lmw::kUndefined;    // as reported
    double maximum_ = -lmw::kUndefined;
    double minimum_ = lmw::kUndefined;
    std::vector<double> bin_edges_;
    std::vector<std::uint32_t> bin_counts_;
};

// Implementation. Accumulate is inline: a trial loop calls it per value.

inline void StatisticsAccumulator::AddToBin_(double x) noexcept {
    const auto above = std::upper_bound(bin_edges_.begin(), bin_edges_.end(), x);
    ++bin_counts_[static_cast<std::size_t>(above - bin_edges_.begin())];
}

inline void StatisticsAccumulator::Accumulate(double x) noexcept {
    if (!Counts_(x) || count_ == std::numeric_limits<std::int32_t>::max()) {
        return;
    }
    ++count_;
    const double d = x - running_mean_;
    running_mean_ += d / count_;
    mean_ = running_mean_;
    running_m2_ += (x - running_mean_) * d;
    m2_ = running_m2_;
    maximum_ = x > maximum_ ? x : maximum_;
    minimum_ = x < minimum_ ? x : minimum_;
    if (!bin_edges_.empty()) {
        AddToBin_(x);
    }
}

}  // namespace math
