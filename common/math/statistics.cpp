#include "common/math/statistics.h"

#include <cassert>
#include <cmath>

namespace math {

namespace {

bool AscendStrictly(std::span<const double> edges) noexcept {
    for (std::size_t i = 0; i < edges.size(); ++i) {
        if (std::isnan(edges[i]) || (i > 0 && edges[i - 1] >= edges[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace

StatisticsAccumulator::StatisticsAccumulator(std::span<const double> edges) {
    const bool ascend = AscendStrictly(edges);
    assert(ascend && "bin edges must ascend strictly");
    if (ascend && !edges.empty()) {
        bin_edges_.assign(edges.begin(), edges.end());
        bin_counts_.assign(edges.size() + 1, 0U);
    }
}

void StatisticsAccumulator::Accumulate(std::span<const double> values) noexcept {
    const auto room = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) -
                      static_cast<std::size_t>(count_);
    if (values.size() > room) {
        for (const double x : values) {
            Accumulate(x);
        }
        return;
    }
    // The state is in registers during the loop: in memory, where a value's mean waits for that of
    // the one before, it costs half as much again.
    StatisticsAccumulator state;
    state.count_ = count_;
    state.running_mean_ = running_mean_;
    state.running_m2_ = running_m2_;
    state.maximum_ = maximum_;
    state.minimum_ = minimum_;
    for (const double x : values) {
        state.Accumulate(x);
    }
    count_ = state.count_;
    running_mean_ = state.running_mean_;
    running_m2_ = state.running_m2_;
    maximum_ = state.maximum_;
    minimum_ = state.minimum_;
    if (count_ > 0) {
        mean_ = running_mean_;
        m2_ = running_m2_;
    }
    if (!bin_edges_.empty()) {
        for (const double x : values) {
            if (Counts_(x)) {
                AddToBin_(x);
            }
        }
    }
}

bool StatisticsAccumulator::Merge(const StatisticsAccumulator& other) noexcept {
    if (other.count_ > std::numeric_limits<std::int32_t>::max() - count_ ||
        other.bin_edges_ != bin_edges_) {
        return false;
    }
    if (other.count_ == 0) {
        return true;
    }
    const double own_count = count_;
    const double other_count = other.count_;
    const double total = own_count + other_count;
    const double d = other.running_mean_ - running_mean_;
    running_mean_ = count_ == 0 ? other.running_mean_ : running_mean_ + d * (other_count / total);
    running_m2_ += other.running_m2_ + d * d * (own_count * other_count / total);
    count_ += other.count_;
    mean_ = running_mean_;
    m2_ = running_m2_;
    maximum_ = std::max(maximum_, other.maximum_);
    minimum_ = std::min(minimum_, other.minimum_);
    for (std::size_t i = 0; i < bin_counts_.size(); ++i) {
        bin_counts_[i] += other.bin_counts_[i];
    }
    return true;
}

void StatisticsAccumulator::Reset() noexcept {
    count_ = 0;
    running_mean_ = 0.0;
    mean_ = lmw::kUndefined;
    running_m2_ = 0.0;
    m2_ = lmw::kUndefined;
    maximum_ = -lmw::kUndefined;
    minimum_ = lmw::kUndefined;
    std::fill(bin_counts_.begin(), bin_counts_.end(), 0U);
}

double StatisticsAccumulator::Variance() const noexcept {
    if (count_ < 1) {
        return lmw::kUndefined;
    }
    return count_ > 1 ? m2_ / (count_ - 1) : 0.0;
}

double StatisticsAccumulator::StandardDeviation() const noexcept {
    const double variance = Variance();
    return lmw::IsDefined(variance) ? std::sqrt(variance) : lmw::kUndefined;
}

}  // namespace math
