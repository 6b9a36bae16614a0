#include "tools/lmw/svg_series.h"

#include "common/undefined.h"

#include "tools/lmw/svg_text.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace lmw::tool {
namespace {

std::string Place(double x, double y) {
    return Joined({Pixels(x), " ", Pixels(y)});
}

// The corners of a step curve, for drawing as a line.
Series StepCorners(const Series& steps) {
    Series line;
    for (std::size_t i = 0; i < std::min(steps.x.size(), steps.y.size()); ++i) {
        line.x.push_back(steps.x[i]);
        line.y.push_back(steps.y[i]);
        if (i + 1 < steps.x.size()) {
            line.x.push_back(steps.x[i + 1]);
            line.y.push_back(steps.y[i]);
        }
    }
    return line;
}

// The path through a series, begun anew after each gap, and the points that stand alone between
// gaps.
struct PathParts {
    std::string path;
    std::string lone_points;
};

// `end_of_run` closes a run of points.
PathParts PathThrough(const Series& series, const PixelAxis& x, const PixelAxis& y,
                      std::string_view end_of_run) {
    PathParts parts;
    std::string first;
    std::string last;
    std::size_t run = 0;
    const auto end_run = [&] {
        if (run == 1) {
            parts.lone_points += Joined({"M", first, "h0"});
        } else if (run > 1) {
            parts.path += end_of_run;
        }
        run = 0;
    };
    for (std::size_t i = 0; i < std::min(series.x.size(), series.y.size()); ++i) {
        if (!IsDrawable(x.scale, series.x[i]) || !IsDrawable(y.scale, series.y[i])) {
            end_run();
            continue;
        }
        std::string place = Place(x.At(series.x[i]), y.At(series.y[i]));
        if (run == 0) {
            first = place;
        } else if (place == last) {
            continue;
        } else if (run == 1) {
            parts.path += Joined({"M", first, "L", place});
        } else {
            parts.path += Joined({"L", place});
        }
        last = std::move(place);
        ++run;
    }
    end_run();
    return parts;
}

std::string StrokedPath(const std::string& data, const std::string& color, double width,
                        std::string_view more = {}) {
    return Joined({"<path d=\"", data, "\" fill=\"none\" stroke=\"", color, "\" stroke-width=\"",
                   Pixels(width), "\" stroke-linecap=\"round\" stroke-linejoin=\"round\"", more,
                   "/>\n"});
}

std::string_view Dashes(const Series& series) {
    return series.stroke == Stroke::kDashed ? " stroke-dasharray=\"7 6\"" : "";
}

std::string Marks(const Series& series, const std::string& color, const PixelAxis& x,
                  const PixelAxis& y) {
    std::string data;
    const std::size_t count = std::min(series.x.size(), series.y.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (IsDrawable(x.scale, series.x[i]) && IsDrawable(y.scale, series.y[i])) {
            data += Joined({"M", Place(x.At(series.x[i]), y.At(series.y[i])), "h0"});
        }
    }
    if (data.empty()) {
        return {};
    }
    // Few points are rings that leave the line below them readable, many are dots.
    if (count <= 200) {
        return StrokedPath(data, color, 9.0) + StrokedPath(data, "#ffffff", 5.5);
    }
    return StrokedPath(data, color, count <= 2000 ? 4.0 : 2.0);
}

std::string Bars(const Series& series, const std::string& color, const PixelAxis& x,
                 const PixelAxis& y) {
    std::string data;
    const double foot = y.At(y.scale == Scale::kLinear ? 0.0 : y.range.low);
    for (std::size_t i = 0; i + 1 < series.x.size() && i < series.y.size(); ++i) {
        if (IsDrawable(x.scale, series.x[i]) && IsDrawable(x.scale, series.x[i + 1]) &&
            IsDrawable(y.scale, series.y[i])) {
            data += Joined({"M", Place(x.At(series.x[i]), foot), "V", Pixels(y.At(series.y[i])),
                            "H", Pixels(x.At(series.x[i + 1])), "V", Pixels(foot), "Z"});
        }
    }
    const bool thin = series.y.size() > 200;  // borders would cover the bars
    if (data.empty()) {
        return data;
    }
    return Joined({"<path d=\"", data, "\" fill=\"", color, "\" fill-opacity=\"0.75\"",
                   thin ? "" : " stroke=\"#ffffff\" stroke-width=\"1\"", "/>\n"});
}

}  // namespace

