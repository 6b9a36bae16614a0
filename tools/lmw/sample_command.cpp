#include "common/math/random.h"
#include "common/math/statistics.h"
#include "common/str/number_text.h"

#include "tools/lmw/arguments.h"
#include "tools/lmw/commands.h"
#include "tools/lmw/csv_table.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/json_text.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/whole_files.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {
namespace {

constexpr unsigned kMostNumbers = 10'000'000;
constexpr unsigned kMostBins = 1000;
// The histogram of normal numbers ends so many sigmas from the mean: one number in 16000 is beyond.
constexpr double kShownSigmas = 4.0;

enum class Law { kNormal, kUniform };

struct SampleOptions {
    Law law = Law::kNormal;
    std::optional<double> mean;
    std::optional<double> sigma;
    std::optional<double> from;
    std::optional<double> to;
    unsigned count = 1000;
    unsigned seed = math::Random::DefaultSeed();
    unsigned bins = 24;
    bool json = false;
    std::string output;
    std::string svg;
    std::optional<std::string> title;
    std::string x_title = "value";
};

void CheckLaw(const SampleOptions& options) {
    const bool normal = options.law == Law::kNormal;
    if (normal ? options.from || options.to : options.mean || options.sigma) {
        throw Failure(normal ? "--from and --to belong to --law uniform"
                             : "--mean and --sigma belong to --law normal");
    }
    if (normal && options.sigma && *options.sigma <= 0.0) {
        throw Failure("--sigma: a standard deviation must be above 0");
    }
    if (!normal && options.from.value_or(0.0) >= options.to.value_or(1.0)) {
        throw Failure(str::DoubleNarrowText(options.from.value_or(0.0)) + " to " +
                      str::DoubleNarrowText(options.to.value_or(1.0)) +
                      " is no range: check --from and --to");
    }
}

std::string Described(const SampleOptions& options) {
    if (options.law == Law::kNormal) {
        return "normal, mean " + str::DoubleNarrowText(options.mean.value_or(0.0)) + ", sigma " +
               str::DoubleNarrowText(options.sigma.value_or(1.0));
    }
    return "uniform, " + str::DoubleNarrowText(options.from.value_or(0.0)) + " to " +
           str::DoubleNarrowText(options.to.value_or(1.0));
}

// Evenly spaced edges over the range that the histogram shows.
std::vector<double> BinEdges(const SampleOptions& options) {
    AxisRange range{options.from.value_or(0.0), options.to.value_or(1.0)};
    if (options.law == Law::kNormal) {
        const double mean = options.mean.value_or(0.0);
        const double half = kShownSigmas * options.sigma.value_or(1.0);
        range = {mean - half, mean + half};
    }
    std::vector<double> edges;
    for (unsigned i = 0; i <= options.bins; ++i) {
        const double part = static_cast<double>(i) / options.bins;
        edges.push_back(range.low * (1.0 - part) + range.high * part);
    }
    const auto not_above = std::adjacent_find(edges.begin(), edges.end(), std::greater_equal<>());
    if (not_above != edges.end() || !std::isfinite(edges.front()) || !std::isfinite(edges.back())) {
        throw Failure("--bins: the numbers cannot be told into " + std::to_string(options.bins) +
                      " bins");
    }
    return edges;
}

struct Sample {
    std::vector<double> values;
    math::StatisticsAccumulator statistics;
};

Sample Draw(const SampleOptions& options) {
    Sample sample{std::vector<double>(options.count),
                  math::StatisticsAccumulator(BinEdges(options))};
    math::Random random(options.seed);
    if (options.law == Law::kNormal) {
        random.ComputeNormal(sample.values, options.mean.value_or(0.0),
                             options.sigma.value_or(1.0));
    } else {
        random.ComputeUniform(sample.values, options.from.value_or(0.0), options.to.value_or(1.0));
    }
    sample.statistics.Accumulate(sample.values);
    return sample;
}

// How many numbers the law lets expect in each bin, drawn as density times bin width.
Series Expected(const SampleOptions& options, const std::vector<double>& edges) {
    const double width = (edges.back() - edges.front()) / options.bins;
    Series line{.form = Form::kLine, .label = "expected by the law"};
    if (options.law == Law::kUniform) {
        const double level = static_cast<double>(options.count) / options.bins;
        line.x = {edges.front(), edges.back()};
        line.y = {level, level};
        return line;
    }
    constexpr int kPlaces = 200;
    const double scale =
        options.count * width / (options.sigma.value_or(1.0) * std::sqrt(2.0 * std::numbers::pi));
    for (int i = 0; i <= kPlaces; ++i) {
        const double z = kShownSigmas * (2.0 * i / kPlaces - 1.0);
        line.x.push_back(options.mean.value_or(0.0) + z * options.sigma.value_or(1.0));
        line.y.push_back(scale * std::exp(-0.5 * z * z));
    }
    return line;
}

std::string Picture(const SampleOptions& options, const math::StatisticsAccumulator& statistics) {
    const std::vector<double> edges(statistics.BinEdges().begin(), statistics.BinEdges().end());
    const auto counts = statistics.BinCounts();
    Series bars{.form = Form::kBars, .label = "drawn", .x = edges};
    bars.y.assign(counts.begin() + 1, counts.end() - 1);
    SvgChart chart(options.title.value_or(Described(options)), {options.x_title},
                   {"numbers in a bin"});
    chart.Add(std::move(bars));
    chart.Add(Expected(options, edges));
    chart.AddNote(std::to_string(statistics.Count()) + " numbers of seed " +
                  std::to_string(options.seed) + ": mean " +
                  str::DoubleNarrowText(statistics.Mean()) + ", standard deviation " +
                  str::DoubleNarrowText(statistics.StandardDeviation()) + ".");
    const std::uint32_t outside = counts.front() + counts.back();
    if (outside > 0) {
        chart.AddNote("Numbers outside the range shown: " + std::to_string(outside) + ".");
    }
    return chart.Text();
}

std::string Summary(const SampleOptions& options, const math::StatisticsAccumulator& statistics) {
    if (options.json) {
        JsonText json;
        json.BeginObject();
        json.Key("law").Value(Described(options));
        json.Key("seed").Count(options.seed);
        json.Key("count").Count(static_cast<std::size_t>(statistics.Count()));
        json.Key("mean").Value(statistics.Mean());
        json.Key("standard_deviation").Value(statistics.StandardDeviation());
        json.Key("minimum").Value(statistics.Min());
        json.Key("maximum").Value(statistics.Max());
        json.Key("edges").BeginArray();
        for (const double edge : statistics.BinEdges()) {
            json.Value(edge);
        }
        json.End();
        json.Key("counts").BeginArray();
        for (const std::uint32_t count : statistics.BinCounts()) {
            json.Count(count);
        }
        json.End().End();
        return json.Text();
    }
    CsvText csv;
    csv.Cell("count").Cell("mean").Cell("standard_deviation").Cell("minimum").Cell("maximum");
    csv.EndRow();
    csv.Cell(static_cast<double>(statistics.Count())).Cell(statistics.Mean());
    csv.Cell(statistics.StandardDeviation()).Cell(statistics.Min()).Cell(statistics.Max());
    csv.EndRow();
    return csv.Text();
}

void RunSample(const SampleOptions& options, std::ostream& out) {
    CheckLaw(options);
    const Sample sample = Draw(options);
    std::vector<OutputFile> files;
    if (!options.svg.empty()) {
        files.push_back({options.svg, Picture(options, sample.statistics)});
    }
    if (!options.output.empty()) {
        CsvText csv;
        csv.Cell("value").EndRow();
        for (const double value : sample.values) {
            csv.Cell(value).EndRow();
        }
        files.push_back({options.output, csv.Text()});
    }
    WriteFiles(files);
    out << Summary(options, sample.statistics);
}

void AddLawOptions(CLI::App& command, SampleOptions& options) {
    const std::string group = "Law";
    AddWord<Law>(command, "--law", options.law,
                 {{"normal", Law::kNormal}, {"uniform", Law::kUniform}},
                 "normal (the default) or uniform")
        ->group(group);
    AddNumber(command, "--mean", options.mean, "Mean of a normal law; 0 unless given")
        ->group(group);
    AddNumber(command, "--sigma", options.sigma,
              "Standard deviation of a normal law; 1 unless given")
        ->group(group);
    AddNumber(command, "--from", options.from, "Lower end of a uniform law; 0 unless given")
        ->group(group);
    AddNumber(command, "--to", options.to, "Upper end of a uniform law; 1 unless given")
        ->group(group);
}

void AddDrawOptions(CLI::App& command, SampleOptions& options) {
    const std::string group = "Drawing";
    AddCount(command, "--count", options.count, 1, kMostNumbers,
             "How many numbers; 1000 unless given")
        ->group(group);
    AddCount(command, "--seed", options.seed, 0, std::numeric_limits<unsigned>::max(),
             "Seed of the stream; the same seed gives the same numbers everywhere")
        ->group(group);
    AddCount(command, "--bins", options.bins, 1, kMostBins,
             "Bins of the histogram; 24 unless given")
        ->group(group);
}

void AddOutputOptions(CLI::App& command, SampleOptions& options) {
    const std::string group = "Output";
    command.add_flag("--json", options.json, "Print JSON, with the histogram, instead of CSV")
        ->group(group);
    command.add_option("-o,--output", options.output, "Write the numbers to a CSV file")
        ->type_name("FILE")
        ->group(group);
    command.add_option("--svg", options.svg, "Draw the histogram into an SVG file")
        ->type_name("FILE")
        ->group(group);
    command.add_option("--title", options.title, "Title of the picture; the law unless given")
        ->type_name("TEXT")
        ->group(group);
    command.add_option("--x-title", options.x_title, "Title of its x axis")
        ->type_name("TEXT")
        ->group(group);
}

}  // namespace

void AddSample(CLI::App& program, std::ostream& out) {
    const auto options = std::make_shared<SampleOptions>();
    CLI::App* const command = program.add_subcommand(
        "sample", "Draw random numbers, summarise them, draw their histogram");
    AddLawOptions(*command, *options);
    AddDrawOptions(*command, *options);
    AddOutputOptions(*command, *options);
    command->footer(
        "Prints one row: count,mean,standard_deviation,minimum,maximum.\n\n"
        "The histogram of a normal law shows four standard deviations to either side of the "
        "mean.\n\n"
        "Examples:\n"
        "  lmw sample --mean 31 --sigma 2.5 --count 10000 --svg friction.svg\n"
        "  lmw sample --law uniform --from 5 --to 8 --seed 42 -o cohesion.csv\n");
    command->callback([options, &out] { RunSample(*options, out); });
}

}  // namespace lmw::tool
