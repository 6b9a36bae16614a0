#pragma once

// Sets of segments that are hard on intersection code, each family in one way. Shared by the tests
// of the sweep and of the indexes.

#include "common/geom/geom_types.h"
#include "common/geom/precision.h"

#include "tests/support/property_random.h"

#include <cstddef>
#include <vector>

namespace lmw::test {

/// Segments in the one large set of each family: fewer where a sanitizer slows everything down.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr std::size_t kLargeSet = 1500;
#else
inline constexpr std::size_t kLargeSet = 5000;
#endif

struct SegmentFamily {
    const char* name;
    std::vector<Geom::Line2D> (*make)(PropertyRandom& random, std::size_t count, double h);
};

/// All families; `h` is the half-epsilon their near misses are made for. Coordinates lie within
/// about 100 of the family's own origin.
[[nodiscard]] const std::vector<SegmentFamily>& SegmentFamilies();

}  // namespace lmw::test
