#include "tools/lmw/curve_model.h"
#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"

#include <cstddef>
#include <string>
#include <utility>

namespace lmw::tool {
namespace {

constexpr double kYear = 12.0;  // months
constexpr AxisRange kMonths = {0.0, 3.0 * kYear};
constexpr std::size_t kDrawnYear = 3;  // the column of the file whose year is drawn

Series SumsOf(const MeasuredCurve& curve, const std::string& year) {
    Series sums{.label = year};
    for (const CurveRow& row : Tabulated(curve, SpacedPlaces(Scale::kLinear, kMonths, 361))) {
        sums.x.push_back(row.x);
        sums.y.push_back(row.integral);
    }
    return sums;
}

SvgChart ChartOf(const MeasuredCurve& curve, const std::string& year) {
    SvgChart chart("Precipitation at Seattle, " + year + ", repeated", {"month"},
                   {"rate (mm/month)"});
    Series steps = LineOf(curve, Scale::kLinear, kMonths);
    steps.label = "step function with a cyclic tail, period 12";
    steps.color = 0;
    chart.Add(std::move(steps));
    Series marks = MarksOf(curve, kMonths);
    marks.label = "measured";
    marks.color = 1;
    chart.Add(std::move(marks));
    return chart;
}

}  // namespace

void AddRain(DemoResults& results) {
    results.analysis = L"Rain";
    const CurveSettings yearly{
        .kind = CurveKind::kStep, .after = math::fn::TailType::Cycle(), .period = kYear};
    const CsvTable table = results.Table("precipitation-seattle");
    SvgChart sums("Precipitation at Seattle, each year repeated", {"month"}, {"sum (mm)"});
    sums.AddNotes(table.Comments());
    results.report +=
        "\nPrecipitation at Seattle: monthly steps, each year repeated (cyclic tail)\n\n"
        "  year      year's sum (mm)    sum of 30 months    rate in month 30.5 (mm/month)\n";
    for (std::size_t column = 1; column < table.Header().size(); ++column) {
        const std::string year = table.Header()[column].substr(0, 4);
        const MeasuredCurve curve(yearly, ReadPoints(table, 0, column, yearly));
        results.report += "  " + Padded(year, 8) + Column(curve.Integral(0.0, kYear), 12, 1) +
                          Column(curve.Integral(0.0, 30.0), 20, 1) +
                          Column(curve.Value(30.5), 20, 1) + "\n";
        sums.Add(SumsOf(curve, year));
        if (column == kDrawnYear) {
            SvgChart chart = ChartOf(curve, year);
            chart.AddNotes(table.Comments());
            results.Keep("precipitation.svg", chart.Text());
            results.Keep("precipitation.csv",
                         CurveCsv(Tabulated(curve, SpacedPlaces(Scale::kLinear, kMonths, 73))));
        }
    }
    results.Keep("precipitation-sums.svg", sums.Text());
}

}  // namespace lmw::tool
