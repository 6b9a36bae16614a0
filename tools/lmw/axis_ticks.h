#pragma once

// Where an axis has its marks and what is written at them.

#include <string>
#include <vector>

namespace lmw::tool {

enum class Scale { kLinear, kLogarithmic };

/// The range an axis shows, in the axis' unit; low < high, both above 0 on a logarithmic axis.
struct AxisRange {
    double low = 0.0;
    double high = 1.0;
};

struct Tick {
    double value = 0.0;
    /// Empty for a minor mark, which carries no text.
    std::string label;
};

/// The marks of one axis in increasing order, all inside its range.
struct AxisTicks {
    std::vector<Tick> ticks;
    /// What the labels leave out and must be read with them ("×10⁶", "+ 1000000"); usually empty.
    std::string note;
};

/// The range of an axis that shows everything from `lowest` to `highest` with a little room at both
/// ends. A linear axis begins at 0 when its data almost do. Bounds that are equal, or differ by
/// less than 1e-12 of their magnitude, are shown in the middle of a range wide enough to read. On a
/// logarithmic axis both must be above 0.
[[nodiscard]] AxisRange RoomyRange(Scale scale, double lowest, double highest);

/// Marks at round numbers: on a linear axis multiples of 1, 2 or 5 times a power of ten; on a
/// logarithmic one powers of ten, with 2 and 5 or 3 times them where there is room, and unlabelled
/// marks at the other multiples. Gives at most `max_labels` labels (at least 5 are assumed) and at
/// least one; a logarithmic axis of less than a decade may be marked like a linear one.
[[nodiscard]] AxisTicks MakeTicks(Scale scale, const AxisRange& range, int max_labels);

}  // namespace lmw::tool
