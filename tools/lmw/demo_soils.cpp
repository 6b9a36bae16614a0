#include "common/fn/evaluate.h"
#include "common/fn/kinds.h"
#include "common/math/fpoint.h"
#include "common/str/number_text.h"
#include "common/undefined.h"

#include "tools/lmw/curve_model.h"
#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/fit_model.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {
namespace {

using math::fn::TailType;

struct Soil {
    const char* name = "";
    const char* file = "";
    std::optional<double> saturated;  // the water content at saturation, where it was measured
};

constexpr std::array<Soil, 3> kSoils = {{{"sand, Berlin", "retention-sand-berlin", 0.315},
                                         {"loess, Rosdorf", "retention-loess-rosdorf", {}},
                                         {"clay, Seelow", "retention-clay-seelow", 0.557}}};
constexpr AxisRange kSuctions = {10.0, 20000.0};  // cm of water, on a logarithmic axis

class Soils {
 public:
    explicit Soils(DemoResults& results) : results_(results) {}

    std::vector<FittedSoil> Run() {
        results_.analysis = L"Soils";
        Retention_();
        std::vector<FittedSoil> fitted = Fits_();
        Conductivity_();
        return fitted;
    }

 private:
    // Water content over suction. Wetter than the first point the soil stays as it is there; drier
    // than the last the curve goes on with its end slope.
    void Retention_() {
        CurveSettings linear{
            .kind = CurveKind::kLinear, .before = TailType::Slope(0.0), .after = TailType::Calc()};
        CurveSettings spline = linear;
        spline.kind = CurveKind::kSpline;
        SvgChart all("Measured retention of three soils",
                     {"suction (cm of water)", Scale::kLogarithmic}, {"water content (cm³/cm³)"});
        results_.report +=
            "\nRetention: volumetric water content of three soils, spline through the measured "
            "points\n"
            "(available: water between suctions of 300 and 15000 cm, in % of the volume)\n\n"
            "                          water content at a suction of (cm)     slope at\n"
            "  soil            points     100     300    1000   15000      1000 cm (1/cm)    "
            "available (%)\n";
        for (std::size_t i = 0; i < kSoils.size(); ++i) {
            const Soil& soil = kSoils[i];
            const CsvTable table = results_.Table(soil.file);
            const MeasuredCurve straight(linear, ReadPoints(table, 0, 1, linear));
            const MeasuredCurve round(spline, ReadPoints(table, 0, 1, spline));
            results_.report += "  " + Padded(soil.name, 16) +
                               Column(static_cast<double>(round.Points().size()), 6, 0);
            for (const double suction : {100.0, 300.0, 1000.0, 15000.0}) {
                results_.report += Column(round.Value(suction), 8, 4);
            }
            results_.report += Column(round.Derivative(1000.0), 18, 8) +
                               Column(100.0 * (round.Value(300.0) - round.Value(15000.0)), 11, 1) +
                               "\n";

            results_.Keep(
                soil.file + std::string(".csv"),
                CurveCsv(Tabulated(round, SpacedPlaces(Scale::kLogarithmic, kSuctions, 67))));
            SvgChart chart(std::string("Retention of ") + soil.name,
                           {"suction (cm of water)", Scale::kLogarithmic},
                           {"water content (cm³/cm³)"});
            AddTo_(chart, round, Described(spline), 0, Stroke::kSolid);
            AddTo_(chart, straight, Described(linear), 6, Stroke::kDashed);
            AddMarksTo_(chart, round, "measured", 1);
            chart.AddNotes(table.Comments());
            results_.Keep(soil.file + std::string(".svg"), chart.Text());
            AddTo_(all, round, soil.name, i, Stroke::kSolid);
            AddMarksTo_(all, round, "", i);
        }
        all.AddNote("Rings are measured, lines are splines of tension 50.");
        results_.Keep("retention.svg", all.Text());
    }

