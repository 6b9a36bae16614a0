#include "common/math/detail/breakpoint_index.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace math::fn::interpolate::detail {

namespace {

/// Buckets per breakpoint: few enough to stay in the cache with the breakpoints, enough that hardly
/// any bucket holds two breakpoints of evenly, or randomly, spaced data.
constexpr std::size_t kBucketsPerBreakpoint = 4;
constexpr std::size_t kFewestBuckets = 32;

/// Up to this part of the breakpoints (one in so many) may be crowded before another spacing is
/// tried.
constexpr std::size_t kToleratedCrowd = 16;

/// Near this number neighbouring doubles are 1 apart, so adding it leaves a whole number in the
/// last bits.
constexpr double kNoFraction = 0x1.8p52;

std::size_t BucketsFor(std::span<const double> breakpoints) {
    return std::max(kFewestBuckets, breakpoints.size() * kBucketsPerBreakpoint);
}

}  // namespace

void BreakpointIndex::Build(std::span<const double> breakpoints) {
    Spacing spacing = EqualWidths_(breakpoints);
    std::size_t crowd = CrowdOf_(breakpoints, spacing);
    for (const auto other : {FromLeft_, FromRight_}) {
        if (crowd * kToleratedCrowd <= breakpoints.size()) {
            break;
        }
        const Spacing candidate = other(breakpoints);
        const std::size_t candidate_crowd = CrowdOf_(breakpoints, candidate);
        if (candidate_crowd < crowd) {
            spacing = candidate;
            crowd = candidate_crowd;
        }
    }
    Fill_(breakpoints, spacing);
}

/// How many inner breakpoints share a bucket with the one before them.
std::size_t BreakpointIndex::CrowdOf_(std::span<const double> breakpoints, const Spacing& spacing) {
    std::size_t crowd = 0;
    std::size_t previous = spacing.Number(breakpoints[1]);
    for (std::size_t i = 2; i + 1 < breakpoints.size(); ++i) {
        const std::size_t number = spacing.Number(breakpoints[i]);
        crowd += static_cast<std::size_t>(number == previous);
        previous = number;
    }
    return crowd;
}

BreakpointIndex::Spacing BreakpointIndex::EqualWidths_(std::span<const double> breakpoints) {
    const double first = breakpoints.front();
    const double last = breakpoints.back();
    Spacing spacing;
    spacing.scale = static_cast<double>(BucketsFor(breakpoints)) / (last - first);
    spacing.offset = kNoFraction - first * spacing.scale;
    // Data far from zero for their span leave the number too few bits, data with hardly a span no
    // finite scale: everything then goes into one bucket.
    if (!(std::fabs(first * spacing.scale) < 0x1p51 && std::fabs(last * spacing.scale) < 0x1p51)) {
        spacing.scale = 0.0;
        spacing.offset = 0.0;
    }
    spacing.base = spacing.Key(first);
    return spacing;
}

namespace {

/// The shift that leaves about `buckets` numbers between two patterns.
unsigned ShiftFor(double low, double high, std::size_t buckets) {
    const auto span = static_cast<std::uint64_t>(std::bit_cast<std::int64_t>(high) -
                                                 std::bit_cast<std::int64_t>(low));
    return static_cast<unsigned>(std::bit_width(span / buckets));
}

}  // namespace

/// By the distance from the first breakpoint, with the first interval as the unit below which
/// nothing is resolved.
BreakpointIndex::Spacing BreakpointIndex::FromLeft_(std::span<const double> breakpoints) {
    const double first = breakpoints.front();
    const double last = breakpoints.back();
    const double unit =
        *std::upper_bound(breakpoints.begin(), breakpoints.end() - 1, first) - first;
    Spacing spacing;
    spacing.scale = 1.0;
    spacing.offset = unit - first;  // not less than -first, so that no distance is negative
    spacing.shift =
        ShiftFor(first + spacing.offset, last + spacing.offset, BucketsFor(breakpoints));
    spacing.base = spacing.Key(first);
    return spacing;
}

/// The mirror image.
BreakpointIndex::Spacing BreakpointIndex::FromRight_(std::span<const double> breakpoints) {
    const double first = breakpoints.front();
    const double last = breakpoints.back();
    const double unit =
        last - *(std::lower_bound(breakpoints.begin() + 1, breakpoints.end(), last) - 1);
    Spacing spacing;
    spacing.scale = -1.0;
    spacing.offset = last + unit;
    spacing.flip = -1;
    spacing.shift =
        ShiftFor(spacing.offset - last, spacing.offset - first, BucketsFor(breakpoints));
    spacing.base = spacing.Key(first);
    return spacing;
}

void BreakpointIndex::Fill_(std::span<const double> breakpoints, const Spacing& spacing) {
    spacing_ = spacing;
    buckets_.resize(spacing.Number(breakpoints.back()) + 1);
    const std::size_t inner_end = breakpoints.size() - 1;
    std::size_t filled = 0;  // buckets below this one are done
    for (std::size_t i = 1; i < inner_end;) {
        const std::size_t number = spacing.Number(breakpoints[i]);
        const auto before = static_cast<std::uint32_t>(i - 1);
        for (; filled < number; ++filled) {
            buckets_[filled].before = before;
        }
        std::uint32_t count = 1;
        while (i + count < inner_end && spacing.Number(breakpoints[i + count]) == number) {
            ++count;
        }
        buckets_[filled++] = {breakpoints[i], before, count};
        i += count;
    }
    for (; filled < buckets_.size(); ++filled) {
        buckets_[filled].before = static_cast<std::uint32_t>(inner_end - 1);
    }
}

/// Binary search among the breakpoints of one bucket, without a branch on what it finds.
std::size_t BreakpointIndex::Bucket::Search(const double* breakpoints, double site) const noexcept {
    std::size_t passed = before;  // inner breakpoints known not to be greater than the site
    std::size_t left = count;
    while (left > 0) {
        const std::size_t half = (left + 1) / 2;
        passed += half * static_cast<std::size_t>(breakpoints[passed + half] <= site);
        left -= half;
    }
    return passed;
}

}  // namespace math::fn::interpolate::detail
