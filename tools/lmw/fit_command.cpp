#include "common/str/number_text.h"

#include "tools/lmw/arguments.h"
#include "tools/lmw/commands.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/fit_model.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"
#include "tools/lmw/whole_files.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace lmw::tool {
namespace {

constexpr std::array<const char*, 3> kParameters = {"a", "n", "m"};

struct FitOptions {
    std::string file;
    std::string x_column = "1";
    std::string y_column = "2";
    XMeaning meaning = XMeaning::kSuction;
    std::size_t unit = 0;  // in SuctionUnits
    std::optional<double> theta_s;
    bool json = false;
    std::string output;
    std::string residuals;
    std::string svg;
    std::optional<std::string> title;
};

std::array<double, 3> ParametersOf(const RetentionFit& fit) {
    return {fit.Result().a, fit.Result().n, fit.Result().m};
}

std::string PlusMinus(double standard_error) {
    return IsDefined(standard_error) ? " ± " + SixDigits(standard_error) : std::string();
}

std::string Report(const FitOptions& options, const RetentionFit& fit) {
    const auto line = [](std::string_view what, const std::string& value) {
        std::string text = "  ";
        text.append(what).append(26 - what.size(), ' ').append(value);
        return text + "\n";
    };
    const std::string unit = " " + fit.Unit().symbol;
    std::string text = "Fredlund-Xing curve, " + std::to_string(fit.Result().points) +
                       " points of " + options.file + "\n" + fit.Ending() + "\n\n";
    for (std::size_t k = 0; k < kParameters.size(); ++k) {
        text += line(kParameters[k], SixDigits(ParametersOf(fit)[k]) +
                                         PlusMinus(fit.StandardError(k)) + (k == 0 ? unit : ""));
    }
    text += line("saturated water content", str::DoubleNarrowText(fit.SaturatedWaterContent()) +
                                                (options.theta_s ? "" : " (the largest measured)"));
    text += line("limit", SixDigits(fit.Limit()) + unit);
    text += line("root mean square", SixDigits(fit.Result().root_mean_square));
    Residual largest;
    for (const Residual& residual : fit.Residuals()) {
        if (std::fabs(residual.fitted - residual.measured) >=
            std::fabs(largest.fitted - largest.measured)) {
            largest = residual;
        }
    }
    text += line("largest residual", SixDigits(largest.fitted - largest.measured) +
                                         " at a suction of " + SixDigits(largest.suction) + unit);
    return text + "\n" + fit.Definition() + "\n";
}

std::string ParametersCsv(const RetentionFit& fit) {
    CsvText csv;
    csv.Comment(fit.Ending());
    csv.Cell("quantity").Cell("value").Cell("standard error").Cell("unit").EndRow();
    for (std::size_t k = 0; k < kParameters.size(); ++k) {
        csv.Cell(kParameters[k]).Cell(ParametersOf(fit)[k]).Cell(fit.StandardError(k));
        csv.Cell(k == 0 ? fit.Unit().symbol : "").EndRow();
    }
    csv.Cell("saturated water content").Cell(fit.SaturatedWaterContent()).Cell("").Cell("");
    csv.EndRow();
    csv.Cell("limit").Cell(fit.Limit()).Cell("").Cell(fit.Unit().symbol).EndRow();
    csv.Cell("root mean square").Cell(fit.Result().root_mean_square).Cell("").Cell("").EndRow();
    return csv.Text();
}

std::string ResidualsCsv(const RetentionFit& fit) {
    CsvText csv;
    csv.Cell("suction (" + fit.Unit().symbol + ")").Cell("measured").Cell("fitted");
    csv.Cell("residual").EndRow();
    for (const Residual& residual : fit.Residuals()) {
        csv.Cell(residual.suction).Cell(residual.measured).Cell(residual.fitted);
        csv.Cell(residual.fitted - residual.measured).EndRow();
    }
    return csv.Text();
}

std::string Json(const FitOptions& options, const RetentionFit& fit) {
    JsonText json;
    json.BeginObject();
    json.Key("file").Value(options.file);
    json.Key("result").Value(fit.Ending());
    json.Key("code").Value(static_cast<double>(fit.Result().code));
    json.Key("iterations").Count(static_cast<std::size_t>(fit.Result().iterations));
    json.Key("points").Count(static_cast<std::size_t>(fit.Result().points));
    json.Key("definition").Value(fit.Definition());
    json.Key("unit").Value(fit.Unit().symbol);
    for (std::size_t k = 0; k < kParameters.size(); ++k) {
        json.Key(kParameters[k]).Value(ParametersOf(fit)[k]);
    }
    json.Key("saturated_water_content").Value(fit.SaturatedWaterContent());
    json.Key("limit").Value(fit.Limit());
    json.Key("sum_of_squares").Value(fit.Result().sum_of_squares);
    json.Key("root_mean_square").Value(fit.Result().root_mean_square);
    json.Key("covariance").BeginArray();
    for (std::size_t row = 0; row < 3; ++row) {
        json.BeginArray();
        for (std::size_t column = 0; column < 3; ++column) {
            json.Value(fit.Result().covariance[3 * row + column]);
        }
        json.End();
    }
    json.End().Key("residuals").BeginArray();
    for (const Residual& residual : fit.Residuals()) {
        json.BeginObject().Key("suction").Value(residual.suction);
        json.Key("measured").Value(residual.measured).Key("fitted").Value(residual.fitted).End();
    }
    json.End().End();
    return json.Text();
}

std::string Picture(const FitOptions& options, const RetentionFit& fit,
                    const std::string& water_content) {
    SvgChart chart(options.title.value_or("Fredlund-Xing curve, " + PlainName(options.file)),
                   {"suction (" + fit.Unit().symbol + ")", Scale::kLogarithmic},
                   {water_content.empty() ? "water content" : water_content});
    Series line = fit.Line(fit.Suctions());
    line.label = "fitted";
    chart.Add(std::move(line));
    Series marks = fit.Marks();
    marks.label = "measured";
    const std::size_t hidden = static_cast<std::size_t>(fit.Result().points) - marks.x.size();
    chart.Add(std::move(marks));
    const auto [a, n, m] = ParametersOf(fit);
    chart.AddNote("a = " + SixDigits(a) + " " + fit.Unit().symbol + ", n = " + SixDigits(n) +
                  ", m = " + SixDigits(m) + ", saturated " +
                  str::DoubleNarrowText(fit.SaturatedWaterContent()) + "; root mean square " +
                  SixDigits(fit.Result().root_mean_square) + ".");
    if (fit.Result().code != math::fn::flow::FredXingFit::kConverged) {
        chart.AddNote("The fit " + fit.Ending() + ".");
    }
    if (hidden > 0) {
        chart.AddNote("Points without suction have no place here: " + std::to_string(hidden) + ".");
    }
    return chart.Text();
}

void RunFit(const FitOptions& options, std::ostream& out) {
    const CsvTable table = CsvTable::ReadFile(options.file);
    const std::size_t y_column = table.Column(options.y_column);
    const RetentionFit fit = [&] {
        std::vector<FPOINT> points =
            ReadRetention(table, table.Column(options.x_column), y_column, options.meaning);
        try {
            return RetentionFit(std::move(points), SuctionUnits()[options.unit], options.theta_s);
        } catch (const Failure& failure) {
            throw table.About(failure.what());
        }
    }();
    std::vector<OutputFile> files;
    if (!options.output.empty()) {
        files.push_back({options.output, ParametersCsv(fit)});
    }
    if (!options.residuals.empty()) {
        files.push_back({options.residuals, ResidualsCsv(fit)});
    }
    if (!options.svg.empty()) {
        files.push_back({options.svg, Picture(options, fit, table.ColumnTitle(y_column))});
    }
    const std::string text = options.json ? Json(options, fit) : Report(options, fit);
    WriteFiles(files, options.file);
    out << text;
}

void AddInputOptions(CLI::App& command, FitOptions& options) {
    const std::string group = "Input";
    command
        .add_option("--x-column", options.x_column,
                    "Column of suction, by header or number; 1 unless given")
        ->type_name("COLUMN")
        ->group(group);
    command
        .add_option("--y-column", options.y_column, "Column of the water content; 2 unless given")
        ->type_name("COLUMN")
        ->group(group);
    AddWord<XMeaning>(command, "--x", options.meaning,
                      {{"suction", XMeaning::kSuction}, {"pressure", XMeaning::kPressure}},
                      "suction (the default), or pressure: pore-water pressure, below 0 in suction")
        ->group(group);
    std::vector<Word<std::size_t>> units;
    for (const SuctionUnit& unit : SuctionUnits()) {
        units.push_back({unit.word, units.size()});
    }
    AddWord<std::size_t>(command, "--unit", options.unit, units,
                         "Unit of x: kPa (the default), Pa, psf, psi, or m, cm, ft of water")
        ->group(group);
    AddNumber(command, "--saturated", options.theta_s,
              "Saturated water content, which is held; the largest measured unless given")
        ->group(group);
}

}  // namespace

