#include "common/datatable/data_table.h"
#include "common/datatable/param_registry.h"
#include "common/fn/evaluate.h"
#include "common/geom/polygon2d.h"
#include "common/undefined.h"

#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/demo_mesh.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {
namespace {

constexpr double kColumnWidth = 6.0;  // m, wanted at the foundation
constexpr std::size_t kRows = 8;
constexpr double kWaterWeight = 9.80665;  // kN/m³

// The times at which the water is looked at: months of the reservoir's series.
constexpr std::array<double, 4> kMonths = {13.5, 30.5, 47.5, 61.5};

class StillWater {
 public:
    StillWater(DemoResults& results, const DamFunctions& functions)
        : results_(results),
          functions_(functions),
          regions_(results.Regions(kDamSection)),
          mesh_(MeshOf(regions_, results.DataFile(kDamSection), kColumnWidth, kRows)) {}

    void Run() {
        results_.analysis = L"Still water";
        MeshTables_();
        MeshReport_();
        Draw_();
        WaterHeading_();
        for (std::size_t i = 0; i < kMonths.size(); ++i) {
            Step_(static_cast<std::uint32_t>(i + 1), kMonths[i]);
        }
    }

 private:
    void MeshTables_() {
        CsvText points;
        points.Cell("element").Cell("x (m)").Cell("y (m)").Cell("area (m²)").EndRow();
        for (const QuadSample& sample : mesh_.samples) {
            points.Cell(std::to_string(sample.element + 1)).Cell(Decimals(sample.place.x, 6));
            points.Cell(Decimals(sample.place.y, 6)).Cell(Decimals(sample.area, 6)).EndRow();
        }
        CsvText elements;
        elements.Cell("element").Cell("region").Cell("node 1").Cell("node 2").Cell("node 3");
        elements.Cell("node 4").EndRow();
        for (std::size_t i = 0; i < mesh_.elements.size(); ++i) {
            elements.Cell(std::to_string(i + 1)).Cell(regions_.names[mesh_.elements[i].region]);
            for (std::size_t k = 0; k < mesh_.elements[i].corners.size(); ++k) {
                elements.Cell(std::to_string(mesh_.elements[i].nodes[k]));
            }
            elements.EndRow();
        }
        CsvText nodes;
        nodes.Cell("node").Cell("x (m)").Cell("y (m)").EndRow();
        for (GID id = 1; id <= mesh_.nodes->PointCount(); ++id) {
            const Geom::Point2D place = mesh_.nodes->PointAt(id);
            nodes.Cell(std::to_string(id)).Cell(Decimals(place.x, 6));
            nodes.Cell(Decimals(place.y, 6)).EndRow();
        }
        results_.Keep("mesh-nodes.csv", nodes.Text());
        results_.Keep("mesh-elements.csv", elements.Text());
        results_.Keep("mesh-points.csv", points.Text());
    }

    // The areas by both ways of computing them.
    void MeshReport_() {
        std::vector<double> areas(regions_.names.size());
        for (const QuadSample& sample : mesh_.samples) {
            areas[mesh_.elements[sample.element].region] += sample.area;
        }
        results_.report += "\nMesh of the dam: " + std::to_string(mesh_.elements.size()) +
                           " quadrilaterals, " + std::to_string(mesh_.nodes->PointCount()) +
                           " nodes, " + std::to_string(mesh_.samples.size()) +
                           " integration points\n\n"
                           "                       area (m²) summed over\n"
                           "  region            integration points      polygon\n";
        for (std::size_t i = 0; i < areas.size(); ++i) {
            results_.report += "  " + Padded(regions_.names[i], 18) + Column(areas[i], 18, 6) +
                               Column(std::fabs(Geom::PolygonArea2D(regions_.polygons[i])), 13, 6) +
                               "\n";
        }
    }

    void WaterHeading_() {
        results_.report +=
            "\nWater per metre of the dam if it stood still at the reservoir's level in the whole "
            "section\n(months since the end of October 2013; month 61.5 is month 13.5 of the "
            "second "
            "round)\n\n"
            "  step   month   level (m)";
        for (const std::string& name : regions_.names) {
            results_.report += RightAligned(name + " (m³)", 24);
        }
        results_.report += "\n";
    }

