#include "common/geom/cell_table.h"
#include "common/geom/extents2d.h"
#include "common/geom/line_events.h"
#include "common/geom/precision.h"
#include "common/geom/quad_tree2d.h"
#include "common/undefined.h"

#include "tools/lmw/arguments.h"
#include "tools/lmw/commands.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/geom_tasks.h"
#include "tools/lmw/point_rows.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"
#include "tools/lmw/whole_files.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace lmw::tool {
namespace {

enum class Task { kEvents, kEdges, kDivide };
enum class Overlay { kNone, kCells, kTree };

struct GeomOptions {
    std::string file;
    CoordinateColumns columns;
    Task task = Task::kEvents;
    EventKind kind = EventKind::kIntersection;
    Geom::SweepLineImplForced::Type method = Geom::SweepLineImplForced::kChoose;
    std::optional<double> decimals;
    std::optional<double> spacing;
    GeomForm form = GeomForm::kCsv;
    bool json = false;
    Overlay overlay = Overlay::kNone;
    std::string output;
    std::string svg;
    std::string title;
};

void AddRow(Series& series, const std::vector<Geom::Point2D>& points) {
    for (const Geom::Point2D& p : points) {
        series.x.push_back(p.x);
        series.y.push_back(p.y);
    }
    series.x.push_back(lmw::kUndefined);  // a gap before the next row
    series.y.push_back(lmw::kUndefined);
}

void AddBox(Series& series, const Geom::Extents2D& box) {
    const auto corners = CornerPointsOf(box);
    AddRow(series, {corners[0], corners[1], corners[2], corners[3], corners[0]});
}

/// The cells that segments pass through, of a grid of about as many cells as segments.
void AddCells(Series& series, const Segments& segments, const Geom::Extents2D& extents,
              const Geom::Precision3D& precision) {
    constexpr double kMostCells = 60.0;
    const auto side = static_cast<unsigned>(std::clamp(
        std::ceil(std::sqrt(static_cast<double>(segments.lines.size()))), 1.0, kMostCells));
    Geom::CellTable table;
    table.Initialize(extents, side, side, static_cast<unsigned>(segments.lines.size()), precision);
    table.Assign(segments.lines);
    const double width = WidthOf(extents) / side;
    const double height = HeightOf(extents) / side;
    for (unsigned iy = 0; iy < side; ++iy) {
        for (unsigned ix = 0; ix < side; ++ix) {
            if (!table.At(ix, iy).Items().empty()) {
                const double x = extents.x_min + width * ix;
                const double y = extents.y_min + height * iy;
                AddBox(series, {x, x + width, y, y + height});
            }
        }
    }
}

void AddTree(Series& series, const Segments& segments, const Geom::Extents2D& extents,
             const Geom::Precision3D& precision) {
    constexpr std::size_t kDepth = 7;  // 4^7 leaves at most, as fine as a picture shows
    Geom::QuadTree2D tree;
    tree.Initialize(extents, kDepth, precision, segments.lines.size(), 2);
    for (unsigned id = 0; id < segments.lines.size(); ++id) {
        const Geom::Point2D ends[] = {segments.lines[id].first, segments.lines[id].second};
        tree.Insert(id, {ends, ends + 2});
    }
    for (const Geom::Extents2D& box : tree.LeafBoxes()) {
        AddBox(series, box);
    }
}

std::string Picture(const GeomOptions& options, const PointRows& rows, const Segments& segments,
                    const GeomResult& result, const Geom::Precision3D& precision) {
    const std::u8string stem = PathOf(options.file).stem().u8string();
    SvgChart chart(options.title.empty() ? std::string(stem.begin(), stem.end()) : options.title,
                   {"x"}, {"y"});
    chart.KeepAspect();
    const Geom::Extents2D extents = ExtentsOf(segments.lines);
    if (options.overlay != Overlay::kNone && !extents.IsEmpty()) {
        Series boxes;
        boxes.color = 2;
        if (options.overlay == Overlay::kCells) {
            boxes.label = "cells passed through";
            AddCells(boxes, segments, extents, precision);
        } else {
            boxes.label = "quadtree leaves";
            AddTree(boxes, segments, extents, precision);
        }
        chart.Add(std::move(boxes));
    }
    Series lines;
    lines.color = 0;
    lines.label = "segments: " + std::to_string(segments.lines.size());
    for (const auto& row : rows) {
        AddRow(lines, row);
    }
    chart.Add(std::move(lines));
    Series marks;
    marks.form = Form::kPoints;
    marks.color = 1;
    marks.label = result.label;
    for (const Geom::Point2D& p : result.marks) {
        marks.x.push_back(p.x);
        marks.y.push_back(p.y);
    }
    chart.Add(std::move(marks));
    return chart.Text();
}

Geom::Precision3D PrecisionOf(const GeomOptions& options, const Geom::Extents2D& extents) {
    if (!options.decimals) {
        return ComputePrecisionOfExtents(extents);
    }
    constexpr double kMostDecimals = 300.0;
    if (std::trunc(*options.decimals) != *options.decimals ||
        std::fabs(*options.decimals) > kMostDecimals) {
        throw Failure("--decimals: a whole number from -300 to 300 is needed");
    }
    const int decimals = static_cast<int>(*options.decimals);
    return {decimals, decimals, decimals};
}

GeomResult Found(const GeomOptions& options, const PointRows& rows, const Segments& segments,
                 const Geom::Precision3D& precision) {
    const GeomForm form = options.json ? GeomForm::kJson : options.form;
    switch (options.task) {
        case Task::kEvents:
            return FindEvents(segments, options.kind, options.method, precision, form);
        case Task::kEdges:
            return FindEdges(rows, precision, form);
        case Task::kDivide:
            break;
    }
    if (!options.spacing || *options.spacing <= 0.0) {
        throw Failure("--spacing: dividing needs a spacing above 0");
    }
    return DivideRows(rows, options.file, *options.spacing, precision, form);
}

void RunGeom(const GeomOptions& options, std::ostream& out) {
    const PointRows rows = ReadPointRows(options.file, options.columns);
    if (rows.empty()) {
        throw Failure(options.file + ": no points");
    }
    const Segments segments = SegmentsOf(rows);
    const Geom::Precision3D precision = PrecisionOf(options, ExtentsOf(segments.lines));
    GeomResult result = Found(options, rows, segments, precision);
    std::vector<OutputFile> files;
    if (!options.svg.empty()) {
        files.push_back({options.svg, Picture(options, rows, segments, result, precision)});
    }
    if (!options.output.empty()) {
        files.push_back({options.output, std::move(result.text)});
        result.text.clear();
    }
    WriteFiles(files, options.file);
    out << result.text;
}

void AddTaskOptions(CLI::App& command, GeomOptions& options) {
    const std::string group = "Task";
    AddWord<Task>(
        command, "--task", options.task,
        {{"events", Task::kEvents}, {"edges", Task::kEdges}, {"divide", Task::kDivide}},
        "events (the default): where segments meet; edges: each distinct edge with its uses; "
        "divide: points along each row")
        ->group(group);
    AddWord<EventKind>(
        command, "--kind", options.kind,
        {{"intersection", EventKind::kIntersection},
         {"coincident", EventKind::kCoincident},
         {"crossing", EventKind::kCrossing},
         {"collision", EventKind::kCollision}},
        "Which events: intersection (the default), coincident, crossing or collision")
        ->group(group);
    AddWord<Geom::SweepLineImplForced::Type>(
        command, "--method", options.method,
        {{"choose", Geom::SweepLineImplForced::kChoose},
         {"sweep", Geom::SweepLineImplForced::kSweep}},
        "choose (the default) or sweep; the events are the same")
        ->group(group);
    AddNumber(command, "--decimals", options.decimals,
              "Decimals that tell points apart; seven significant digits of the input unless given")
        ->group(group);
    AddNumber(command, "--spacing", options.spacing, "Wanted distance of points, to divide")
        ->group(group);
}

void AddFileOptions(CLI::App& command, GeomOptions& options) {
    const std::string input = "Input";
    command
        .add_option("--x-column", options.columns.x,
                    "Column of x, by header or number; the one headed x, else 2, unless given")
        ->type_name("COLUMN")
        ->group(input);
    command.add_option("--y-column", options.columns.y, "Column of y, likewise")
        ->type_name("COLUMN")
        ->group(input);
    const std::string output = "Output";
    CLI::Option* const format =
        AddWord<GeomForm>(command, "--format", options.form,
                          {{"csv", GeomForm::kCsv}, {"wkt", GeomForm::kWkt}},
                          "csv (the default) or wkt")
            ->group(output);
    command.add_flag("--json", options.json, "Print JSON instead")->excludes(format)->group(output);
    command
        .add_option("-o,--output", options.output,
                    "Write the result to a file instead of printing it")
        ->type_name("FILE")
        ->group(output);
    command.add_option("--svg", options.svg, "Draw segments and result into an SVG file")
        ->type_name("FILE")
        ->group(output);
    AddWord<Overlay>(command, "--draw", options.overlay,
                     {{"cells", Overlay::kCells}, {"tree", Overlay::kTree}},
                     "Draw also the cells of a cell table, or the leaves of a quadtree")
        ->group(output);
    command
        .add_option("--title", options.title, "Title of the picture; the file's name unless given")
        ->type_name("TEXT")
        ->group(output);
}

}  // namespace

void AddGeom(CLI::App& program, std::ostream& out) {
    const auto options = std::make_shared<GeomOptions>();
    CLI::App* const command = program.add_subcommand(
        "geom", "Find where segments meet, shared edges, points along lines");
    command->add_option("FILE", options->file, "CSV file, or WKT file (*.wkt), of rows of points")
        ->required()
        ->type_name("");
    AddTaskOptions(*command, *options);
    AddFileOptions(*command, *options);
    command->footer(
        "In a CSV file, consecutive rows that agree in the columns before x and y are joined. "
        "Rows,\n"
        "their edges and segments are counted from 0, distinct edges from 1.\n\n"
        "Examples:\n"
        "  lmw geom roads.csv --kind crossing --svg roads.svg\n"
        "  lmw geom regions.wkt --task edges -o edges.csv\n"
        "  lmw geom outline.csv --task divide --spacing 2.5 --format wkt\n");
    command->callback([options, &out] { RunGeom(*options, out); });
}

}  // namespace lmw::tool
