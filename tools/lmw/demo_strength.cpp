#include "common/math/random.h"
#include "common/math/statistics.h"

#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {
namespace {

constexpr const char* kFile = "strength-dam";
constexpr unsigned kSeed = 1931;  // any seed will do; this is the year of the dam
constexpr int kTrials = 10000;
constexpr int kBins = 32;
constexpr double kSlope = 2.0;  // of the downstream face, horizontal to vertical
constexpr double kDepth = 8.0;  // m, of the slip surface, chosen for the example

// Factor of safety of a long dry slope of inclination b with a slip surface parallel to it:
//
//     F = c / (gamma z sin b cos b) + tan phi / tan b
//
// after D. W. Taylor (1948), Fundamentals of Soil Mechanics, chapter 16. With h to v as the slope,
// tan b = 1 / h and sin b cos b = h / (1 + h^2).
double Safety(double unit_weight, double tan_friction, double cohesion) {
    return cohesion / (unit_weight * kDepth * kSlope / (1.0 + kSlope * kSlope)) +
           tan_friction * kSlope;
}

class Strengths {
 public:
    explicit Strengths(DemoResults& results) : results_(results), table_(results.Table(kFile)) {}

    void Run() {
        results_.analysis = L"Strength";
        Sample_();
        Safety_();
        results_.Keep("strengths.csv", summary_.Text());
    }

 private:
    // Unit weight, tangent of the friction angle and cohesion of every trial.
    void Sample_() {
        if (table_.NumberOfRows() != values_.size()) {
            throw table_.About(std::to_string(values_.size()) + " rows are expected");
        }
        results_.report +=
            "\nStrength of the downstream shell, assumed, not that of the measured sand: " +
            std::to_string(kTrials) +
            " trials (deviation: standard deviation)\n\n"
            "                                normal law                sampled\n"
            "  quantity                   mean ± deviation            mean    "
            "deviation      least   greatest\n";
        summary_.Cell("quantity").Cell("mean").Cell("standard deviation");
        summary_.Cell("least").Cell("greatest").EndRow();
        math::Random random(kSeed);
        for (std::size_t i = 0; i < values_.size(); ++i) {
            const double mean = table_.Number(i, 1);
            const double deviation = table_.Number(i, 2);
            values_[i].resize(kTrials);
            random.ComputeNormal(values_[i], mean, deviation);
            math::StatisticsAccumulator statistics;
            statistics.Accumulate(values_[i]);
            Summarise_(table_.Text(i, 0), Decimals(mean, 3) + " ± " + Decimals(deviation, 3),
                       statistics);
        }
    }

    void Summarise_(const std::string& name, const std::string& law,
                    const math::StatisticsAccumulator& statistics) {
        results_.report += "  " + Padded(name, 31) + RightAligned(law, 15) +
                           Column(statistics.Mean(), 16, 3) +
                           Column(statistics.StandardDeviation(), 13, 3) +
                           Column(statistics.Min(), 11, 3) + Column(statistics.Max(), 11, 3) + "\n";
        summary_.Cell(name).Cell(statistics.Mean()).Cell(statistics.StandardDeviation());
        summary_.Cell(statistics.Min()).Cell(statistics.Max()).EndRow();
    }

    void Safety_() {
        std::vector<double> edges;
        for (int i = 0; i <= kBins; ++i) {
            edges.push_back((50.0 + 5.0 * i) / 100.0);  // 0.50, 0.55, ...: 1 is an edge
        }
        math::StatisticsAccumulator safety(edges);
        for (std::size_t trial = 0; trial < kTrials; ++trial) {
            safety.Accumulate(
                Safety(values_[0][trial], values_[1][trial], std::max(values_[2][trial], 0.0)));
        }
        Summarise_("factor of safety", "", safety);

        CsvText csv;
        csv.Cell("from").Cell("to").Cell("trials").EndRow();
        Series bars{.form = Form::kBars, .label = "trials", .x = edges};
        double failures = safety.BinCounts().front();
        for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
            const double count = safety.BinCounts()[i + 1];
            csv.Cell(edges[i]).Cell(edges[i + 1]).Cell(count).EndRow();
            bars.y.push_back(count);
            failures += edges[i] < 1.0 ? count : 0.0;
        }
        results_.Keep("safety.csv", csv.Text());
        results_.report += "  factors below 1: " + Decimals(100.0 * failures / kTrials, 2) +
                           " % (a long dry slope of " + Decimals(kSlope, 0) +
                           " : 1, slip surface at a vertical depth of " + Decimals(kDepth, 0) +
                           " m; no cohesion where a trial is below 0)\n";

        SvgChart chart("Factor of safety of a long dry slope of " + Decimals(kSlope, 0) + " : 1",
                       {"factor of safety"}, {"trials in a bin"});
        const double highest = *std::max_element(bars.y.begin(), bars.y.end());
        chart.Add(std::move(bars));
        chart.Add(
            {.label = "limit", .x = {1.0, 1.0}, .y = {0.0, highest}, .stroke = Stroke::kDashed});
        const double outside = safety.BinCounts().front() + safety.BinCounts().back();
        if (outside > 0.0) {
            chart.AddNote("Trials outside the range shown: " + Decimals(outside, 0) + ".");
        }
        chart.AddNote(Decimals(failures, 0) + " of " + std::to_string(kTrials) +
                      " trials are below 1.");
        chart.AddNotes(table_.Comments());
        results_.Keep("safety.svg", chart.Text());
    }

    DemoResults& results_;
    CsvTable table_;
    std::array<std::vector<double>, 3> values_;
    CsvText summary_;
};

}  // namespace

void AddStrengths(DemoResults& results) {
    Strengths(results).Run();
}

}  // namespace lmw::tool