    // The closed-form curve through the same points. The parameters are written with six digits,
    // and the tabulated curve is that of the parameters as written: a reader can repeat it, and it
    // is the same on every platform.
    std::vector<FittedSoil> Fits_() {
        constexpr AxisRange kAllSuctions = {1.0, 1e7};  // cm; the curves end in 0 at 1.02e7
        const SuctionUnit& unit =
            *std::find_if(SuctionUnits().begin(), SuctionUnits().end(),
                          [](const SuctionUnit& each) { return each.word == "cm"; });
        const double kilopascals = unit.units.pressure / 1000.0;
        SvgChart all("Fredlund-Xing curves of three soils",
                     {"suction (cm of water)", Scale::kLogarithmic}, {"water content (cm³/cm³)"});
        CsvText parameters;
        parameters.Cell("soil").Cell("saturated").Cell("a (kPa)").Cell("n").Cell("m");
        parameters.Cell("root mean square").Cell("standard error of a (kPa)").Cell("of n");
        parameters.Cell("of m").Cell("determined").EndRow();
        results_.report +=
            "\nFredlund-Xing curves through the same points, by least squares (± standard error)\n"
            "(saturated content: measured of sand and clay, the largest measured of the loess)\n\n"
            "  soil            saturated          a (kPa)                n                m"
            "    root mean square\n";
        std::vector<FittedSoil> fitted;
        std::vector<math::fn::flow::FredXing> curves;
        for (std::size_t i = 0; i < kSoils.size(); ++i) {
            const Soil& soil = kSoils[i];
            const CsvTable table = results_.Table(soil.file);
            const RetentionFit fit(ReadRetention(table, 0, 1, XMeaning::kSuction), unit,
                                   soil.saturated);
            fitted.push_back(FitRow_(soil, fit, kilopascals, parameters));
            const FittedSoil& written = fitted.back();
            curves.emplace_back(written.a / kilopascals, written.n, written.m, written.saturated,
                                fit.Limit());
            results_.Keep(soil.file + std::string("-fit.svg"), FitPicture_(soil, table, fit));
            AddFitTo_(all, fit, kAllSuctions, soil.name, i, "", i);
        }
        all.AddNote("Rings are measured, lines are fitted; saturated water contents are held.");
        results_.Keep("retention-fits.svg", all.Text());
        results_.Keep("retention-fit-parameters.csv", parameters.Text());
        results_.Keep("retention-fits.csv",
                      CurvesCsv_(curves, SpacedPlaces(Scale::kLogarithmic, kAllSuctions, 71)));
        return fitted;
    }

    // One line of the report and one row of the parameters: the soil as it is written there.
    FittedSoil FitRow_(const Soil& soil, const RetentionFit& fit, double kilopascals,
                       CsvText& parameters) {
        const math::fn::flow::FredXingFit& result = fit.Result();
        FittedSoil written{soil.name, soil.file, fit.SaturatedWaterContent()};
        const std::array<std::pair<double, double*>, 3> values = {
            {{result.a * kilopascals, &written.a}, {result.n, &written.n}, {result.m, &written.m}}};
        results_.report += "  " + Padded(soil.name, 16) + Column(written.saturated, 9, 3);
        parameters.Cell(soil.name).Cell(written.saturated);
        for (std::size_t k = 0; k < values.size(); ++k) {
            const std::string text = SixDigits(values[k].first);
            if (!ReadFinite(text, *values[k].second)) {
                throw Failure(results_.DataFile(soil.file) + ": the fit gives no numbers");
            }
            parameters.Cell(text);
            const double error = StandardError_(fit, k, kilopascals);
            results_.report += RightAligned(
                Rounded_(values[k].first, 4) + (IsDefined(error) ? " ± " + Rounded_(error, 2) : ""),
                17);
        }
        const bool determined = result.code == math::fn::flow::FredXingFit::kConverged;
        results_.report += Column(result.root_mean_square, 20, 6) +
                           (determined ? "\n" : "  not determined by the points\n");
        parameters.Cell(SixDigits(result.root_mean_square));
        for (std::size_t k = 0; k < values.size(); ++k) {
            const double error = StandardError_(fit, k, kilopascals);
            parameters.Cell(IsDefined(error) ? SixDigits(error) : "");
        }
        parameters.Cell(determined ? "yes" : "no").EndRow();
        return written;
    }

    // Water contents over suctions in cm, a column for each soil.
    static std::string CurvesCsv_(const std::vector<math::fn::flow::FredXing>& curves,
                                  const std::vector<double>& suctions) {
        CsvText csv;
        csv.Cell("suction (cm)");
        for (const Soil& soil : kSoils) {
            csv.Cell(soil.name);
        }
        csv.EndRow();
        for (const double suction : suctions) {
            csv.Cell(suction);
            for (const math::fn::flow::FredXing& curve : curves) {
                csv.Cell(curve(-suction));
            }
            csv.EndRow();
        }
        return csv.Text();
    }

    static double StandardError_(const RetentionFit& fit, std::size_t parameter,
                                 double kilopascals) {
        const double error = fit.StandardError(parameter);
        return IsDefined(error) && parameter == 0 ? error * kilopascals : error;
    }

