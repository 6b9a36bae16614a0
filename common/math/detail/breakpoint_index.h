#pragma once

// Which interval of a sorted list of breakpoints a site lies in, in constant time for the spacings
// that occur in practice. The piecewise polynomial and the step function look up through this.
// Surprising: it holds no breakpoints. The owner passes the ones it was built from to every call,
// so that an index costs one array and moves with its owner.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace math::fn::interpolate::detail {

/// A table of buckets over the breakpoints. A bucket is found from the site by arithmetic and holds
/// its first breakpoint and the number of breakpoints in the buckets before it; what is left is one
/// comparison, and a binary search in the rare bucket that holds several breakpoints.
///
/// The bucket number is taken from the bit pattern of `site * scale + offset`. With an offset that
/// leaves no bits for a fraction the pattern counts equal widths of x; otherwise it is close to a
/// logarithm, of the distance from the left or from the right end of the data. Build chooses what
/// crowds the breakpoints least. Either way the number never decreases with x, and nothing else is
/// needed for the answer to be exact: rounding in the number cannot change it.
///
/// Threads: Find may run at once on one object.
class BreakpointIndex {
 public:
    /// What the table knows of one bucket. One load serves a look-up: the comparison waits for no
    /// second one.
    struct Bucket {
        double split = std::numeric_limits<double>::infinity();  ///< the first breakpoint in it
        std::uint32_t before = 0;  ///< inner breakpoints in the buckets before it
        std::uint32_t count = 0;   ///< inner breakpoints in it

        /// Whether it takes a search to find an interval in it.
        [[nodiscard]] bool Crowded() const noexcept { return count > 1; }

        /// The interval of a site in a bucket that is not crowded. Added, not branched on: whether
        /// the bucket's breakpoint is passed is a coin toss that a processor cannot predict.
        [[nodiscard]] std::size_t Interval(double site) const noexcept {
            return before + static_cast<std::size_t>(split <= site);
        }

        /// The interval of a site in any bucket.
        [[nodiscard]] std::size_t Search(const double* breakpoints, double site) const noexcept;
    };

    /// `breakpoints`: at least two, finite, none less than the one before it.
    void Build(std::span<const double> breakpoints);

    /// The interval of `site`: the number of inner breakpoints (all but the first and the last) not
    /// greater than it. Requires first <= site < last.
    [[nodiscard]] std::size_t Find(const double* breakpoints, double site) const noexcept {
        const Bucket& bucket = BucketOf(site);
        return bucket.Crowded() ? bucket.Search(breakpoints, site) : bucket.Interval(site);
    }

    /// The first half of Find, for callers that leave the rare search to a function of its own.
    [[nodiscard]] const Bucket& BucketOf(double site) const noexcept {
        return buckets_[spacing_.Number(site)];
    }

 private:
    /// Bucket number as a function of the site.
    struct Spacing {
        double scale = 0.0;
        double offset = 0.0;
        std::int64_t flip = 0;  ///< -1 where the pattern falls with x, to make it rise
        std::int64_t base = 0;
        unsigned shift = 0;

        [[nodiscard]] std::int64_t Key(double site) const noexcept {
            return (std::bit_cast<std::int64_t>(site * scale + offset) ^ flip) >> shift;
        }
        [[nodiscard]] std::size_t Number(double site) const noexcept {
            return static_cast<std::size_t>(Key(site) - base);
        }
    };

    static Spacing EqualWidths_(std::span<const double> breakpoints);
    static Spacing FromLeft_(std::span<const double> breakpoints);
    static Spacing FromRight_(std::span<const double> breakpoints);
    static std::size_t CrowdOf_(std::span<const double> breakpoints, const Spacing& spacing);
    void Fill_(std::span<const double> breakpoints, const Spacing& spacing);

    Spacing spacing_;
    std::vector<Bucket> buckets_;
};

}  // namespace math::fn::interpolate::detail
