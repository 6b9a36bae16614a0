#pragma once

// The definition of the line events, written plainly, and the comparison of the library's answers
// with it.

#include "common/geom/line_events.h"

#include <vector>

namespace lmw::test {

/// Whether the events are the same in the same order, bit for bit.
[[nodiscard]] bool SameEvents(const std::vector<Geom::LineEvent2D>& a,
                              const std::vector<Geom::LineEvent2D>& b);

/// Expects of all four questions, forced to sweep and not, the events of the all-pairs definition.
void ExpectSweepIsScan(const std::vector<Geom::Line2D>& lines, const Geom::Precision3D& precision);

}  // namespace lmw::test
