#pragma once

// Sums over any run of pieces in constant time, without the cancellation that differences of plain
// running sums suffer: the integral over one small interval far behind large ones keeps its digits.

#include <cmath>
#include <cstddef>
#include <vector>

namespace math::fn::interpolate::detail {

/// Running sums of a sequence, each kept as the rounded sum and, apart, the sum of what rounding
/// took from it (A. Neumaier, 1974, Z. angew. Math. Mech. 54; the exact error of a sum by D. E.
/// Knuth, The Art of Computer Programming 2, 4.2.2, theorem B). A difference of two is exact to
/// about n * 1e-32 of the larger one.
///
/// Threads: const calls may run at once on one object.
class PrefixSums {
 public:
    /// Sums the pieces 0, 1, ..., count - 1; `piece(i)` gives each.
    template <class Piece>
    void Build(std::size_t count, const Piece& piece) {
        sums_.resize(count + 1);
        Sum sum;
        for (std::size_t i = 0; i < count; ++i) {
            const double added = piece(i);
            const double high = sum.high + added;
            const double part = high - sum.high;
            sum.low += (sum.high - (high - part)) + (added - part);
            sum.high = high;
            sums_[i + 1] = sum;
        }
    }

    /// False when a sum or a piece is too large for a double: then there are no differences, and
    /// the pieces have to be added one by one.
    [[nodiscard]] bool Finite() const noexcept { return std::isfinite(sums_.back().low); }

    /// The sum of the pieces begin, begin + 1, ..., end - 1. Requires Finite().
    ///
    /// Where the rounded sums cancel they are within a factor of two of each other, and then their
    /// difference is exact (P. H. Sterbenz, 1974); elsewhere it is rounded once.
    [[nodiscard]] double Between(std::size_t begin, std::size_t end) const noexcept {
        return (sums_[end].high - sums_[begin].high) + (sums_[end].low - sums_[begin].low);
    }

 private:
    struct Sum {
        double high = 0.0;
        double low = 0.0;
    };

    std::vector<Sum> sums_;
};

}  // namespace math::fn::interpolate::detail
