// Where do the lines of a section meet and cross, and how is an edge divided into points?

#include <common/geom/geom_types.h>
#include <common/geom/line_discretize.h>
#include <common/geom/line_events.h>
#include <common/geom/precision.h>

#include <cstdio>
#include <vector>

namespace {

using Geom::Line2D;
using Geom::LineEvent2D;

void Print(const char* title, const std::vector<LineEvent2D>& events,
           const std::vector<Line2D>& lines) {
    std::printf("%s\n", title);
    for (const LineEvent2D& event : events) {
        std::printf("  lines %d and %d at (%.3f, %.3f)\n",
                    static_cast<int>(event.first - lines.data()),
                    static_cast<int>(event.second - lines.data()), event.point.x, event.point.y);
    }
}

}  // namespace

int main() {
    // A slope in metres: its surface from left to right, two layers, the water table.
    const std::vector<Line2D> lines = {
        {{0, 10}, {10, 10}},    // 0 crest
        {{10, 10}, {30, 0}},    // 1 slope
        {{30, 0}, {40, 0}},     // 2 foreland
        {{0, 6}, {40, 4}},      // 3 top of the clay, drawn beyond the surface
        {{18, 6}, {0, 2}},      // 4 a sand lens that ends on the slope
        {{0, 8}, {30, 0}},      // 5 water table, down to the toe
        {{30.002, 0}, {36, 0}}  // 6 on the foreland, almost from the toe on
    };

    //! [events]
    // Coordinates keep three decimals: what differs by no more than 0.0005 is the same.
    const Geom::Precision3D millimetres(3, 3, 3);

    std::vector<LineEvent2D> meetings;
    Geom::LineIntersectionEvents2D(meetings, lines, millimetres);
    Print("all meetings, overlaps by both of their ends", meetings, lines);

    std::vector<LineEvent2D> crossings;
    Geom::LineCrossingEvents2D(crossings, lines, millimetres);
    Print("proper crossings", crossings, lines);

    std::vector<LineEvent2D> overlaps;
    Geom::LineCoincidentEvents2D(overlaps, lines, millimetres);
    Print("overlaps", overlaps, lines);
    //! [events]

    // In centimetres line 6 begins in the toe: that end of the overlap is an end of both lines,
    // and is left out.
    std::vector<LineEvent2D> coarse;
    Geom::LineCoincidentEvents2D(coarse, lines, Geom::Precision3D(2, 2, 2));
    Print("overlaps in centimetres", coarse, lines);

    //! [divide]
    // The slope with points 5 m apart, but 1 m at the toe.
    const Geom::PointConstraints slope = {{lines[1].first, {5.0, false}},
                                          {lines[1].second, {1.0, true}}};
    const unsigned count = Geom::NumPtsFromPtConstraints(slope, 5.0, millimetres);
    std::vector<Geom::Point2D> points;
    if (!Geom::LineDiscretize2D(points, slope, count - 1, millimetres)) {
        return 1;
    }
    std::printf("points on the slope at x =");
    for (const Geom::Point2D& point : points) {
        std::printf(" %.2f", point.x);
    }
    //! [divide]
    std::printf("\n");
}
