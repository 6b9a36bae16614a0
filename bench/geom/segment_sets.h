#pragma once

// The inputs of the geometry benchmarks, from fixed seeds.

#include "common/geom/geom_types.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace lmw::bench {

inline double Uniform(std::mt19937_64& engine) {
    return static_cast<double>(engine() >> 11U) * 0x1p-53;
}

/// Segments of random place and direction in a square of side 1000, `length` long at most. Two meet
/// with a probability of about 2 / pi times the product of their mean lengths over the area.
inline std::vector<Geom::Line2D> RandomSet(std::size_t count, double length) {
    std::mt19937_64 engine(20240501);
    std::vector<Geom::Line2D> lines;
    lines.reserve(count);
    while (lines.size() < count) {
        const Geom::Point2D p{1000.0 * Uniform(engine), 1000.0 * Uniform(engine)};
        const double angle = 6.283185307179586 * Uniform(engine);
        const double l = length * Uniform(engine);
        lines.push_back({p, {p.x + l * std::cos(angle), p.y + l * std::sin(angle)}});
    }
    return lines;
}

/// The greatest length at which `count` random segments have about `meetings` meetings.
inline double LengthFor(std::size_t count, double meetings) {
    const double n = static_cast<double>(count);
    return 2.0 * std::sqrt(3.141592653589793 * meetings * 1e6 / (n * n));
}

/// Diagonals side by side, each in the boxes of most others, none meeting.
inline std::vector<Geom::Line2D> ParallelDiagonals(std::size_t count) {
    std::vector<Geom::Line2D> lines;
    const double gap = 1000.0 / static_cast<double>(count);
    for (std::size_t k = 0; k < count; ++k) {
        const double at = gap * static_cast<double>(k);
        lines.push_back({{at, -at}, {at + 600.0, 600.0 - at}});
    }
    return lines;
}

}  // namespace lmw::bench
