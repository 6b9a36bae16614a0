// The geometry database, the cell table and the quadtree: building and asking, the quadtree against
// a linear search and, where Boost is at hand, against its R-tree.

#include "common/geom/cell_table.h"
#include "common/geom/geometry_database.h"
#include "common/geom/line2d.h"
#include "common/geom/precision.h"
#include "common/geom/quad_tree2d.h"

#include "bench/geom/segment_sets.h"

#include <benchmark/benchmark.h>

#if defined(LMW_BENCH_BOOST)
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#endif

namespace {

using Geom::Line2D;
using Geom::Point2D;
using Geom::Precision3D;
using Lines = std::vector<Line2D>;

const Precision3D kPrecision(5, 5, 5);
const Geom::Extents2D kArea{0.0, 1000.0, 0.0, 1000.0};

Lines Input(const benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    return lmw::bench::RandomSet(count,
                                 lmw::bench::LengthFor(count, 0.1 * static_cast<double>(count)));
}

void Database(benchmark::State& state) {
    const Lines lines = Input(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(MakeGeometryDataBase(lines, kPrecision));
    }
}
BENCHMARK(Database)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

void CellTableAssign(benchmark::State& state) {
    const Lines lines = Input(state);
    for (auto _ : state) {
        Geom::CellTable table;
        table.Initialize(kArea, 30, 30, static_cast<unsigned>(lines.size()), kPrecision);
        table.Assign(lines);
        benchmark::DoNotOptimize(table);
    }
}
BENCHMARK(CellTableAssign)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

Geom::QuadTree2D MakeTree(const Lines& lines) {
    Geom::QuadTree2D tree;
    tree.Initialize(kArea, 20, kPrecision, lines.size(), 2);
    for (unsigned id = 0; id < lines.size(); ++id) {
        const Point2D ends[] = {lines[id].first, lines[id].second};
        tree.Insert(id, {ends, ends + 2});
    }
    return tree;
}

void QuadTreeBuild(benchmark::State& state) {
    const Lines lines = Input(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(MakeTree(lines));
    }
}
BENCHMARK(QuadTreeBuild)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

/// Every second question is asked at an item's middle.
Point2D Question(const Lines& lines, std::size_t k) {
    const Line2D& line = lines[(k * 7919U) % lines.size()];
    const double off = k % 2 == 0 ? 0.0 : 1.0;
    return {0.5 * (line.first.x + line.second.x) + off, 0.5 * (line.first.y + line.second.y)};
}

void QuadTreeFind(benchmark::State& state) {
    const Lines lines = Input(state);
    const Geom::QuadTree2D tree = MakeTree(lines);
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(tree.Find(Question(lines, k++)));
    }
}
BENCHMARK(QuadTreeFind)->Arg(1000)->Arg(100000);

void QuadTreeNearest(benchmark::State& state) {
    const Lines lines = Input(state);
    const Geom::QuadTree2D tree = MakeTree(lines);
    std::size_t k = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(tree.Nearest(Question(lines, k++)));
    }
}
BENCHMARK(QuadTreeNearest)->Arg(100000);

void LinearFind(benchmark::State& state) {
    const Lines lines = Input(state);
    std::size_t k = 0;
    for (auto _ : state) {
        const Point2D p = Question(lines, k++);
        unsigned found = Geom::QuadTree2D::kNone;
        for (unsigned id = 0; id < lines.size() && found == Geom::QuadTree2D::kNone; ++id) {
            found =
                LineContainsPoint2D(lines[id].first, lines[id].second, p, kPrecision) ? id : found;
        }
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(LinearFind)->Arg(1000);

#if defined(LMW_BENCH_BOOST)

namespace bgi = boost::geometry::index;
using BoostPoint = boost::geometry::model::d2::point_xy<double>;
using BoostBox = boost::geometry::model::box<BoostPoint>;
using BoostEntry = std::pair<BoostBox, unsigned>;

/// The peer of QuadTreeFind: boxes that meet the widened point, the same containment test, the
/// lowest.
void BoostFind(benchmark::State& state) {
    const Lines lines = Input(state);
    std::vector<BoostEntry> boxes;
    for (unsigned id = 0; id < lines.size(); ++id) {
        const auto [x0, x1] = std::minmax(lines[id].first.x, lines[id].second.x);
        const auto [y0, y1] = std::minmax(lines[id].first.y, lines[id].second.y);
        boxes.emplace_back(BoostBox{{x0, y0}, {x1, y1}}, id);
    }
    const bgi::rtree<BoostEntry, bgi::rstar<8>> tree(boxes.begin(), boxes.end());
    const double h = kPrecision.halfEpsilon[0];
    std::size_t k = 0;
    for (auto _ : state) {
        const Point2D p = Question(lines, k++);
        const BoostBox query{{p.x - h, p.y - h}, {p.x + h, p.y + h}};
        unsigned found = Geom::QuadTree2D::kNone;
        for (auto it = tree.qbegin(bgi::intersects(query)); it != tree.qend(); ++it) {
            const Line2D& line = lines[it->second];
            if (it->second < found && LineContainsPoint2D(line.first, line.second, p, kPrecision)) {
                found = it->second;
            }
        }
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(BoostFind)->Arg(1000)->Arg(100000);

#endif

}  // namespace
