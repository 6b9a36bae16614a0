// Which cell of a mesh holds a point, which is nearest, and which edges are close to a circle?

#include <common/geom/cell_table.h>
#include <common/geom/geom_types.h>
#include <common/geom/precision.h>
#include <common/geom/quad_tree2d.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using Geom::Line2D;
using Geom::Point2D;

// A strip of ten unit squares, as rings: the first point comes again at the end.
std::vector<Point2D> Square(double x) {
    return {{x, 0}, {x + 1, 0}, {x + 1, 1}, {x, 1}, {x, 0}};
}

constexpr unsigned kSquares = 10;
constexpr Geom::Extents2D kArea = {0, 10, 0, 1};  // x min, x max, y min, y max

}  // namespace

int main() {
    const Geom::Precision3D precision(6, 6, 6);

    //! [tree]
    // Items of any size under numbers of our own.
    Geom::QuadTree2D tree;
    tree.Initialize(kArea, 8, precision, kSquares, 5);
    for (unsigned id = 0; id < kSquares; ++id) {
        const std::vector<Point2D> ring = Square(id);
        tree.Insert(id, {ring.data(), ring.data() + ring.size()});
    }
    std::printf("(3.25, 0.5) lies in square %u\n", tree.Find({3.25, 0.5}));
    std::printf("(4, 0.5), on an edge, in square %u\n", tree.Find({4, 0.5}));
    std::printf("(3, 2) lies in %s\n",
                tree.Find({3, 2}) == Geom::QuadTree2D::kNone ? "none" : "one");
    std::printf("(9.5, 7) is nearest to square %u\n", tree.Nearest({9.5, 7}));
    std::vector<unsigned> found;
    tree.Find(Geom::Extents2D{1.5, 3.5, 0.2, 0.4}, found);
    std::printf("the box meets %zu squares, from %u to %u\n", found.size(), found.front(),
                found.back());
    //! [tree]

    //! [cells]
    // Many questions about one set of segments: a grid whose cells know which pass through them.
    std::vector<Line2D> edges;
    for (unsigned id = 0; id <= kSquares; ++id) {
        edges.push_back({{1.0 * id, 0}, {1.0 * id, 1}});
    }
    Geom::CellTable cells;
    cells.Initialize(kArea, 20, 4, static_cast<unsigned>(edges.size()), precision);
    cells.Assign(edges);
    const Geom::Circle2D circle = {{5.25, 0.5}, 2.0};
    std::vector<unsigned> near_circle;
    cells.FindAll(near_circle, circle, 0.0, 0.0, false);
    std::sort(near_circle.begin(), near_circle.end());
    std::printf("edges in the cells of the circle:");
    for (const unsigned edge : near_circle) {
        std::printf(" %u", edge);
    }
    const Geom::CellTable::RangeIdx columns = cells.GetXCellIdx(5.0);
    std::printf("\nx = 5 is the border of the columns %d and %d\n", static_cast<int>(columns.first),
                static_cast<int>(columns.second));
    //! [cells]
    return 0;
}
