#include "common/geom/cell_table.h"
#include "common/geom/extents2d.h"
#include "common/geom/line2d.h"
#include "common/geom/line_discretize.h"
#include "common/geom/line_events.h"
#include "common/geom/polygon2d.h"
#include "common/geom/polygon_line_entry.h"
#include "common/geom/precision.h"
#include "common/geom/quad_tree2d.h"

#include "tools/lmw/demo_chapters.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/point_rows.h"
#include "tools/lmw/svg_chart.h"
#include "tools/lmw/text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace lmw::tool {
namespace {

struct SectionFacts {
    const char* name;
    const char* file;
    const char* unit;
    double level;    // of the water, assumed for the slope; drawn through the whole section
    double spacing;  // of points on edges
    double finest;   // spacing at the highest points
};

constexpr SectionFacts kDam = {"dam", kDamSection, "m", kFullWater, 6.0, 1.5};
constexpr SectionFacts kSlope = {"layered slope", "section-slope", "ft", 52.0, 20.0, 5.0};

// A section of regions: each edge once, divided into points, and where the water's level meets it.
class Section {
 public:
    Section(const SectionFacts& facts, DemoResults& results)
        : facts_(facts),
          results_(results),
          names_(results.Regions(facts.file).names),
          regions_(results.Regions(facts.file).polygons) {
        std::vector<Geom::Point2D> corners;
        for (const auto& region : regions_) {
            corners.insert(corners.end(), region.begin(), region.end());
        }
        extents_ = Geom::ExtentsOf(corners);
        precision_ = Geom::ComputePrecisionOfExtents(extents_);
    }

    void Run() {
        const std::size_t inserted = SplitWhereTouched_();
        PolygonGetUniqueLineEntries2D(edges_, regions_, precision_);
        const auto shared = static_cast<std::size_t>(
            std::count_if(edges_.begin(), edges_.end(),
                          [](const Geom::PolygonLineEntry& edge) { return edge.uses.size() > 1; }));
        Regions_();
        Divide_();
        Level_();
        results_.report += "  edges " + std::to_string(edges_.size()) + ", shared by two regions " +
                           std::to_string(shared) + ", corners inserted where regions touch " +
                           std::to_string(inserted) + "\n  points on edges " +
                           std::to_string(points_.size()) + ", crossings of the level " +
                           Decimals(facts_.level, 3) + " " + facts_.unit + ": " +
                           std::to_string(crossings_.size()) + "\n";
        Search_();
        Picture_();
    }

 private:
    // A corner of one region inside an edge of another splits that edge, so that both have the same
    // edges where they touch. Returns how many corners were inserted.
    std::size_t SplitWhereTouched_() {
        std::size_t inserted = 0;
        const std::vector<std::vector<Geom::Point2D>> before = regions_;
        for (auto& region : regions_) {
            std::vector<Geom::Point2D> result = {region.front()};
            for (std::size_t k = 1; k < region.size(); ++k) {
                const Geom::Line2D edge = {region[k - 1], region[k]};
                Geom::PointConstraints on_edge = {{edge.first, {facts_.spacing, true}},
                                                  {edge.second, {facts_.spacing, true}}};
                for (const auto& other : before) {
                    for (const Geom::Point2D& corner : other) {
                        if (LineContainsPoint2D(edge.first, edge.second, corner, precision_)) {
                            on_edge.push_back({corner, {facts_.spacing, false}});
                        }
                    }
                }
                SortUniqueConstraintsOnLine(on_edge, edge, precision_);
                inserted += on_edge.size() - 2;
                for (std::size_t i = 1; i < on_edge.size(); ++i) {
                    result.push_back(on_edge[i].first);
                }
            }
            region = std::move(result);
        }
        return inserted;
    }

    void Regions_() {
        results_.report += std::string("\nSection of the ") + facts_.name + ": regions\n\n";
        CsvText csv;
        const std::string unit = facts_.unit;
        csv.Cell("region").Cell("area (" + unit + "²)").Cell("centroid x (" + unit + ")");
        csv.Cell("centroid y (" + unit + ")").EndRow();
        for (std::size_t i = 0; i < regions_.size(); ++i) {
            const double area = std::fabs(Geom::PolygonArea2D(regions_[i]));
            const Geom::Point2D centre = Geom::PolygonCentreOfMass2D(regions_[i]);
            csv.Cell(names_[i]).Cell(Decimals(area, 6));
            csv.Cell(Decimals(centre.x, 6)).Cell(Decimals(centre.y, 6)).EndRow();
            results_.report += "  " + Padded(names_[i], 20) + Column(area, 12, 3) + " " + unit +
                               "²   centroid (x, y)" + Column(centre.x, 10, 3) +
                               Column(centre.y, 10, 3) + "\n";
        }
        results_.Keep(facts_.file + std::string("-regions.csv"), csv.Text());
    }

