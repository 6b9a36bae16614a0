#include "common/datatable/data_param_type.h"
#include "common/fn/attributes.h"
#include "common/fn/evaluate.h"
#include "common/fn/fn_attr.h"
#include "common/fn/kinds.h"
#include "common/math/tolerance.h"
#include "common/str/number_text.h"

#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {
namespace {

constexpr const char* kSoilFile = "section-dam-soils";
constexpr const char* kStorageFile = "reservoir-oroville";
constexpr const char* kCapacityFile = "reservoir-oroville-capacity";

// The reservoir's measured levels, brought to the height of the dam: these elevations (ft) stand
// for the foundation and for full water.
constexpr double kFoundation = 520.0;
constexpr double kFull = 900.0;

class Functions {
 public:
    Functions(DemoResults& results, const std::vector<FittedSoil>& soils)
        : results_(results), soils_(soils) {}

    DamFunctions Run() {
        results_.analysis = L"Functions";
        definitions_.Cell("name").Cell("definition").EndRow();
        DamFunctions functions;
        functions.water_contents = WaterContents_();
        functions.level = Level_();
        results_.Keep("functions.csv", definitions_.Text());
        return functions;
    }

 private:
    // The function of a text, given a name and the parameters it relates.
    IFn Made_(const std::string& text, const std::string& name, DataParamType input,
              DataParamType output) {
        IFn function;
        gtl::status result = fn::Create(Wide(text), function);
        const auto set = [&function, &result](const FnAttr& attribute, const auto& value) {
            if (result.Succeeded()) {
                result = fn::attributes::Set(function.pImpl_mutable(), attribute, value);
            }
        };
        set(FnAttrDescription(), Wide(name));
        set(FnAttrInputParam(), input);
        set(FnAttrOutputParam(), output);
        if (result.Succeeded()) {
            result = function.UpdateCalculatedValues();
        }
        Require(result, name);
        definitions_.Cell(name).Cell(Utf8(fn::impl::as_wstring(*function))).EndRow();
        return function;
    }

    [[nodiscard]] const FittedSoil& SoilOf_(const std::string& region) const {
        const CsvTable table = results_.Table(kSoilFile);
        for (std::size_t row = 0; row < table.NumberOfRows(); ++row) {
            for (const FittedSoil& soil : soils_) {
                if (table.Text(row, 0) == region && table.Text(row, 1) == soil.file) {
                    return soil;
                }
            }
        }
        throw table.About("no soil for the region " + Quoted(region));
    }

    // The fitted curve of each region's soil.
    std::vector<IFn> WaterContents_() {
        results_.report +=
            "\nFunctions of the dam, from definition texts (which soil stands for which region is "
            "assumed)\n\n"
            "                                        water content at a pressure of (kPa)\n"
            "  region            soil                   0       -1      -10     -100    -1000\n";
        std::vector<IFn> functions;
        for (const std::string& region : results_.Regions(kDamSection).names) {
            const FittedSoil& soil = SoilOf_(region);
            const std::string text = "FredlundXing(A=" + str::DoubleNarrowText(soil.a) +
                                     ",N=" + str::DoubleNarrowText(soil.n) +
                                     ",M=" + str::DoubleNarrowText(soil.m) +
                                     ",SatWC=" + str::DoubleNarrowText(soil.saturated) + ")";
            functions.push_back(Made_(text, region + ": " + soil.name, DataParamType::PorePressure,
                                      DataParamType::VolumetricWaterContent));
            results_.report += "  " + Padded(region, 18) + Padded(soil.name, 15);
            for (const double pressure : {0.0, -1.0, -10.0, -100.0, -1000.0}) {
                results_.report +=
                    Column(fn::impl::SafeCalculate(*functions.back(), &pressure, nullptr), 9, 4);
            }
            results_.report += "\n";
        }
        return functions;
    }

