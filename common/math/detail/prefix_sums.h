#pragma once

// Sums over any run of pieces in constant time, without the cancellation that differences of plain
// running sums suffer: the integral over one small interval far behind large ones keeps its digits.

#include <cmath>
#include <cstddef>
#include <vector>

namespace math::fn::interpolate::detail {

/// Running sums of a sequence, each kept as an unevaluated sum of two doubles (T. J. Dekker, 1971,
/// Numer. Math. 18; D. E. Knuth, The Art of Computer Programming 2, 4.2.2, theorem B), so that a
/// difference of two is exact to about 1e-32 of the larger one.
///
/// Threads: const calls may run at once on one object.
class PrefixSums {
 public:
    void Reserve(std::size_t pieces) { sums_.reserve(pieces + 1); }

    void Append(double piece) noexcept(false) {
        const Sum& last = sums_.back();
        const Sum exact = ExactSum_(last.high, piece);
        const double low = last.low + exact.low;
        const double high = exact.high + low;
        sums_.push_back({high, low - (high - exact.high)});
    }

    /// False when a sum or a piece is too large for a double: then there are no differences, and
    /// the pieces have to be added one by one.
    [[nodiscard]] bool Finite() const noexcept { return std::isfinite(sums_.back().low); }

    /// The sum of the pieces begin, begin + 1, ..., end - 1. Requires Finite().
    [[nodiscard]] double Between(std::size_t begin, std::size_t end) const noexcept {
        const Sum high = ExactSum_(sums_[end].high, -sums_[begin].high);
        return high.high + (high.low + (sums_[end].low - sums_[begin].low));
    }

 private:
    struct Sum {
        double high;
        double low;
    };

    /// a + b, and in `low` what rounding took from it.
    static Sum ExactSum_(double a, double b) noexcept {
        const double high = a + b;
        const double b_part = high - a;
        return {high, (a - (high - b_part)) + (b - b_part)};
    }

    std::vector<Sum> sums_{{0.0, 0.0}};
};

}  // namespace math::fn::interpolate::detail
