#include "common/geom/cell_table.h"
#include "common/geom/extents2d.h"
#include "common/geom/line_discretize.h"
#include "common/geom/line_events.h"
#include "common/geom/polygon_line_entry.h"
#include "common/geom/precision.h"
#include "common/geom/quad_tree2d.h"
#include "common/str/number_text.h"

#include "tools/lmw/arguments.h"
#include "tools/lmw/commands.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/point_rows.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"
#include "tools/lmw/whole_files.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace lmw::tool {
namespace {

enum class Task { kEvents, kEdges, kDivide };
enum class Kind { kIntersection, kCoincident, kCrossing, kCollision };
enum class Form2D { kCsv, kWkt };
enum class Overlay { kNone, kCells, kTree };

struct GeomOptions {
    std::string file;
    CoordinateColumns columns;
    Task task = Task::kEvents;
    Kind kind = Kind::kIntersection;
    Geom::SweepLineImplForced::Type method = Geom::SweepLineImplForced::kChoose;
    std::optional<double> decimals;
    std::optional<double> spacing;
    Form2D form = Form2D::kCsv;
    Overlay overlay = Overlay::kNone;
    std::string output;
    std::string svg;
    std::string title;
};

/// What a task found: the text in the form asked for, and what the picture shows of it.
struct Result {
    std::string text;
    std::string label;
    std::vector<Geom::Point2D> marks;
};

std::string Coordinates(const Geom::Point2D& p) {
    return str::DoubleNarrowText(p.x) + ' ' + str::DoubleNarrowText(p.y);
}

std::string WktRow(const char* kind, const std::vector<Geom::Point2D>& points) {
    std::string text = std::string(kind) + " (";
    for (std::size_t k = 0; k < points.size(); ++k) {
        text += k > 0 ? ", " : "";
        text += Coordinates(points[k]);
    }
    return text + ")\n";
}

double Count(std::size_t value) {
    return static_cast<double>(value);
}

/// The segments of all rows, in order, with the number of their row.
struct Segments {
    std::vector<Geom::Line2D> lines;
    std::vector<std::size_t> row_of;
};

Segments SegmentsOf(const PointRows& rows) {
    Segments segments;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t k = 1; k < rows[row].size(); ++k) {
            segments.lines.push_back({rows[row][k - 1], rows[row][k]});
            segments.row_of.push_back(row);
        }
    }
    return segments;
}

Result Events(const GeomOptions& options, const Segments& segments,
              const Geom::Precision3D& precision) {
    std::vector<Geom::LineEvent2D> events;
    switch (options.kind) {
        case Kind::kIntersection:
            LineIntersectionEvents2D(events, segments.lines, precision, options.method);
            break;
        case Kind::kCoincident:
            LineCoincidentEvents2D(events, segments.lines, precision, options.method);
            break;
        case Kind::kCrossing:
            LineCrossingEvents2D(events, segments.lines, precision, options.method);
            break;
        case Kind::kCollision:
            LineCollisionEvents2D(events, segments.lines, precision, options.method);
            break;
    }
    Result result;
    CsvText csv;
    csv.Cell("x").Cell("y").Cell("first_row").Cell("first_segment").Cell("second_row");
    csv.Cell("second_segment").EndRow();
    for (const Geom::LineEvent2D& event : events) {
        const auto first = static_cast<std::size_t>(event.first - segments.lines.data());
        const auto second = static_cast<std::size_t>(event.second - segments.lines.data());
        csv.Cell(event.point.x).Cell(event.point.y).Cell(Count(segments.row_of[first]));
        csv.Cell(Count(first)).Cell(Count(segments.row_of[second])).Cell(Count(second)).EndRow();
        result.marks.push_back(event.point);
        if (options.form == Form2D::kWkt) {
            result.text += WktRow("POINT", {event.point});
        }
    }
    if (options.form == Form2D::kCsv) {
        result.text = csv.Text();
    }
    result.label = "events: " + std::to_string(events.size());
    return result;
}