    // The level month by month, from the stored volumes and the elevation by volume. Each holds
    // until the next one, and the series begins again at its end.
    IFn Level_() {
        const CsvTable capacities = results_.Table(kCapacityFile);
        std::string points;
        for (std::size_t row = 0; row < capacities.NumberOfRows(); ++row) {
            points.append(row == 0 ? "" : ";").append(capacities.Text(row, 1));
            points.append(" ").append(capacities.Text(row, 0));
        }
        const IFn elevation = Made_("Linear(DataInit=" + points + ")", "elevation by storage",
                                    DataParamType::Null, DataParamType::Null);

        const CsvTable storages = results_.Table(kStorageFile);
        points.clear();
        Series measured{.form = Form::kPoints, .label = "measured", .color = 1};
        for (std::size_t row = 0; row < storages.NumberOfRows(); ++row) {
            const double storage = storages.Number(row, 1);
            const std::string level = Decimals(
                kFullWater *
                    (fn::impl::SafeCalculate(*elevation, &storage, nullptr) - kFoundation) /
                    (kFull - kFoundation),
                3);
            points.append(row == 0 ? "" : ";").append(storages.Text(row, 0));
            points.append(" ").append(level);
            measured.x.push_back(storages.Number(row, 0));
            static_cast<void>(ReadFinite(level, measured.y.emplace_back()));
        }
        const auto period = static_cast<double>(storages.NumberOfRows());
        IFn level = Made_("Step(DataInit=" + points +
                              ",SlopeAfter=Cycle,FunctionPeriod=" + Decimals(period, 0) + ")",
                          "reservoir level", DataParamType::ElapsedTime,
                          DataParamType::WaterTableElevation);
        const fn::impl::ComputedResult sum =
            fn::impl::Integrate(0.0, period, math::algorithm::Tolerance<double>(), *level);
        results_.report += "\n  reservoir level: lowest " +
                           Decimals(*std::min_element(measured.y.begin(), measured.y.end()), 3) +
                           " m, mean " + Decimals(sum.value / period, 3) + " m, highest " +
                           Decimals(*std::max_element(measured.y.begin(), measured.y.end()), 3) +
                           " m above the foundation; repeated after " + Decimals(period, 0) +
                           " months\n  (the measured reservoir's elevations of " +
                           Decimals(kFoundation, 0) + " and " + Decimals(kFull, 0) +
                           " ft stand for foundation and full water)\n";
        Draw_(level, period, std::move(measured), storages);
        return level;
    }

    void Draw_(const IFn& level, double period, Series measured, const CsvTable& storages) {
        Series steps{.form = Form::kSteps,
                     .label = "step function with a cyclic tail, period " + Decimals(period, 0),
                     .color = 0};
        CsvText csv;
        csv.Cell("month").Cell("level (m)").EndRow();
        for (int month = 0; month < 1.5 * period; ++month) {
            const double x = month;
            const double y = fn::impl::SafeCalculate(*level, &x, nullptr);
            steps.x.push_back(x);
            steps.y.push_back(y);
            csv.Cell(x).Cell(y).EndRow();
        }
        steps.x.push_back(static_cast<double>(steps.y.size()));
        SvgChart chart("Level of the reservoir, repeated", {"month"},
                       {"level above the foundation (m)"});
        chart.Add(std::move(steps));
        chart.Add(std::move(measured));
        chart.AddNotes(storages.Comments());
        chart.AddNote("Brought to the height of the dam: an elevation of " +
                      Decimals(kFoundation, 0) + " ft is its foundation, " + Decimals(kFull, 0) +
                      " ft its full water.");
        results_.Keep("reservoir-level.csv", csv.Text());
        results_.Keep("reservoir-level.svg", chart.Text());
    }

    DemoResults& results_;
    const std::vector<FittedSoil>& soils_;
    CsvText definitions_;
};

}  // namespace

DamFunctions AddFunctions(DemoResults& results, const std::vector<FittedSoil>& soils) {
    return Functions(results, soils).Run();
}

}  // namespace lmw::tool