double PixelAxis::At(double value) const {
    // The quotient of bounds that are 600 decades apart would overflow; their logarithms do not.
    const auto along = [this](double number) {
        return scale == Scale::kLogarithmic ? std::log(number) : number;
    };
    const double low = along(range.low);
    const double fraction = (along(value) - low) / (along(range.high) - low);
    return low_pixel + std::clamp(fraction, -10.0, 11.0) * (high_pixel - low_pixel);
}

bool IsDrawable(Scale scale, double value) {
    const bool in_range = std::isfinite(value) && std::fabs(value) <= 1e300;
    return in_range && (scale == Scale::kLinear || value >= 1e-300);
}

std::optional<Extent> ExtentOf(const Series& series, Scale x, Scale y) {
    std::optional<Extent> extent;
    const auto include = [&](double at_x, double at_y) {
        if (!IsDrawable(x, at_x) || !IsDrawable(y, at_y)) {
            return;
        }
        if (!extent) {
            extent = Extent{{at_x, at_x}, {at_y, at_y}};
        }
        extent->x = {std::min(extent->x.low, at_x), std::max(extent->x.high, at_x)};
        extent->y = {std::min(extent->y.low, at_y), std::max(extent->y.high, at_y)};
    };
    const bool spans = series.form == Form::kBars || series.form == Form::kSteps;
    for (std::size_t i = 0; i < std::min(series.x.size(), series.y.size()); ++i) {
        include(series.x[i], series.y[i]);
        if (spans && i + 1 < series.x.size()) {
            include(series.x[i + 1], series.y[i]);
        }
        if (series.form == Form::kBars && y == Scale::kLinear) {
            include(series.x[i], 0.0);
        }
    }
    return extent;
}

std::string Color(std::size_t index) {
    // Okabe and Ito, "Color universal design" (2008), without their yellow, which vanishes on
    // white; two greys at the end.
    static constexpr std::array<std::string_view, 8> kPalette = {
        "#0072b2", "#d55e00", "#009e73", "#cc79a7", "#e69f00", "#56b4e9", "#555555", "#999999"};
    return std::string(kPalette[index % kPalette.size()]);
}

std::string SeriesElements(const Series& series, const std::string& color, const PixelAxis& x,
                           const PixelAxis& y) {
    switch (series.form) {
        case Form::kPoints:
            return Marks(series, color, x, y);
        case Form::kBars:
            return Bars(series, color, x, y);
        case Form::kRegion: {
            std::string data = PathThrough(series, x, y, "Z").path;
            if (data.empty()) {
                return data;
            }
            return Joined({"<path d=\"", data, "\" fill=\"", color,
                           "\" fill-opacity=\"0.18\" fill-rule=\"evenodd\" stroke=\"", color,
                           "\" stroke-width=\"1.5\" stroke-linejoin=\"round\"/>\n"});
        }
        case Form::kLine:
        case Form::kSteps:
            break;
    }
    const bool steps = series.form == Form::kSteps;
    const PathParts parts = PathThrough(steps ? StepCorners(series) : series, x, y, {});
    std::string elements;
    if (!parts.path.empty()) {
        elements += StrokedPath(parts.path, color, 2.0, Dashes(series));
    }
    if (!parts.lone_points.empty()) {
        elements += StrokedPath(parts.lone_points, color, 5.0);
    }
    return elements;
}

std::string LegendSign(const Series& series, const std::string& color, double x, double y) {
    const std::string line = Joined({"M", Place(x, y), "h22"});
    const std::string dot = Joined({"M", Place(x + 11.0, y), "h0"});
    switch (series.form) {
        case Form::kPoints:
            return StrokedPath(dot, color, 9.0) + StrokedPath(dot, "#ffffff", 5.5);
        case Form::kBars:
        case Form::kRegion: {
            const std::string_view opacity = series.form == Form::kBars ? "0.75" : "0.18";
            return Joined({"<rect x=\"", Pixels(x + 3.0), "\" y=\"", Pixels(y - 5.0),
                           "\" width=\"16\" height=\"10\" fill=\"", color, "\" fill-opacity=\"",
                           opacity, "\" stroke=\"", color, "\"/>\n"});
        }
        case Form::kLine:
        case Form::kSteps:
            break;
    }
    return StrokedPath(line, color, 2.0, Dashes(series));
}

}  // namespace lmw::tool