    // The elements' values at a time, as a table of results: means over the integration points.
    void Step_(std::uint32_t step, double month) {
        const double level = fn::impl::SafeCalculate(*functions_.level, &month, nullptr);
        DataTable table;
        const gtl::status made = table.Init(
            {DataParamType::CoordinateX, DataParamType::CoordinateY, DataParamType::ElementArea,
             DataParamType::PorePressure, DataParamType::VolumetricWaterContent},
            static_cast<std::uint32_t>(mesh_.elements.size()));
        Require(made);
        for (const DataParamType param : table.Params()) {
            for (double& value : table.Column(param)) {
                value = 0.0;
            }
        }
        std::vector<double> stored(regions_.names.size());
        for (const QuadSample& sample : mesh_.samples) {
            const std::size_t region = mesh_.elements[sample.element].region;
            const double pressure = kWaterWeight * (level - sample.place.y);
            const double content =
                fn::impl::SafeCalculate(*functions_.water_contents[region], &pressure, nullptr);
            const auto row = static_cast<GID>(sample.element + 1);
            const auto add = [&](DataParamType param, double value) {
                table.SetValue(row, param, table.Value(row, param) + value);
            };
            add(DataParamType::CoordinateX, sample.area * sample.place.x);
            add(DataParamType::CoordinateY, sample.area * sample.place.y);
            add(DataParamType::ElementArea, sample.area);
            add(DataParamType::PorePressure, sample.area * pressure);
            add(DataParamType::VolumetricWaterContent, sample.area * content);
            stored[region] += sample.area * content;
        }
        for (GID row = 1; row <= table.RowCount(); ++row) {
            const double area = table.Value(row, DataParamType::ElementArea);
            for (const DataParamType param : table.Params()) {
                if (param != DataParamType::ElementArea) {
                    table.SetValue(row, param, table.Value(row, param) / area);
                }
            }
        }
        Keep_(step, table, "month " + Decimals(month, 1) + ", level " + Decimals(level, 2) + " m");
        results_.report += Column(step, 6, 0) + Column(month, 8, 1) + Column(level, 12, 3);
        for (const double volume : stored) {
            results_.report += Column(volume, 24, 3);
        }
        results_.report += "\n";
    }

    // The table as text, a column for each parameter under its registry name; values outside the
    // range of their parameter would be a fault.
    void Keep_(std::uint32_t step, const DataTable& table, const std::string& when) {
        CsvText csv;
        csv.Cell("element").Cell("region");
        for (const DataParamType param : table.Params()) {
            csv.Cell(dataparamtype::GetName(param));
        }
        csv.EndRow();
        for (GID row = 1; row <= table.RowCount(); ++row) {
            csv.Cell(std::to_string(row)).Cell(regions_.names[mesh_.elements[row - 1].region]);
            for (const DataParamType param : table.Params()) {
                const double value = table.Value(row, param);
                const gtl::status valid = dataparamtype::IsRangeValid(param, value);
                if (valid.Failed()) {
                    throw Failure("element " + std::to_string(row) + ": " +
                                  Utf8(valid.as_wstring()));
                }
                csv.Cell(Decimals(value, 6));
            }
            csv.EndRow();
        }
        results_.KeepStep(step, "element.csv", csv.Text());

        SvgChart chart("Water content of the elements, " + when,
                       {"volumetric water content (m³/m³)"}, {"y (m)"});
        for (std::size_t region = 0; region < regions_.names.size(); ++region) {
            Series points{
                .form = Form::kPoints, .label = regions_.names[region], .color = region + 2};
            for (GID row = 1; row <= table.RowCount(); ++row) {
                if (mesh_.elements[row - 1].region == region) {
                    points.x.push_back(table.Value(row, DataParamType::VolumetricWaterContent));
                    points.y.push_back(table.Value(row, DataParamType::CoordinateY));
                }
            }
            chart.Add(std::move(points));
        }
        chart.AddNote(
            "Rings are elements, those of a row at one place: means over integration points.");
        results_.KeepStep(step, "water.svg", chart.Text());
    }

    void Draw_() {
        SvgChart chart("Mesh of the dam", {"x (m)"}, {"y (m)"});
        chart.KeepAspect();
        for (std::size_t region = 0; region < regions_.names.size(); ++region) {
            Series outlines{
                .form = Form::kRegion, .label = regions_.names[region], .color = region + 2};
            for (const QuadElement& element : mesh_.elements) {
                if (element.region != region) {
                    continue;
                }
                for (const Geom::Point2D& corner : element.corners) {
                    outlines.x.push_back(corner.x);
                    outlines.y.push_back(corner.y);
                }
                outlines.x.push_back(kUndefined);  // the next element is another ring
                outlines.y.push_back(kUndefined);
            }
            chart.Add(std::move(outlines));
        }
        Series points{.form = Form::kPoints, .label = "integration points", .color = 0};
        for (const QuadSample& sample : mesh_.samples) {
            points.x.push_back(sample.place.x);
            points.y.push_back(sample.place.y);
        }
        chart.Add(std::move(points));
        results_.Keep("mesh.svg", chart.Text());
    }

    DemoResults& results_;
    const DamFunctions& functions_;
    NamedRegions regions_;
    QuadMesh mesh_;
};

}  // namespace

void AddWater(DemoResults& results, const DamFunctions& functions) {
    StillWater(results, functions).Run();
}

}  // namespace lmw::tool
