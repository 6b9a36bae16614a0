#include "common/geom/polygon_line_entry.h"

#include "common/geom/geometry_database.h"
#include "common/geom/line2d.h"

#include <algorithm>
#include <cstddef>

namespace Geom {

void PolygonGetAllLineEntries2D(std::vector<PolygonLineEntry>& entries,
                                const std::vector<std::vector<Point2D>>& polygons,
                                const Precision3D& precision) {
    entries.clear();
    std::size_t edges = 0;
    for (const auto& polygon : polygons) {
        edges += polygon.empty() ? 0 : polygon.size() - 1;
    }
    entries.reserve(edges);
    for (std::uint32_t i = 0; i < polygons.size(); ++i) {
        const std::vector<Point2D>& polygon = polygons[i];
        for (std::uint32_t j = 0; j + 1 < polygon.size(); ++j) {
            entries.push_back({LineGet2D(polygon[j], polygon[j + 1], precision), {{i, j}}, 0});
        }
    }
}

void PolygonGetUniqueLineEntries2D(std::vector<PolygonLineEntry>& entries,
                                   const std::vector<std::vector<Point2D>>& polygons,
                                   const Precision3D& precision) {
    PolygonGetAllLineEntries2D(entries, polygons, precision);
    const auto database = MakeGeometryDataBase(std::vector<Line2D>{}, precision);
    for (PolygonLineEntry& entry : entries) {
        entry.line_id = database->InsertLine(entry.line);
    }
    std::stable_sort(
        entries.begin(), entries.end(),
        [](const PolygonLineEntry& a, const PolygonLineEntry& b) { return a.line_id < b.line_id; });
    std::size_t kept = 0;
    for (std::size_t k = 0; k < entries.size(); ++k) {
        if (kept != 0 && IsEqual2D(entries[kept - 1].line, entries[k].line, precision)) {
            entries[kept - 1].uses.push_back(entries[k].uses.front());
        } else {
            if (kept != k) {
                entries[kept] = std::move(entries[k]);
            }
            ++kept;
        }
    }
    entries.resize(kept);
}

}  // namespace Geom
