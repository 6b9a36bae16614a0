#pragma once

// The chapters of the worked example, in the order in which they run. Each adds its part of the
// report and its files to the results, and throws Failure when its data cannot be read or used.

#include "common/fn/ifn.h"

#include "tools/lmw/demo_results.h"

#include <string>
#include <vector>

namespace lmw::tool {

/// The data file of the dam's section, and the level (m above the foundation) of its full water.
constexpr const char* kDamSection = "section-dam";
constexpr double kFullWater = 30.227;

/// A soil and the Fredlund-Xing curve through its measured points, as it was written: a in kPa.
struct FittedSoil {
    std::string name;
    std::string file;  ///< of the measured points
    double saturated = 0.0;
    double a = 0.0;
    double n = 0.0;
    double m = 0.0;
};

/// Three measured soils: read, interpolated, fitted, tabulated and drawn.
[[nodiscard]] std::vector<FittedSoil> AddSoils(DemoResults& results);

/// A rainfall series, each year repeated, and its sums.
void AddRain(DemoResults& results);

/// The sections of a dam and of a layered slope: areas of the regions, each edge once with the
/// regions that use it, points along the edges, and where the water's level crosses them.
void AddSections(DemoResults& results);

/// The functions of the dam.
struct DamFunctions {
    /// Volumetric water content over pore-water pressure (kPa), for each region of the section.
    std::vector<IFn> water_contents;
    /// The reservoir's level (m above the foundation) over the time (months), without end.
    IFn level;
};

/// Functions made from definition texts: the fitted curves, and a measured series of a reservoir
/// that repeats.
[[nodiscard]] DamFunctions AddFunctions(DemoResults& results, const std::vector<FittedSoil>& soils);

/// A mesh of the dam, and the water in its elements at some times.
void AddWater(DemoResults& results, const DamFunctions& functions);

/// Sampled strengths, and how likely a long dry slope of the downstream face's inclination slides
/// with them.
void AddStrengths(DemoResults& results);

}  // namespace lmw::tool
