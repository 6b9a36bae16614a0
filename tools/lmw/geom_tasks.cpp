#include "tools/lmw/geom_tasks.h"

#include "common/geom/line2d.h"
#include "common/geom/line_discretize.h"
#include "common/geom/polygon_line_entry.h"
#include "common/str/number_text.h"

#include "tools/lmw/csv_table.h"
#include "tools/lmw/failure.h"
#include "tools/lmw/json_text.h"

#include <utility>

namespace lmw::tool {
namespace {

std::string WktRow(const char* kind, const std::vector<Geom::Point2D>& points) {
    std::string text = std::string(kind) + " (";
    for (std::size_t k = 0; k < points.size(); ++k) {
        text += k > 0 ? ", " : "";
        text += str::DoubleNarrowText(points[k].x) + ' ' + str::DoubleNarrowText(points[k].y);
    }
    return text + ")\n";
}

constexpr std::size_t kMostPoints = 10'000'000;

double Count(std::size_t value) {
    return static_cast<double>(value);
}

// An event with the numbers of its segments.
struct Event {
    Geom::Point2D point;
    std::size_t first = 0;
    std::size_t second = 0;
};

std::string EventsCsv(const std::vector<Event>& events, const Segments& segments) {
    CsvText csv;
    csv.Cell("x").Cell("y").Cell("first_row").Cell("first_segment").Cell("second_row");
    csv.Cell("second_segment").EndRow();
    for (const Event& event : events) {
        csv.Cell(event.point.x).Cell(event.point.y);
        csv.Cell(Count(segments.row_of[event.first])).Cell(Count(event.first));
        csv.Cell(Count(segments.row_of[event.second])).Cell(Count(event.second)).EndRow();
    }
    return csv.Text();
}

std::string EventsWkt(const std::vector<Event>& events) {
    std::string text;
    for (const Event& event : events) {
        text += WktRow("POINT", {event.point});
    }
    return text;
}

std::string EventsJson(const std::vector<Event>& events, const Segments& segments) {
    JsonText json;
    json.BeginArray();
    for (const Event& event : events) {
        json.BeginObject().Key("x").Value(event.point.x).Key("y").Value(event.point.y);
        json.Key("first_row").Count(segments.row_of[event.first]);
        json.Key("first_segment").Count(event.first);
        json.Key("second_row").Count(segments.row_of[event.second]);
        json.Key("second_segment").Count(event.second).End();
    }
    json.End();
    return json.Text();
}

std::string EdgesCsv(const std::vector<Geom::PolygonLineEntry>& entries) {
    CsvText csv;
    csv.Cell("edge").Cell("x0").Cell("y0").Cell("x1").Cell("y1").Cell("uses").EndRow();
    for (const Geom::PolygonLineEntry& entry : entries) {
        const auto& [first, second] = entry.line;
        csv.Cell(Count(entry.line_id)).Cell(first.x).Cell(first.y).Cell(second.x).Cell(second.y);
        std::string uses;
        for (const auto& [row, edge] : entry.uses) {
            uses += uses.empty() ? "" : " ";
            uses += std::to_string(row) + ':' + std::to_string(edge);
        }
        csv.Cell(uses).EndRow();
    }
    return csv.Text();
}

std::string EdgesWkt(const std::vector<Geom::PolygonLineEntry>& entries) {
    std::string text;
    for (const Geom::PolygonLineEntry& entry : entries) {
        text += WktRow("LINESTRING", {entry.line.first, entry.line.second});
    }
    return text;
}

std::string EdgesJson(const std::vector<Geom::PolygonLineEntry>& entries) {
    JsonText json;
    json.BeginArray();
    for (const Geom::PolygonLineEntry& entry : entries) {
        const auto& [first, second] = entry.line;
        json.BeginObject().Key("edge").Count(entry.line_id);
        json.Key("x0").Value(first.x).Key("y0").Value(first.y);
        json.Key("x1").Value(second.x).Key("y1").Value(second.y);
        json.Key("uses").BeginArray();
        for (const auto& [row, edge] : entry.uses) {
            json.BeginObject().Key("row").Count(row).Key("edge").Count(edge).End();
        }
        json.End().End();
    }
    json.End();
    return json.Text();
}

std::string PointsCsv(const PointRows& rows) {
    CsvText csv;
    csv.Cell("row").Cell("x").Cell("y").EndRow();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (const Geom::Point2D& p : rows[row]) {
            csv.Cell(Count(row)).Cell(p.x).Cell(p.y).EndRow();
        }
    }
    return csv.Text();
}

std::string PointsWkt(const PointRows& rows) {
    std::string text;
    for (const auto& row : rows) {
        text += WktRow("LINESTRING", row);
    }
    return text;
}

std::string PointsJson(const PointRows& rows) {
    JsonText json;
    json.BeginArray();
    for (const auto& row : rows) {
        json.BeginArray();
        for (const Geom::Point2D& p : row) {
            json.BeginObject().Key("x").Value(p.x).Key("y").Value(p.y).End();
        }
        json.End();
    }
    json.End();
    return json.Text();
}

}  // namespace

