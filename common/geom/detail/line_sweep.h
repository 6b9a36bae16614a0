#pragma once

// The plane sweep over segments that cannot miss a meeting pair, however the tolerance blurs it.

#include "common/geom/detail/segment_math.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include <cstdint>
#include <span>
#include <vector>

namespace Geom::detail {

/// A pair of input positions, the smaller one in the upper half, so that sorted keys are in the
/// order of the all-pairs scan.
using PairKey = std::uint64_t;

inline PairKey MakePairKey(std::uint32_t i, std::uint32_t j) noexcept {
    return i < j ? (PairKey{i} << 32U) | j : (PairKey{j} << 32U) | i;
}
inline std::uint32_t FirstOf(PairKey key) noexcept {
    return static_cast<std::uint32_t>(key >> 32U);
}
inline std::uint32_t SecondOf(PairKey key) noexcept {
    return static_cast<std::uint32_t>(key);
}

/// Every pair of `used` lines that the pair test can accept, and few others: sorted, each once.
/// `boxes` are the widened boxes of all lines; the coordinates of the used ones are below 1e300.
///
/// 1. Complete: the result contains every pair that LineIntersection2D accepts.
/// 2. Pairs beyond those lie within about eight half-epsilons (or 2^-29 of the range) of each
///    other.
///
/// Cost O((n + m) log n), m the number of pairs found.
std::vector<PairKey> SweepPairs(const std::vector<Line2D>& lines, const std::vector<WideBox>& boxes,
                                std::span<const std::uint32_t> used, const Precision3D& precision);

}  // namespace Geom::detail
