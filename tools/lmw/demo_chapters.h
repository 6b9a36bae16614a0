#pragma once

// The chapters of the worked example, in the order in which they run. Each adds its part of the
// report and its files to the results, and throws Failure when its data cannot be read.

#include "tools/lmw/demo_results.h"

namespace lmw::tool {

/// Three measured soils and a rainfall series: read, interpolated, fitted, tabulated and drawn.
void AddSoils(DemoResults& results);

/// The sections of a dam and of a layered slope: areas of the regions, each edge once with the
/// regions that use it, points along the edges, and where the water's level meets them.
void AddSections(DemoResults& results);

}  // namespace lmw::tool