void AddFit(CLI::App& program, std::ostream& out) {
    const auto options = std::make_shared<FitOptions>();
    CLI::App* const command =
        program.add_subcommand("fit", "Fit a Fredlund-Xing curve to measured retention points");
    command->add_option("FILE", options->file, "CSV file of the points, in any order")
        ->required()
        ->type_name("");
    AddInputOptions(*command, *options);
    const std::string group = "Output";
    command->add_flag("--json", options->json, "Print JSON instead of a report; undefined is null")
        ->group(group);
    const auto add_file = [&](const char* names, std::string& file, const char* what) {
        command->add_option(names, file, what)->type_name("FILE")->group(group);
    };
    add_file("-o,--output", options->output, "Write the parameters to a CSV file");
    add_file("--residuals", options->residuals, "Write measured and fitted values to a CSV file");
    add_file("--svg", options->svg, "Draw points and curve into an SVG file");
    command->add_option("--title", options->title, "Title of the picture")
        ->type_name("TEXT")
        ->group(group);
    command->footer(
        "Prints the parameters a, n, m of the curve, each with its standard error, and how well "
        "it\n"
        "follows the points; last the curve as the text of a function over pore-water pressure, "
        "as\n"
        "lmw fn takes it. The curve reaches 0 at a suction of 1e6 kPa.\n\n"
        "Examples:\n"
        "  lmw fit soil.csv --unit cm --svg soil.svg\n"
        "  lmw fit soil.csv --x pressure --saturated 0.43 --json\n");
    command->callback([options, &out] { RunFit(*options, out); });
}

}  // namespace lmw::tool
