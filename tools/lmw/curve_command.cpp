#include "common/math/tail_type.h"
#include "common/str/number_text.h"

#include "tools/lmw/arguments.h"
#include "tools/lmw/commands.h"
#include "tools/lmw/curve_model.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"
#include "tools/lmw/whole_files.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {
namespace {

constexpr unsigned kMostPoints = 1'000'000;

struct CurveOptions {
    std::string file;
    std::string x_column = "1";
    std::string y_column = "2";
    CurveSettings curve;
    std::vector<double> at;
    unsigned points = 101;
    std::optional<double> from;
    std::optional<double> to;
    std::optional<double> period;
    bool logarithmic = false;
    bool json = false;
    std::string output;
    std::string svg;
    std::optional<std::string> title;
    std::optional<std::string> x_title;
    std::optional<std::string> y_title;
};

// The part of the axis to tabulate and draw.
AxisRange RangeOf(const CurveOptions& options, const CsvTable& table,
                  const std::vector<FPOINT>& points) {
    AxisRange range{points.front().x, points.back().x};
    for (const double x : options.at) {
        range = {std::min(range.low, x), std::max(range.high, x)};
    }
    range = {options.from.value_or(range.low), options.to.value_or(range.high)};
    if (options.logarithmic && range.low <= 0.0) {
        const std::string low = "x = " + str::DoubleNarrowText(range.low);
        if (options.from) {
            throw Failure("--from: " + low + " has no place on a logarithmic axis");
        }
        throw table.About(low + " has no place on a logarithmic axis (begin above 0 by --from)");
    }
    if (range.low > range.high) {
        throw Failure(str::DoubleNarrowText(range.low) + " to " +
                      str::DoubleNarrowText(range.high) +
                      " is no range of x: check --from and --to");
    }
    return range;
}

std::string Picture(const CurveOptions& options, const CsvTable& table, const MeasuredCurve& curve,
                    const AxisRange& range, std::size_t x_column, std::size_t y_column) {
    const Scale scale = options.logarithmic ? Scale::kLogarithmic : Scale::kLinear;
    const auto title_of = [&table](const std::optional<std::string>& given, std::size_t column,
                                   const char* otherwise) {
        const std::string header = table.ColumnTitle(column);
        return given.value_or(header.empty() ? otherwise : header);
    };
    SvgChart chart(options.title.value_or(PlainName(table.Name())),
                   {title_of(options.x_title, x_column, "x"), scale},
                   {title_of(options.y_title, y_column, "value")});

    Series line = LineOf(curve, scale, range);
    line.label = Described(options.curve);
    chart.Add(std::move(line));
    Series marks = MarksOf(curve, range);
    marks.label = "measured";
    chart.AddNote(NoteOfHidden(curve, marks));
    chart.Add(std::move(marks));
    return chart.Text();
}

std::string Json(const CurveOptions& options, const MeasuredCurve& curve,
                 const std::vector<CurveRow>& rows) {
    const math::fn::interpolate::CurveDomain domain = curve.Domain();
    JsonText json;
    json.BeginObject();
    json.Key("file").Value(options.file);
    json.Key("curve").Value(Described(options.curve));
    json.Key("tail_before").Value(Utf8(str::as_wstring(options.curve.before)));
    json.Key("tail_after").Value(Utf8(str::as_wstring(options.curve.after)));
    json.Key("period").Value(domain.period);
    json.Key("points").Count(curve.Points().size());
    json.Key("first_x").Value(domain.first);
    json.Key("last_x").Value(domain.last);
    json.Key("rows").BeginArray();
    for (const CurveRow& row : rows) {
        json.BeginObject();
        json.Key("x").Value(row.x).Key("value").Value(row.value);
        json.Key("derivative").Value(row.derivative).Key("integral").Value(row.integral);
        json.End();
    }
    json.End().End();
    return json.Text();
}

void RunCurve(CurveOptions& options, std::ostream& out) {
    if (options.period) {
        if (*options.period <= 0.0) {
            throw Failure("--period: a period must be above 0");
        }
        options.curve.period = *options.period;
    }
    const CsvTable table = CsvTable::ReadFile(options.file);
    const std::size_t x_column = table.Column(options.x_column);
    const std::size_t y_column = table.Column(options.y_column);
    std::vector<FPOINT> points = ReadPoints(table, x_column, y_column, options.curve);
    const AxisRange range = RangeOf(options, table, points);
    const MeasuredCurve curve = [&] {
        try {
            return MeasuredCurve(options.curve, std::move(points));
        } catch (const Failure& failure) {
            throw table.About(failure.what());
        }
    }();
    const Scale scale = options.logarithmic ? Scale::kLogarithmic : Scale::kLinear;
    const std::vector<CurveRow> rows = Tabulated(
        curve, options.at.empty() ? SpacedPlaces(scale, range, options.points) : options.at);
    std::string text = options.json ? Json(options, curve, rows) : CurveCsv(rows);

    std::vector<OutputFile> files;
    if (!options.svg.empty()) {
        files.push_back({options.svg, Picture(options, table, curve, range, x_column, y_column)});
    }
    if (!options.output.empty()) {
        files.push_back({options.output, std::move(text)});
        text.clear();
    }
    WriteFiles(files, options.file);
    out << text;
}

CLI::Option* AddTail(CLI::App& command, const std::string& name, math::fn::TailType& tail,
                     const std::string& description) {
    const auto read = [&tail, name](const std::string& text) {
        math::fn::TailType given;
        if (str::from_wstring(Wide(text), given).Failed() || !std::isfinite(given.value)) {
            throw CLI::ValidationError(
                name, Quoted(text) + " is none of None, Calc, Cycle, and not a slope (a number)");
        }
        tail = given;
    };
    return command.add_option_function<std::string>(name, read, description)->type_name("TAIL");
}

void AddShapeOptions(CLI::App& command, CurveOptions& options) {
    const std::string group = "Curve";
    AddWord<CurveKind>(command, "--kind", options.curve.kind,
                       {{"step", CurveKind::kStep},
                        {"linear", CurveKind::kLinear},
                        {"spline", CurveKind::kSpline}},
                       "step (a value holds until the next point), linear (the default), or spline")
        ->group(group);
    AddCount(command, "--tension", options.curve.tension, 0, 100,
             "How round a spline is, from 0 (straight lines) to 100; 50 unless given")
        ->group(group);
    AddCount(
        command, "--smooth", options.curve.smooth, 0, 100,
        "How closely a spline with tension keeps to the points; 100, the default, is through them")
        ->group(group);
    AddTail(
        command, "--tail-before", options.curve.before,
        "What the curve does before the first point: None (the default: undefined), Calc (goes on "
        "with its own slope; a step keeps its value), or a slope")
        ->group(group);
    AddTail(
        command, "--tail-after", options.curve.after,
        "What it does beyond the last point: None, Calc, a slope, or Cycle (repeats; before the "
        "first point it is undefined then)")
        ->group(group);
    AddNumber(command, "--period", options.period,
              "Length in x after which a Cycle repeats; the span of the points unless given, where "
              "the first y then stands in place of the last")
        ->group(group);
}

void AddPlaceOptions(CLI::App& command, CurveOptions& options) {
    const std::string group = "Places";
    CLI::Option* const at =
        AddNumberList(command, "--at", options.at, "Tabulate at these x")->group(group);
    AddCount(command, "--points", options.points, 2, kMostPoints,
             "Tabulate at so many evenly spaced x; 101 unless given")
        ->group(group)
        ->excludes(at);
    AddNumber(command, "--from", options.from, "First x; that of the first point unless given")
        ->group(group);
    AddNumber(command, "--to", options.to, "Last x; that of the last point unless given")
        ->group(group);
    command
        .add_flag("--log", options.logarithmic,
                  "Space the x evenly on a logarithmic axis, and draw on one")
        ->group(group);
}

void AddFileOptions(CLI::App& command, CurveOptions& options) {
    const std::string input = "Input";
    command
        .add_option("--x-column", options.x_column,
                    "Column of x, by header or number; 1 unless given")
        ->type_name("COLUMN")
        ->group(input);
    command.add_option("--y-column", options.y_column, "Column of the values; 2 unless given")
        ->type_name("COLUMN")
        ->group(input);
    const std::string output = "Output";
    command.add_flag("--json", options.json, "Print JSON instead of CSV; undefined is null")
        ->group(output);
    command
        .add_option("-o,--output", options.output,
                    "Write the table to a file instead of printing it")
        ->type_name("FILE")
        ->group(output);
    command.add_option("--svg", options.svg, "Draw points and curve into an SVG file")
        ->type_name("FILE")
        ->group(output);
    const auto add_title = [&](const char* name, std::optional<std::string>& text,
                               const char* what) {
        command.add_option(name, text, what)->type_name("TEXT")->group(output);
    };
    add_title("--title", options.title, "Title of the picture; the file's name unless given");
    add_title("--x-title", options.x_title,
              "Title of its x axis; the column's header unless given");
    add_title("--y-title", options.y_title, "Title of its y axis; likewise");
}

}  // namespace

