#pragma once

// What a step function prepares: look-up and sums over its ordered points.

#include "common/math/detail/breakpoint_index.h"
#include "common/math/detail/prefix_sums.h"
#include "common/math/fpoint.h"

#include <cstddef>
#include <span>
#include <vector>

namespace math::fn::interpolate::detail {

/// Immutable; all calls may run at once on one object.
class StepTable {
 public:
    /// Whether a table can be made: two points or more, x finite and not decreasing.
    [[nodiscard]] static bool Accepts(std::span<const FPOINT> points) noexcept;

    /// `points` as accepted.
    explicit StepTable(std::span<const FPOINT> points);

    [[nodiscard]] double First() const noexcept { return first_; }
    [[nodiscard]] double Last() const noexcept { return last_; }

    /// The number of the piece that holds `x`, First() <= x < Last().
    [[nodiscard]] std::size_t Piece(double x) const noexcept { return index_.Find(x_.data(), x); }

    /// The value on [First(), Last()).
    [[nodiscard]] double Value(double x) const noexcept { return y_[Piece(x)]; }

    /// Whether WholePieces may be asked.
    [[nodiscard]] bool HasSums() const noexcept { return sums_.Finite(); }

    /// The sum of value times width over the pieces begin to end - 1.
    [[nodiscard]] double WholePieces(std::size_t begin, std::size_t end) const noexcept {
        return sums_.Between(begin, end);
    }

 private:
    double first_;
    double last_;
    BreakpointIndex index_;
    std::vector<double> x_;
    std::vector<double> y_;
    PrefixSums sums_;
};

}  // namespace math::fn::interpolate::detail
