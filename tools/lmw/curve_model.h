#pragma once

// A curve through the measured points of a file: reading the points, preparing the interpolant that
// was asked for, and tabulating it. The commands that draw or tabulate curves share this.

#include "common/math/curve_common.h"
#include "common/math/fpoint.h"
#include "common/math/linear.h"
#include "common/math/spline.h"
#include "common/math/step.h"
#include "common/math/tail_type.h"
#include "common/undefined.h"

#include "tools/lmw/axis_ticks.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/svg_chart.h"

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace lmw::tool {

enum class CurveKind { kStep, kLinear, kSpline };

/// Which curve to draw through the points.
struct CurveSettings {
    CurveKind kind = CurveKind::kLinear;
    unsigned tension = 50;  ///< of a spline, 0 to 100
    unsigned smooth = 100;  ///< of a spline, 0 to 100
    math::fn::TailType before = math::fn::TailType::None();
    math::fn::TailType after = math::fn::TailType::None();
    double period = kUndefined;  ///< in units of x; undefined for the span of the points
};

/// The kind as a reader of a legend or a report wants it: "spline, tension 50".
[[nodiscard]] std::string Described(const CurveSettings& settings);

/// The points of two columns. Rows whose y cell is blank were not measured and are left out. x must
/// increase from row to row; for other curves than a spline with tension it may repeat, which makes
/// a jump. Throws Failure, naming the row, when that is not so, and when there are no points.
[[nodiscard]] std::vector<FPOINT> ReadPoints(const CsvTable& table, std::size_t x_column,
                                             std::size_t y_column, const CurveSettings& settings);

/// A prepared curve. Values that do not exist are undefined (lmw::IsDefined). Cheap to copy.
class MeasuredCurve {
 public:
    /// Throws Failure with the interpolant's own message when it cannot be prepared. `points` must
    /// not be empty.
    MeasuredCurve(const CurveSettings& settings, std::vector<FPOINT> points);

    [[nodiscard]] double Value(double x) const;
    [[nodiscard]] double Derivative(double x) const;
    [[nodiscard]] double Integral(double from, double to) const;  ///< negative when to < from
    [[nodiscard]] math::fn::interpolate::CurveDomain Domain() const;
    [[nodiscard]] const std::vector<FPOINT>& Points() const { return points_; }

 private:
    using Interpolant = std::variant<math::fn::interpolate::Step, math::fn::interpolate::Linear,
                                     math::fn::interpolate::Spline>;
    [[nodiscard]] static Interpolant Made_(const CurveSettings& settings,
                                           const std::vector<FPOINT>& points);

    std::vector<FPOINT> points_;
    Interpolant curve_;
};

/// One row of a table of a curve; the integral is taken from the first point.
struct CurveRow {
    double x = 0.0;
    double value = 0.0;
    double derivative = 0.0;
    double integral = 0.0;
};
[[nodiscard]] std::vector<CurveRow> Tabulated(const MeasuredCurve& curve,
                                              const std::vector<double>& x);

/// The table as CSV text with the columns x, value, derivative, integral.
[[nodiscard]] std::string CurveCsv(const std::vector<CurveRow>& rows);

/// `count` places from `range.low` to `range.high`, both exactly, evenly spaced along an axis of
/// this scale; one place when the bounds are equal. `count` is 2 or more.
[[nodiscard]] std::vector<double> SpacedPlaces(Scale scale, const AxisRange& range,
                                               std::size_t count);

/// The curve in a range as a line to draw, with values close enough together to look smooth and on
/// both sides of every data point and of its repetitions, so that jumps are upright.
[[nodiscard]] Series LineOf(const MeasuredCurve& curve, Scale scale, const AxisRange& range);

/// The measured points inside a range, as marks to draw.
[[nodiscard]] Series MarksOf(const MeasuredCurve& curve, const AxisRange& range);

/// A note for a chart that says how many points `marks` leaves out, empty when it shows all.
[[nodiscard]] std::string NoteOfHidden(const MeasuredCurve& curve, const Series& marks);

}  // namespace lmw::tool
