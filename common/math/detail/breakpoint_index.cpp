#include "common/math/detail/breakpoint_index.h"

#include <cmath>

namespace math::fn::interpolate::detail {

namespace {

/// Buckets per breakpoint: few enough to stay in the cache with the breakpoints, enough that hardly
/// any bucket holds two breakpoints of evenly, or randomly, spaced data.
constexpr std::size_t kBucketsPerBreakpoint = 4;
constexpr std::size_t kFewestBuckets = 32;

/// Up to this part of the breakpoints (one in so many) may be crowded before the other spacing is
/// tried.
constexpr std::size_t kToleratedCrowd = 8;

}  // namespace

void BreakpointIndex::Build(std::span<const double> breakpoints) {
    SpaceUniformly_(breakpoints);
    const std::size_t uniform_crowd = Fill_(breakpoints);
    if (uniform_crowd * kToleratedCrowd <= breakpoints.size()) {
        return;
    }
    SpaceByBits_(breakpoints);
    if (Fill_(breakpoints) >= uniform_crowd) {
        SpaceUniformly_(breakpoints);
        Fill_(breakpoints);
    }
}

void BreakpointIndex::SpaceUniformly_(std::span<const double> breakpoints) {
    const std::size_t buckets =
        std::max(kFewestBuckets, breakpoints.size() * kBucketsPerBreakpoint);
    spacing_ = Spacing::kUniform;
    origin_ = breakpoints.front();
    scale_ = static_cast<double>(buckets) / (breakpoints.back() - breakpoints.front());
    if (!std::isfinite(scale_)) {
        scale_ = 0.0;  // no span, or one too small for its inverse: everything in one bucket
    }
    // A site just below the last breakpoint may round up to it: one bucket more.
    last_bucket_ = static_cast<std::int64_t>(buckets);
}

void BreakpointIndex::SpaceByBits_(std::span<const double> breakpoints) {
    const std::size_t buckets =
        std::max(kFewestBuckets, breakpoints.size() * kBucketsPerBreakpoint);
    spacing_ = Spacing::kBits;
    // From the first inner breakpoint to the last: what lies outside them needs no resolution, and
    // an end at zero would be a thousand octaves away.
    const std::int64_t first = OrderedKey(breakpoints[1]);
    const std::int64_t last = OrderedKey(breakpoints[breakpoints.size() - 2]);
    const std::uint64_t span = static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(first);
    shift_ = std::max(1U, static_cast<unsigned>(std::bit_width(span / buckets)));
    first_key_ = first >> shift_;
    last_bucket_ = (last >> shift_) - first_key_;
}

/// Fills the table and returns the number of crowded breakpoints: those that share a bucket with
/// the one before them.
std::size_t BreakpointIndex::Fill_(std::span<const double> breakpoints) {
    before_.assign(static_cast<std::size_t>(last_bucket_) + 2, 0);
    std::size_t crowded = 0;
    std::size_t filled = 0;  // entries of before_ that are final: buckets 0 to filled
    const std::size_t inner_end = breakpoints.size() - 1;
    for (std::size_t i = 1; i < inner_end; ++i) {
        const double x = breakpoints[i];
        const std::size_t bucket =
            spacing_ == Spacing::kUniform ? UniformBucket_(x) : BitsBucket_(x);
        crowded += static_cast<std::size_t>(i > 1 && bucket == filled);
        while (filled < bucket) {
            before_[++filled] = static_cast<std::uint32_t>(i - 1);
        }
    }
    const auto inner = static_cast<std::uint32_t>(breakpoints.size() - 2);
    std::fill(before_.begin() + static_cast<std::ptrdiff_t>(filled) + 1, before_.end(), inner);
    return crowded;
}

}  // namespace math::fn::interpolate::detail
