#pragma once

// Which interval of a sorted list of breakpoints a site lies in, in constant time for the spacings
// that occur in practice. The piecewise polynomial and the step function look up through this.
// Surprising: it holds no breakpoints. The owner passes the ones it was built from to every call,
// so that an index costs one array and moves with its owner.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace math::fn::interpolate::detail {

/// A table of buckets over the breakpoints. A bucket is found from the site by arithmetic and holds
/// the number of breakpoints in the buckets before it; what is left is one comparison, and a binary
/// search in the rare bucket that holds several breakpoints.
///
/// Buckets are of equal width in x, or, where that crowds the breakpoints (logarithmic spacing), of
/// equal width in the bit pattern of x, which is close to the logarithm of x. Either way the bucket
/// number never decreases with x, and nothing else is needed for the answer to be exact: rounding
/// in the bucket number cannot change it.
///
/// Threads: Find may run at once on one object.
class BreakpointIndex {
 public:
    /// `breakpoints`: at least two, finite, none less than the one before it.
    void Build(std::span<const double> breakpoints);

    /// The interval of `site`: the number of inner breakpoints (all but the first and the last) not
    /// greater than it. Requires first <= site < last.
    [[nodiscard]] std::size_t Find(const double* breakpoints, double site) const noexcept;

 private:
    enum class Spacing : std::uint8_t { kUniform, kBits };

    [[nodiscard]] std::size_t UniformBucket_(double site) const noexcept;
    [[nodiscard]] std::size_t BitsBucket_(double site) const noexcept;
    void SpaceUniformly_(std::span<const double> breakpoints);
    void SpaceByBits_(std::span<const double> breakpoints);
    std::size_t Fill_(std::span<const double> breakpoints);

    double origin_ = 0.0;
    double scale_ = 0.0;
    std::int64_t first_key_ = 0;
    std::int64_t last_bucket_ = 0;
    unsigned shift_ = 1;
    Spacing spacing_ = Spacing::kUniform;
    /// For each bucket the number of inner breakpoints in the buckets before it; one more at the
    /// end.
    std::vector<std::uint32_t> before_;
};

// Implementation of what evaluations inline.

/// A number that orders as the double does (any double but NaN; both zeros are one).
inline std::int64_t OrderedKey(double value) noexcept {
    const auto bits = std::bit_cast<std::int64_t>(value + 0.0);
    return bits ^ ((bits >> 63) & 0x7FFFFFFFFFFFFFFF);
}

inline std::size_t BreakpointIndex::UniformBucket_(double site) const noexcept {
    return static_cast<std::size_t>(static_cast<std::int64_t>((site - origin_) * scale_));
}

inline std::size_t BreakpointIndex::BitsBucket_(double site) const noexcept {
    // Shifted before it is subtracted: keys of opposite sign may be further apart than 2^63.
    const std::int64_t bucket = (OrderedKey(site) >> shift_) - first_key_;
    return static_cast<std::size_t>(std::clamp<std::int64_t>(bucket, 0, last_bucket_));
}

inline std::size_t BreakpointIndex::Find(const double* breakpoints, double site) const noexcept {
    const std::size_t bucket =
        spacing_ == Spacing::kUniform ? UniformBucket_(site) : BitsBucket_(site);
    std::size_t interval = before_[bucket];
    // Added, not branched on: whether the bucket's breakpoint is passed is a coin toss that a
    // processor cannot predict.
    interval += static_cast<std::size_t>(breakpoints[interval + 1] <= site);
    if (breakpoints[interval + 1] <= site) [[unlikely]] {
        const double* first = breakpoints + interval + 2;
        const double* last = breakpoints + before_[bucket + 1] + 1;
        interval += 1 + static_cast<std::size_t>(std::upper_bound(first, last, site) - first);
    }
    return interval;
}

}  // namespace math::fn::interpolate::detail