Result Edges(const GeomOptions& options, const PointRows& rows,
             const Geom::Precision3D& precision) {
    std::vector<Geom::PolygonLineEntry> entries;
    PolygonGetUniqueLineEntries2D(entries, rows, precision);
    Result result;
    CsvText csv;
    csv.Cell("edge").Cell("x0").Cell("y0").Cell("x1").Cell("y1").Cell("uses").EndRow();
    std::size_t shared = 0;
    for (const Geom::PolygonLineEntry& entry : entries) {
        const auto& [first, second] = entry.line;
        csv.Cell(Count(entry.line_id)).Cell(first.x).Cell(first.y).Cell(second.x).Cell(second.y);
        std::string uses;
        for (const auto& [row, edge] : entry.uses) {
            uses += uses.empty() ? "" : " ";
            uses += std::to_string(row) + ':' + std::to_string(edge);
        }
        csv.Cell(uses).EndRow();
        if (options.form == Form2D::kWkt) {
            result.text += WktRow("LINESTRING", {first, second});
        }
        if (entry.uses.size() > 1) {
            ++shared;
            result.marks.push_back({0.5 * (first.x + second.x), 0.5 * (first.y + second.y)});
        }
    }
    if (options.form == Form2D::kCsv) {
        result.text = csv.Text();
    }
    result.label =
        "shared edges: " + std::to_string(shared) + " of " + std::to_string(entries.size());
    return result;
}

/// Every row is one line pinned at its points.
Result Divide(const GeomOptions& options, const PointRows& rows,
              const Geom::Precision3D& precision) {
    if (!options.spacing || *options.spacing <= 0.0) {
        throw Failure("--spacing: dividing needs a spacing above 0");
    }
    Result result;
    CsvText csv;
    csv.Cell("row").Cell("x").Cell("y").EndRow();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        Geom::PointConstraints constraints;
        for (const Geom::Point2D& p : rows[row]) {
            if (constraints.empty() || !IsEqual2D(constraints.back().first, p, precision)) {
                constraints.push_back({p, {*options.spacing, false}});
            }
        }
        const unsigned count = NumPtsFromPtConstraints(constraints, *options.spacing, precision);
        std::vector<Geom::Point2D> points;
        if (constraints.size() < 2 ||
            !LineDiscretize2D(points, constraints, count - 1, precision)) {
            throw Failure(options.file + ": row " + std::to_string(row) + " cannot be divided");
        }
        for (const Geom::Point2D& p : points) {
            csv.Cell(Count(row)).Cell(p.x).Cell(p.y).EndRow();
        }
        result.marks.insert(result.marks.end(), points.begin(), points.end());
        if (options.form == Form2D::kWkt) {
            result.text += WktRow("LINESTRING", points);
        }
    }
    if (options.form == Form2D::kCsv) {
        result.text = csv.Text();
    }
    result.label = "points: " + std::to_string(result.marks.size());
    return result;
}

// ---- the picture
// ---------------------------------------------------------------------------------

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
    const auto side = static_cast<unsigned>(
        std::clamp(std::ceil(std::sqrt(Count(segments.lines.size()))), 1.0, kMostCells));
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
    constexpr std::size_t kDepth = 12;
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
                    const Result& result, const Geom::Precision3D& precision) {
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

// ---- the command
// ---------------------------------------------------------------------------------

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

void RunGeom(const GeomOptions& options, std::ostream& out) {
    const PointRows rows = ReadPointRows(options.file, options.columns);
    const Segments segments = SegmentsOf(rows);
    const Geom::Precision3D precision = PrecisionOf(options, ExtentsOf(segments.lines));
    Result result;
    switch (options.task) {
        case Task::kEvents:
            result = Events(options, segments, precision);
            break;
        case Task::kEdges:
            result = Edges(options, rows, precision);
            break;
        case Task::kDivide:
            result = Divide(options, rows, precision);
            break;
    }
    std::vector<OutputFile> files;
    if (!options.svg.empty()) {
        files.push_back({options.svg, Picture(options, rows, segments, result, precision)});
    }
    if (!options.output.empty()) {
        files.push_back({options.output, std::move(result.text)});
        result.text.clear();
    }
    WriteFiles(files);
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
    AddWord<Kind>(command, "--kind", options.kind,
                  {{"intersection", Kind::kIntersection},
                   {"coincident", Kind::kCoincident},
                   {"crossing", Kind::kCrossing},
                   {"collision", Kind::kCollision}},
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
    AddWord<Form2D>(command, "--format", options.form,
                    {{"csv", Form2D::kCsv}, {"wkt", Form2D::kWkt}}, "csv (the default) or wkt")
        ->group(output);
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
        "segments and edges are counted from 0.\n\n"
        "Examples:\n"
        "  lmw geom roads.csv --kind crossing --svg roads.svg\n"
        "  lmw geom regions.wkt --task edges -o edges.csv\n"
        "  lmw geom outline.csv --task divide --spacing 2.5 --format wkt\n");
    command->callback([options, &out] { RunGeom(*options, out); });
}

}  // namespace lmw::tool
