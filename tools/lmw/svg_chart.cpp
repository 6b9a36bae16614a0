#include "tools/lmw/svg_chart.h"

#include "tools/lmw/svg_series.h"
#include "tools/lmw/svg_text.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

namespace lmw::tool {
namespace {

// All lengths in pixels of a picture shown at its natural size.
constexpr double kWidth = 760.0;
constexpr double kPlotHeight = 340.0;
constexpr double kMargin = 18.0;
constexpr double kTitleSize = 17.0;
constexpr double kAxisTitleSize = 13.0;
constexpr double kLabelSize = 12.0;
constexpr double kNoteSize = 11.0;
constexpr double kLegendSign = 22.0;

constexpr std::string_view kFonts =
    "Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif";
constexpr std::string_view kInk = "#222222";
constexpr std::string_view kQuietInk = "#555555";

struct TextStyle {
    double size = kLabelSize;
    std::string_view color = kInk;
    std::string_view anchor = "start";
    std::string_view more = {};
};

std::string TextElement(double x, double y, std::string_view text, const TextStyle& style) {
    return Joined({"<text x=\"", Pixels(x), "\" y=\"", Pixels(y), "\" font-size=\"",
                   Pixels(style.size), "\" fill=\"", style.color, "\" text-anchor=\"", style.anchor,
                   "\"", style.more, ">", XmlEscaped(text), "</text>\n"});
}

std::string LineElement(double x1, double y1, double x2, double y2, std::string_view color,
                        double width) {
    return Joined({"<path d=\"M", Pixels(x1), " ", Pixels(y1), "L", Pixels(x2), " ", Pixels(y2),
                   "\" stroke=\"", color, "\" stroke-width=\"", Pixels(width), "\"/>\n"});
}

AxisRange RangeOf(const ChartAxis& axis, const std::vector<AxisRange>& extents) {
    const auto usable = [&axis](const AxisRange& range) {
        return IsDrawable(axis.scale, range.low) && IsDrawable(axis.scale, range.high) &&
               range.low < range.high;
    };
    if (axis.range && usable(*axis.range)) {
        return *axis.range;
    }
    if (extents.empty()) {
        return axis.scale == Scale::kLogarithmic ? AxisRange{1.0, 10.0} : AxisRange{0.0, 1.0};
    }
    AxisRange all = extents.front();
    for (const AxisRange& extent : extents) {
        all = {std::min(all.low, extent.low), std::max(all.high, extent.high)};
    }
    return RoomyRange(axis.scale, all.low, all.high);
}

// As many marks along a horizontal axis as their labels have room for.
AxisTicks TicksWithoutOverlap(const PixelAxis& axis) {
    constexpr double kBetweenLabels = 14.0;
    for (int labels = 10;; --labels) {
        AxisTicks ticks = MakeTicks(axis.scale, axis.range, labels);
        double taken = -1e9;
        bool overlap = false;
        for (const Tick& tick : ticks.ticks) {
            const double half_width = TextWidth(tick.label, kLabelSize) / 2.0;
            if (half_width > 0.0) {
                overlap = overlap || axis.At(tick.value) - half_width < taken + kBetweenLabels;
                taken = axis.At(tick.value) + half_width;
            }
        }
        if (!overlap || labels <= 5) {
            return ticks;
        }
    }
}

double WidestLabel(const AxisTicks& ticks) {
    double widest = 0.0;
    for (const Tick& tick : ticks.ticks) {
        widest = std::max(widest, TextWidth(tick.label, kLabelSize));
    }
    return widest;
}

struct Box {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    [[nodiscard]] double Width() const { return right - left; }
    [[nodiscard]] double Height() const { return bottom - top; }
};

// The legend in rows of `width`, beginning at (left, y); moves y below it.
std::string Legend(const std::vector<Series>& series, const std::vector<std::string>& colors,
                   double left, double width, double& y) {
    constexpr double kRowHeight = 19.0;
    constexpr double kGap = 7.0;
    constexpr double kBetween = 20.0;
    std::string elements;
    double x = left;
    bool any = false;
    for (std::size_t i = 0; i < series.size(); ++i) {
        if (series[i].label.empty()) {
            continue;
        }
        const std::string label =
            Shortened(series[i].label, kLabelSize, width - kLegendSign - kGap);
        const double wide = kLegendSign + kGap + TextWidth(label, kLabelSize);
        if (any && x + wide > left + width) {
            x = left;
            y += kRowHeight;
        }
        elements += LegendSign(series[i], colors[i], x, y + kRowHeight / 2.0);
        elements += TextElement(x + kLegendSign + kGap, y + kRowHeight / 2.0 + 4.2, label, {});
        x += wide + kBetween;
        any = true;
    }
    y += any ? kRowHeight : 0.0;
    return elements;
}

std::string HorizontalAxis(const ChartAxis& axis, const PixelAxis& pixels, const AxisTicks& ticks,
                           const Box& plot) {
    std::string elements;
    for (const Tick& tick : ticks.ticks) {
        const double at = pixels.At(tick.value);
        const bool minor = tick.label.empty();
        elements += LineElement(at, plot.top, at, plot.bottom, minor ? "#f3f4f6" : "#e2e5e9", 1.0);
        elements +=
            LineElement(at, plot.bottom, at, plot.bottom + (minor ? 3.0 : 5.0), kQuietInk, 1.0);
        if (!minor) {
            elements += TextElement(at, plot.bottom + 19.0, tick.label, {.anchor = "middle"});
        }
    }
    // The title is centred below the plot and leaves the note at the right end alone.
    const double middle = (plot.left + plot.right) / 2.0;
    const double note_left = plot.right - TextWidth(ticks.note, kLabelSize);
    const double right_room = (ticks.note.empty() ? kWidth - kMargin : note_left - 10.0) - middle;
    const double room = 2.0 * std::min(middle - kMargin, right_room);
    elements += TextElement(middle, plot.bottom + 41.0, Shortened(axis.title, kAxisTitleSize, room),
                            {.size = kAxisTitleSize, .anchor = "middle"});
    elements += ticks.note.empty() ? std::string()
                                   : TextElement(plot.right, plot.bottom + 41.0, ticks.note,
                                                 {.color = kQuietInk, .anchor = "end"});
    return elements;
}

std::string VerticalAxis(const ChartAxis& axis, const PixelAxis& pixels, const AxisTicks& ticks,
                         const Box& plot) {
    std::string elements;
    for (const Tick& tick : ticks.ticks) {
        const double at = pixels.At(tick.value);
        const bool minor = tick.label.empty();
        elements += LineElement(plot.left, at, plot.right, at, minor ? "#f3f4f6" : "#e2e5e9", 1.0);
        elements += LineElement(plot.left - (minor ? 3.0 : 5.0), at, plot.left, at, kQuietInk, 1.0);
        if (!minor) {
            elements += TextElement(plot.left - 9.0, at + 4.2, tick.label, {.anchor = "end"});
        }
    }
    const std::string title = Shortened(axis.title, kAxisTitleSize, plot.Height());
    const double middle = (plot.top + plot.bottom) / 2.0;
    const double at = kMargin + 10.0;
    const std::string turned =
        Joined({" transform=\"rotate(-90 ", Pixels(at), " ", Pixels(middle), ")\""});
    elements += TextElement(at, middle, title,
                            {.size = kAxisTitleSize, .anchor = "middle", .more = turned});
    elements += ticks.note.empty()
                    ? std::string()
                    : TextElement(plot.left, plot.top - 8.0, ticks.note, {.color = kQuietInk});
    return elements;
}

// Equal lengths for equal units: the plot's height follows from its width, and where that would be
// out of proportion the range of one axis grows around its middle.
void EqualiseUnits(PixelAxis& x, PixelAxis& y, Box& plot) {
    const double span_x = x.range.high - x.range.low;
    const double span_y = y.range.high - y.range.low;
    const double height = std::clamp(plot.Width() * (span_y / span_x), 140.0, 560.0);
    plot.bottom = plot.top + height;
    const double unit = std::max(span_x / plot.Width(), span_y / height);  // per pixel
    const auto widen = [unit](PixelAxis& axis, double pixels) {
        const double middle = axis.range.low + (axis.range.high - axis.range.low) / 2.0;
        axis.range = {middle - unit * pixels / 2.0, middle + unit * pixels / 2.0};
    };
    widen(x, plot.Width());
    widen(y, height);
}

}  // namespace

SvgChart::SvgChart(std::string title, ChartAxis x, ChartAxis y)
    : title_(std::move(title)), x_(std::move(x)), y_(std::move(y)) {}

void SvgChart::Add(Series series) {
    series_.push_back(std::move(series));
}

std::string SvgChart::Text() const {
    std::vector<std::string> colors;
    std::vector<AxisRange> extents_x;
    std::vector<AxisRange> extents_y;
    for (const Series& series : series_) {
        colors.push_back(Color(series.color.value_or(colors.size())));
        if (const std::optional<Extent> extent = ExtentOf(series, x_.scale, y_.scale)) {
            extents_x.push_back(extent->x);
            extents_y.push_back(extent->y);
        }
    }
    PixelAxis x{x_.scale, RangeOf(x_, extents_x)};
    PixelAxis y{y_.scale, RangeOf(y_, extents_y)};

    // From top to bottom: title, legend, plot, axis, notes.
    double below = kMargin;
    std::string body;
    for (const std::string& line : Wrapped(title_, kTitleSize, kWidth - 2.0 * kMargin, 2)) {
        below += kTitleSize;
        body +=
            TextElement(kMargin, below, line, {.size = kTitleSize, .more = " font-weight=\"600\""});
        below += 6.0;
    }
    body += Legend(series_, colors, kMargin, kWidth - 2.0 * kMargin, below);

    Box plot{kMargin, below + 12.0, kWidth - 26.0, below + 12.0 + kPlotHeight};
    const auto y_ticks = [&] {
        return MakeTicks(y.scale, y.range, static_cast<int>(plot.Height() / 42.0));
    };
    AxisTicks vertical = y_ticks();
    plot.left = kMargin + (y_.title.empty() ? 0.0 : 22.0) + WidestLabel(vertical) + 9.0;
    if (keep_aspect_ && x.scale == Scale::kLinear && y.scale == Scale::kLinear) {
        EqualiseUnits(x, y, plot);
        vertical = y_ticks();
    }
    if (!vertical.note.empty()) {
        plot.top += 14.0;
        plot.bottom += 14.0;
    }
    x.low_pixel = plot.left;
    x.high_pixel = plot.right;
    y.low_pixel = plot.bottom;
    y.high_pixel = plot.top;
    body += HorizontalAxis(x_, x, TicksWithoutOverlap(x), plot);
    body += VerticalAxis(y_, y, vertical, plot);

    // An inner picture cuts off what lies outside the plot, marks at its border excepted.
    constexpr double kOverhang = 5.0;
    const std::string left = Pixels(plot.left - kOverhang);
    const std::string top = Pixels(plot.top - kOverhang);
    const std::string width = Pixels(plot.Width() + 2.0 * kOverhang);
    const std::string height = Pixels(plot.Height() + 2.0 * kOverhang);
    body += LineElement(plot.left, plot.top, plot.left, plot.bottom, kQuietInk, 1.0);
    body += LineElement(plot.left, plot.bottom, plot.right, plot.bottom, kQuietInk, 1.0);
    body += Joined({"<svg x=\"", left, "\" y=\"", top, "\" width=\"", width, "\" height=\"", height,
                    "\" viewBox=\"", left, " ", top, " ", width, " ", height,
                    "\" overflow=\"hidden\">\n"});
    for (std::size_t i = 0; i < series_.size(); ++i) {
        body += SeriesElements(series_[i], colors[i], x, y);
    }
    body += "</svg>\n";

    below = plot.bottom + (x_.title.empty() ? 26.0 : 46.0);
    for (const std::string& note : notes_) {
        for (const std::string& line : Wrapped(note, kNoteSize, kWidth - 2.0 * kMargin, 3)) {
            below += 15.0;
            body += TextElement(kMargin, below, line, {.size = kNoteSize, .color = kQuietInk});
        }
    }
    const std::string total = Pixels(std::ceil(below + 14.0));
    const std::string width_text = Pixels(kWidth);
    return Joined({"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n",
                   "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"", width_text, "\" height=\"",
                   total, "\" viewBox=\"0 0 ", width_text, " ", total,
                   "\" role=\"img\" font-family=\"", kFonts, "\">\n<title>", XmlEscaped(title_),
                   "</title>\n", "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n", body,
                   "</svg>\n"});
}

}  // namespace lmw::tool