    // A number with so many significant digits.
    static std::string Rounded_(double value, int digits) {
        std::array<char, 32> buffer{};
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::general, digits);
        return {buffer.data(), end.ptr};
    }

    [[nodiscard]] static std::string FitPicture_(const Soil& soil, const CsvTable& table,
                                                 const RetentionFit& fit) {
        SvgChart chart(std::string("Fredlund-Xing curve of ") + soil.name,
                       {"suction (cm of water)", Scale::kLogarithmic}, {"water content (cm³/cm³)"});
        AddFitTo_(chart, fit, fit.Suctions(), "fitted", 0, "measured", 1);
        chart.AddNotes(table.Comments());
        return chart.Text();
    }

    static void AddFitTo_(SvgChart& chart, const RetentionFit& fit, const AxisRange& suctions,
                          const std::string& label, std::size_t color,
                          const std::string& marks_label, std::size_t marks_color) {
        Series line = fit.Line(suctions);
        line.label = label;
        line.color = color;
        chart.Add(std::move(line));
        Series marks = fit.Marks();
        marks.label = marks_label;
        marks.color = marks_color;
        chart.Add(std::move(marks));
    }

    // Conductivity over suction: straight lines between the points on two logarithmic scales.
    void Conductivity_() {
        SvgChart chart("Measured conductivity of three soils",
                       {"suction (cm of water)", Scale::kLogarithmic},
                       {"conductivity (cm/day)", Scale::kLogarithmic});
        results_.report +=
            "\nConductivity, interpolated on logarithmic scales; none beyond the measured "
            "points\n\n"
            "                          conductivity (cm/day) at a suction of (cm)\n"
            "  soil            points          50         100         300        1000       "
            "10000\n";
        for (std::size_t i = 0; i < kSoils.size(); ++i) {
            const CsvTable table = results_.Table(kSoils[i].file);
            Series marks{.form = Form::kPoints, .color = i};
            std::string text;
            for (const FPOINT& point : ReadPoints(table, 0, 2, CurveSettings())) {
                text += (text.empty() ? "" : ";") + str::DoubleNarrowText(point.x) + " " +
                        str::DoubleNarrowText(point.y);
                marks.x.push_back(point.x);
                marks.y.push_back(point.y);
            }
            const IFn conductivity = Interpolated_(text);
            results_.report += "  " + Padded(kSoils[i].name, 16) +
                               Column(static_cast<double>(marks.x.size()), 6, 0);
            for (const double suction : {50.0, 100.0, 300.0, 1000.0, 10000.0}) {
                const double value = fn::impl::SafeCalculate(*conductivity, &suction, nullptr);
                results_.report += RightAligned(IsDefined(value) ? Rounded_(value, 3) : "-", 12);
            }
            results_.report += "\n";
            Series line{.label = kSoils[i].name, .color = i};
            for (const double suction : SpacedPlaces(Scale::kLogarithmic, kSuctions, 400)) {
                line.x.push_back(suction);
                line.y.push_back(fn::impl::SafeCalculate(*conductivity, &suction, nullptr));
            }
            chart.Add(std::move(line));
            chart.Add(std::move(marks));
        }
        chart.AddNote("Rings are measured; lines are straight between them on these scales.");
        results_.Keep("conductivity.svg", chart.Text());
    }

    static IFn Interpolated_(const std::string& points) {
        IFn function;
        const gtl::status made =
            fn::Create(Wide("Linear(DataInit=" + points +
                            ",SlopeBefore=None,SlopeAfter=None,LogInput=true,LogOutput=true)"),
                       function);
        Require(made);
        return function;
    }

    static void AddTo_(SvgChart& chart, const MeasuredCurve& curve, const std::string& label,
                       std::size_t color, Stroke stroke) {
        Series line = LineOf(curve, Scale::kLogarithmic, kSuctions);
        line.label = label;
        line.color = color;
        line.stroke = stroke;
        chart.Add(std::move(line));
    }

    static void AddMarksTo_(SvgChart& chart, const MeasuredCurve& curve, const std::string& label,
                            std::size_t color) {
        Series marks = MarksOf(curve, kSuctions);
        chart.AddNote(NoteOfHidden(curve, marks));
        marks.label = label;
        marks.color = color;
        chart.Add(std::move(marks));
    }

    DemoResults& results_;
};

}  // namespace

std::vector<FittedSoil> AddSoils(DemoResults& results) {
    return Soils(results).Run();
}

}  // namespace lmw::tool
