#include "tools/lmw/curve_model.h"

#include "common/math/tolerance.h"
#include "common/status.h"

#include "tools/lmw/failure.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace lmw::tool {
namespace {

using math::fn::interpolate::Beyond;
using math::fn::interpolate::CurveDomain;
using math::fn::interpolate::Linear;
using math::fn::interpolate::Spline;
using math::fn::interpolate::Step;

// Derivatives and integrals of these curves are exact; they do not use it.
const math::algorithm::Tolerance<double> kNoTolerance;

// The places at which a picture needs the curve's values.
std::vector<double> DrawingPlaces(const MeasuredCurve& curve, Scale scale, const AxisRange& range) {
    constexpr std::size_t kSpaced = 701;  // about one for each pixel
    std::vector<double> places = SpacedPlaces(scale, range, kSpaced);
    const CurveDomain domain = curve.Domain();
    const bool repeats = domain.after == Beyond::kRepeats && domain.period > 0.0;
    // Repetitions too many to be told apart in a picture are not all looked at.
    const double most = std::ceil(20000.0 / static_cast<double>(curve.Points().size()));
    const double skipped =
        repeats ? std::max(std::floor((range.low - domain.first) / domain.period), 0.0) : 0.0;
    const double shown = repeats ? std::ceil((range.high - range.low) / domain.period) + 1.0 : 0.0;
    for (int period = 0; period <= static_cast<int>(std::min(shown, most)); ++period) {
        const double shift = repeats ? (skipped + period) * domain.period : 0.0;
        for (const FPOINT& point : curve.Points()) {
            const double at = point.x + shift;
            const double before = std::nextafter(at, -std::numeric_limits<double>::infinity());
            for (const double place : {before, at}) {
                if (place >= range.low && place <= range.high) {
                    places.push_back(place);
                }
            }
        }
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

}  // namespace

std::string Described(const CurveSettings& settings) {
    switch (settings.kind) {
        case CurveKind::kStep:
            return "step";
        case CurveKind::kLinear:
            return "linear";
        case CurveKind::kSpline:
            break;
    }
    std::string text = "spline, tension " + std::to_string(settings.tension);
    if (settings.smooth != 100) {
        text += ", smooth " + std::to_string(settings.smooth);
    }
    return text;
}

std::vector<FPOINT> ReadPoints(const CsvTable& table, std::size_t x_column, std::size_t y_column,
                               const CurveSettings& settings) {
    const bool may_repeat = settings.kind != CurveKind::kSpline || settings.tension == 0;
    std::vector<FPOINT> points;
    for (std::size_t row = 0; row < table.NumberOfRows(); ++row) {
        if (table.Text(row, y_column).empty()) {
            continue;
        }
        const FPOINT point{table.Number(row, x_column), table.Number(row, y_column)};
        if (!points.empty() && point.x < points.back().x) {
            throw table.At(row, "x must increase from row to row");
        }
        if (!points.empty() && point.x == points.back().x && !may_repeat) {
            throw table.At(row, "x repeats, which a spline with tension cannot follow");
        }
        points.push_back(point);
    }
    if (points.empty()) {
        throw table.About("no points");
    }
    return points;
}

MeasuredCurve::MeasuredCurve(const CurveSettings& settings, std::vector<FPOINT> points)
    : points_(std::move(points)), curve_(Made_(settings, points_)) {
    const auto prepare = [](auto& curve) {
        if constexpr (std::is_same_v<decltype(curve), Step&>) {
            curve.UpdateCalculatedValues();
            return gtl::status();
        } else {
            return curve.UpdateCalculatedValues();
        }
    };
    if (const gtl::status result = std::visit(prepare, curve_); result.Failed()) {
        throw Failure(Utf8(result.as_wstring()));
    }
}

MeasuredCurve::Interpolant MeasuredCurve::Made_(const CurveSettings& settings,
                                                const std::vector<FPOINT>& points) {
    const FPOINT* const first = points.data();
    const FPOINT* const last = first + points.size();
    switch (settings.kind) {
        case CurveKind::kStep: {
            Step curve(settings.before, settings.after, first, last);
            curve.SetFunctionPeriod(settings.period);
            return curve;
        }
        case CurveKind::kLinear: {
            Linear curve(first, last, settings.before, settings.after);
            curve.SetFunctionPeriod(settings.period);
            return curve;
        }
        case CurveKind::kSpline:
            break;
    }
    return Spline(settings.smooth, settings.tension, settings.before, settings.after, first, last,
                  settings.period);
}

double MeasuredCurve::Value(double x) const {
    return std::visit([x](const auto& curve) { return curve(x); }, curve_);
}

double MeasuredCurve::Derivative(double x) const {
    return std::visit([x](const auto& curve) { return curve.DyDx(x, kNoTolerance); }, curve_);
}

double MeasuredCurve::Integral(double from, double to) const {
    const double area = std::visit(
        [&](const auto& curve) { return curve.Integrate(from, to, kNoTolerance); }, curve_);
    return to < from && IsDefined(area) ? -area : area;
}

CurveDomain MeasuredCurve::Domain() const {
    return std::visit([](const auto& curve) { return curve.Domain(); }, curve_);
}

std::vector<CurveRow> Tabulated(const MeasuredCurve& curve, const std::vector<double>& x) {
    const double first = curve.Points().front().x;
    std::vector<CurveRow> rows;
    rows.reserve(x.size());
    for (const double at : x) {
        rows.push_back({at, curve.Value(at), curve.Derivative(at), curve.Integral(first, at)});
    }
    return rows;
}

std::string CurveCsv(const std::vector<CurveRow>& rows) {
    CsvText csv;
    csv.Cell("x").Cell("value").Cell("derivative").Cell("integral").EndRow();
    for (const CurveRow& row : rows) {
        csv.Cell(row.x).Cell(row.value).Cell(row.derivative).Cell(row.integral).EndRow();
    }
    return csv.Text();
}

std::vector<double> SpacedPlaces(Scale scale, const AxisRange& range, std::size_t count) {
    if (range.low == range.high) {
        return {range.low};
    }
    std::vector<double> places(count);
    const double ratio = range.high / range.low;
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) / static_cast<double>(count - 1);
        if (scale == Scale::kLinear) {
            places[i] = std::lerp(range.low, range.high, t);
        } else if (std::isfinite(ratio)) {
            places[i] = range.low * std::pow(ratio, t);  // keeps round numbers round
        } else {
            places[i] = std::exp(std::lerp(std::log(range.low), std::log(range.high), t));
        }
    }
    places.front() = range.low;
    places.back() = range.high;
    return places;
}

Series LineOf(const MeasuredCurve& curve, Scale scale, const AxisRange& range) {
    Series line{.form = Form::kLine};
    line.x = DrawingPlaces(curve, scale, range);
    line.y.reserve(line.x.size());
    for (const double x : line.x) {
        line.y.push_back(curve.Value(x));
    }
    return line;
}

Series MarksOf(const MeasuredCurve& curve, const AxisRange& range) {
    Series marks{.form = Form::kPoints};
    for (const FPOINT& point : curve.Points()) {
        if (point.x >= range.low && point.x <= range.high) {
            marks.x.push_back(point.x);
            marks.y.push_back(point.y);
        }
    }
    return marks;
}

std::string NoteOfHidden(const MeasuredCurve& curve, const Series& marks) {
    const std::size_t all = curve.Points().size();
    const std::size_t hidden = all - marks.x.size();
    return hidden == 0 ? std::string()
                       : "Points outside the range shown: " + std::to_string(hidden) + " of " +
                             std::to_string(all) + ".";
}

}  // namespace lmw::tool