void AddCurve(CLI::App& program, std::ostream& out) {
    const auto options = std::make_shared<CurveOptions>();
    CLI::App* const command =
        program.add_subcommand("curve", "Tabulate and draw a curve through measured points");
    command->add_option("FILE", options->file, "CSV file of the points, ordered by increasing x")
        ->required()
        ->type_name("");
    AddShapeOptions(*command, *options);
    AddPlaceOptions(*command, *options);
    AddFileOptions(*command, *options);
    command->footer(
        "Prints one row for each x: x,value,derivative,integral, the integral taken from the "
        "first\n"
        "point. A cell is empty where the curve has no value.\n\n"
        "The file has one point in each row; a header row and lines that begin with # are welcome, "
        "rows\n"
        "with a blank value are left out.\n\n"
        "Examples:\n"
        "  lmw curve soil.csv --kind spline --tail-before 0 --at 33,1500\n"
        "  lmw curve soil.csv --log --points 50 --svg soil.svg -o table.csv\n"
        "  lmw curve rain.csv --kind step --tail-after Cycle --period 12 --to 36\n");
    command->callback([options, command, &out] {
        for (const char* const name : {"--tension", "--smooth"}) {
            if (command->count(name) > 0 && options->curve.kind != CurveKind::kSpline) {
                throw Failure(std::string(name) + ": only a spline has it (--kind spline)");
            }
        }
        RunCurve(*options, out);
    });
}

}  // namespace lmw::tool