Segments SegmentsOf(const PointRows& rows) {
    Segments segments;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t k = 1; k < rows[row].size(); ++k) {
            segments.lines.push_back({rows[row][k - 1], rows[row][k]});
            segments.row_of.push_back(row);
        }
    }
    return segments;
}

GeomResult FindEvents(const Segments& segments, EventKind kind,
                      Geom::SweepLineImplForced::Type method, const Geom::Precision3D& precision,
                      GeomForm form) {
    std::vector<Geom::LineEvent2D> found;
    switch (kind) {
        case EventKind::kIntersection:
            LineIntersectionEvents2D(found, segments.lines, precision, method);
            break;
        case EventKind::kCoincident:
            LineCoincidentEvents2D(found, segments.lines, precision, method);
            break;
        case EventKind::kCrossing:
            LineCrossingEvents2D(found, segments.lines, precision, method);
            break;
        case EventKind::kCollision:
            LineCollisionEvents2D(found, segments.lines, precision, method);
            break;
    }
    GeomResult result;
    std::vector<Event> events;
    for (const Geom::LineEvent2D& event : found) {
        events.push_back({event.point,
                          static_cast<std::size_t>(event.first - segments.lines.data()),
                          static_cast<std::size_t>(event.second - segments.lines.data())});
        result.marks.push_back(event.point);
    }
    result.text = form == GeomForm::kCsv   ? EventsCsv(events, segments)
                  : form == GeomForm::kWkt ? EventsWkt(events)
                                           : EventsJson(events, segments);
    result.label = "events: " + std::to_string(events.size());
    return result;
}

GeomResult FindEdges(const PointRows& rows, const Geom::Precision3D& precision, GeomForm form) {
    std::vector<Geom::PolygonLineEntry> entries;
    PolygonGetUniqueLineEntries2D(entries, rows, precision);
    GeomResult result;
    for (const Geom::PolygonLineEntry& entry : entries) {
        const auto& [first, second] = entry.line;
        if (entry.uses.size() > 1) {
            result.marks.push_back({0.5 * (first.x + second.x), 0.5 * (first.y + second.y)});
        }
    }
    result.text = form == GeomForm::kCsv   ? EdgesCsv(entries)
                  : form == GeomForm::kWkt ? EdgesWkt(entries)
                                           : EdgesJson(entries);
    result.label = "shared edges: " + std::to_string(result.marks.size()) + " of " +
                   std::to_string(entries.size());
    return result;
}

GeomResult DivideRows(const PointRows& rows, const std::string& file, double spacing,
                      const Geom::Precision3D& precision, GeomForm form) {
    GeomResult result;
    PointRows divided(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        Geom::PointConstraints constraints;
        for (const Geom::Point2D& p : rows[row]) {
            if (constraints.empty() || !IsEqual2D(constraints.back().first, p, precision)) {
                constraints.push_back({p, {spacing, false}});
            }
        }
        const unsigned count = NumPtsFromPtConstraints(constraints, spacing, precision);
        if (count > kMostPoints - result.marks.size()) {
            throw Failure(file + ": row " + std::to_string(row) +
                          " would get too many points of this spacing");
        }
        if (constraints.size() < 2 ||
            !LineDiscretize2D(divided[row], constraints, count - 1, precision)) {
            throw Failure(file + ": row " + std::to_string(row) + " cannot be divided");
        }
        result.marks.insert(result.marks.end(), divided[row].begin(), divided[row].end());
    }
    result.text = form == GeomForm::kCsv   ? PointsCsv(divided)
                  : form == GeomForm::kWkt ? PointsWkt(divided)
                                           : PointsJson(divided);
    result.label = "points: " + std::to_string(result.marks.size());
    return result;
}

}  // namespace lmw::tool
