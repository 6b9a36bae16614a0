#pragma once

// The series of a chart as SVG elements; svg_chart.h is the interface for commands.

#include "tools/lmw/svg_chart.h"

#include <optional>
#include <string>

namespace lmw::tool {

/// Where the values of one axis lie in the picture.
struct PixelAxis {
    Scale scale = Scale::kLinear;
    AxisRange range;
    double low_pixel = 0.0;   ///< of range.low
    double high_pixel = 1.0;  ///< of range.high

    /// The pixel of a value, limited to ten times the axis' length beyond its ends.
    [[nodiscard]] double At(double value) const;
};

/// Whether an axis of this scale can show the value.
[[nodiscard]] bool IsDrawable(Scale scale, double value);

/// The range of what the series shows on either axis; no value when it shows nothing.
struct Extent {
    AxisRange x;
    AxisRange y;
};
[[nodiscard]] std::optional<Extent> ExtentOf(const Series& series, Scale x, Scale y);

/// The palette's colour as "#rrggbb"; distinguishable with any colour vision.
[[nodiscard]] std::string Color(std::size_t index);

/// The series as elements, one per line.
[[nodiscard]] std::string SeriesElements(const Series& series, const std::string& color,
                                         const PixelAxis& x, const PixelAxis& y);

/// The series' legend sign, 22 wide and 12 high, with the left end of its middle line at (x, y).
[[nodiscard]] std::string LegendSign(const Series& series, const std::string& color, double x,
                                     double y);

}  // namespace lmw::tool
