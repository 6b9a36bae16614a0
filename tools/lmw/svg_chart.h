#pragma once

// Charts as SVG pictures: points, lines, steps, histogram bars and filled regions over two axes,
// with title, legend and round axis marks. The picture is text of its own, without scripts, fonts
// or links, and looks the same in a browser, in a document and on paper. Surprising: the plot area
// keeps its size; long titles and legends make the picture taller, and what still does not fit is
// cut by "…".

#include "tools/lmw/axis_ticks.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace lmw::tool {

/// How a series is drawn.
enum class Form {
    kPoints,  ///< a round mark for each (x[i], y[i])
    kLine,    ///< straight lines from point to point
    kSteps,   ///< y[i] holds from x[i] to x[i + 1]; one x more than y gives the last step its end
    kBars,    ///< a bar of height y[i] from x[i] to x[i + 1], standing on 0: one x more than y
    kRegion,  ///< a filled outline; a gap begins another ring (a hole, or another part)
};

enum class Stroke { kSolid, kDashed };

/// Numbers of one kind to be drawn, in the axes' units. A place where x or y is undefined, not
/// finite, beyond 1e300 in magnitude, or not above 1e-300 on a logarithmic axis is not drawn:
/// points are left out there, lines and steps have a gap.
struct Series {
    Form form = Form::kLine;
    /// The legend's text; empty for no entry.
    std::string label = {};
    std::vector<double> x = {};
    std::vector<double> y = {};
    /// Which of the palette's colours (repeating after the eighth); by default each series takes
    /// the next.
    std::optional<std::size_t> color = {};
    Stroke stroke = Stroke::kSolid;
};

struct ChartAxis {
    /// What is drawn along it, with the unit.
    std::string title;
    Scale scale = Scale::kLinear;
    /// The range shown; by default roomy enough for all series.
    std::optional<AxisRange> range = {};
};

/// A chart under construction. Any number of series, drawn in the order in which they were added.
///
/// Example:
///     SvgChart chart("Retention of a loess", {"suction (kPa)", Scale::kLogarithmic}, {"water
///     content"}); chart.Add({.form = Form::kPoints, .label = "measured", .x = suction, .y =
///     content}); const std::string picture = chart.Text();
class SvgChart {
 public:
    SvgChart(std::string title, ChartAxis x, ChartAxis y);

    void Add(Series series);

    /// A line of small print below the picture.
    void AddNote(std::string note) { notes_.push_back(std::move(note)); }
    void AddNotes(const std::vector<std::string>& notes) {
        notes_.insert(notes_.end(), notes.begin(), notes.end());
    }

    /// One unit is as long in x as in y, for sections and maps. Linear axes only.
    void KeepAspect() { keep_aspect_ = true; }

    /// The picture. A chart without anything to draw shows empty axes from 0 to 1 (1 to 10).
    [[nodiscard]] std::string Text() const;

 private:
    std::string title_;
    ChartAxis x_;
    ChartAxis y_;
    std::vector<Series> series_;
    std::vector<std::string> notes_;
    bool keep_aspect_ = false;
};

}  // namespace lmw::tool