    // Points along each edge, closer towards the top of the section.
    void Divide_() {
        CsvText edges;
        CsvText points;
        edges.Cell("edge").Cell("x0").Cell("y0").Cell("x1").Cell("y1").Cell("regions").EndRow();
        points.Cell("edge").Cell("x").Cell("y").EndRow();
        for (const Geom::PolygonLineEntry& edge : edges_) {
            const std::string number = std::to_string(edge.line_id);
            std::string users;
            for (const auto& use : edge.uses) {
                users += (users.empty() ? "" : " + ") + names_[use.first];
            }
            const auto& [first, second] = edge.line;
            edges.Cell(number).Cell(first.x).Cell(first.y).Cell(second.x).Cell(second.y);
            edges.Cell(users).EndRow();
            const Geom::PointConstraints ends = {{first, {SpacingAt_(first), false}},
                                                 {second, {SpacingAt_(second), false}}};
            const unsigned count = NumPtsFromPtConstraints(ends, facts_.spacing, precision_);
            std::vector<Geom::Point2D> divided;
            if (!LineDiscretize2D(divided, ends, count - 1, precision_)) {
                throw Failure(results_.DataFile(facts_.file) + ": an edge cannot be divided");
            }
            for (const Geom::Point2D& p : divided) {
                points.Cell(number).Cell(Decimals(p.x, 6)).Cell(Decimals(p.y, 6)).EndRow();
            }
            points_.insert(points_.end(), divided.begin(), divided.end());
        }
        results_.Keep(facts_.file + std::string("-edges.csv"), edges.Text());
        results_.Keep(facts_.file + std::string("-points.csv"), points.Text());
    }

    [[nodiscard]] double SpacingAt_(const Geom::Point2D& p) const {
        return IsEqual2D(p, {p.x, extents_.y_max}, precision_) ? facts_.finest : facts_.spacing;
    }

    // Where the water's level meets the edges. The level is the last segment.
    void Level_() {
        for (const Geom::PolygonLineEntry& edge : edges_) {
            segments_.push_back(edge.line);
        }
        segments_.push_back({{extents_.x_min, facts_.level}, {extents_.x_max, facts_.level}});
        std::vector<Geom::LineEvent2D> events;
        LineCrossingEvents2D(events, segments_, precision_, Geom::SweepLineImplForced::kSweep);
        CsvText csv;
        csv.Cell("x").Cell("y").Cell("edge").EndRow();
        for (const Geom::LineEvent2D& event : events) {
            const auto edge =
                static_cast<std::size_t>(std::min(event.first, event.second) - segments_.data());
            csv.Cell(Decimals(event.point.x, 6)).Cell(Decimals(event.point.y, 6));
            csv.Cell(std::to_string(edges_[edge].line_id)).EndRow();
            crossings_.push_back(event.point);
        }
        results_.Keep(facts_.file + std::string("-level.csv"), csv.Text());
    }

    // The segments in a table of cells and the regions in a quadtree: which segments share cells
    // with the level, and the region around each region's own centroid.
    void Search_() {
        constexpr unsigned kSide = 8;
        Geom::CellTable table;
        table.Initialize(extents_, kSide, kSide, static_cast<unsigned>(segments_.size()),
                         precision_);
        table.Assign(segments_);
        std::vector<unsigned> near_level;
        table.FindAll(near_level, {segments_.back()});  // itself among them
        Geom::QuadTree2D tree;
        constexpr std::size_t kDepth = 12;
        tree.Initialize(extents_, kDepth, precision_, regions_.size(), 2);
        for (unsigned id = 0; id < regions_.size(); ++id) {
            tree.Insert(id, {regions_[id].data(), regions_[id].data() + regions_[id].size()});
        }
        std::size_t found = 0;
        for (unsigned id = 0; id < regions_.size(); ++id) {
            found += tree.Find(Geom::PolygonCentreOfMass2D(regions_[id])) == id ? 1U : 0U;
        }
        results_.report +=
            "  cell table: " + std::to_string(near_level.size() - 1) + " of " +
            std::to_string(edges_.size()) +
            " edges share a cell with the level; quadtree: " + std::to_string(found) + " of " +
            std::to_string(regions_.size()) + " regions are found at their own centroids\n";
    }

    void Picture_() {
        const std::string unit = facts_.unit;
        SvgChart chart(std::string("Section of the ") + facts_.name, {"x (" + unit + ")"},
                       {"y (" + unit + ")"});
        chart.KeepAspect();
        for (std::size_t i = 0; i < regions_.size(); ++i) {
            chart.Add(SeriesOf_(Form::kRegion, names_[i], regions_[i], i + 2));
        }
        chart.Add(SeriesOf_(Form::kPoints, "points on edges", points_, 0));
        Series level = SeriesOf_(Form::kLine, "water level",
                                 {segments_.back().first, segments_.back().second}, 5);
        level.stroke = Stroke::kDashed;
        chart.Add(std::move(level));
        chart.Add(SeriesOf_(Form::kPoints, "crossings", crossings_, 1));
        const CsvTable table = results_.Table(facts_.file);
        chart.AddNotes(table.Comments());
        results_.Keep(facts_.file + std::string(".svg"), chart.Text());
    }

    static Series SeriesOf_(Form form, const std::string& label,
                            const std::vector<Geom::Point2D>& points, std::size_t color) {
        Series series{.form = form, .label = label, .color = color};
        for (const Geom::Point2D& p : points) {
            series.x.push_back(p.x);
            series.y.push_back(p.y);
        }
        return series;
    }

    SectionFacts facts_;
    DemoResults& results_;
    std::vector<std::string> names_;
    PointRows regions_;
    Geom::Extents2D extents_;
    Geom::Precision3D precision_;
    std::vector<Geom::PolygonLineEntry> edges_;
    std::vector<Geom::Line2D> segments_;
    std::vector<Geom::Point2D> points_;
    std::vector<Geom::Point2D> crossings_;
};

}  // namespace

void AddSections(DemoResults& results) {
    results.analysis = L"Sections";
    Section(kDam, results).Run();
    Section(kSlope, results).Run();
}

}  // namespace lmw::tool
