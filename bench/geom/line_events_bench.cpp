// Events of sets of segments: scan and sweep around the threshold, growth with segments and
// meetings, real networks of rivers, borders and coasts where the shared data folder is at hand,
// and, where Boost is, its R-tree join with the same pair test as the peer.

#include "common/geom/line_events.h"
#include "common/geom/line_intersection.h"
#include "common/geom/precision.h"

#include "bench/geom/segment_sets.h"
#include "tests/support/shared_data.h"

#include <benchmark/benchmark.h>

#include <string>
#include <utility>
#include <vector>

#if defined(LMW_BENCH_BOOST)
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#endif

namespace {

using Geom::Line2D;
using Geom::LineEvent2D;
using Geom::Point2D;
using Geom::Precision3D;
using Geom::SweepLineImplForced;
using Lines = std::vector<Line2D>;

const Precision3D kPrecision(5, 5, 5);

void PairTest(benchmark::State& state) {
    const Lines lines = lmw::bench::RandomSet(1024, 600.0);
    std::size_t k = 0;
    for (auto _ : state) {
        const Line2D& a = lines[k++ & 1023U];
        const Line2D& b = lines[k & 1023U];
        Point2D p0;
        Point2D p1;
        benchmark::DoNotOptimize(
            LineIntersection2D(p0, p1, a.first, a.second, b.first, b.second, kPrecision));
    }
}
BENCHMARK(PairTest);

void RunEvents(benchmark::State& state, const Lines& lines, SweepLineImplForced::Type forced) {
    std::vector<LineEvent2D> events;
    for (auto _ : state) {
        events.clear();
        LineIntersectionEvents2D(events, lines, kPrecision, forced);
        benchmark::DoNotOptimize(events.data());
    }
    state.counters["events"] = static_cast<double>(events.size());
    state.counters["per_segment"] = benchmark::Counter(
        static_cast<double>(lines.size()),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Arguments: segments, meetings wanted.
void Random(benchmark::State& state, SweepLineImplForced::Type forced) {
    const auto count = static_cast<std::size_t>(state.range(0));
    RunEvents(state,
              lmw::bench::RandomSet(
                  count, lmw::bench::LengthFor(count, static_cast<double>(state.range(1)))),
              forced);
}
void Chosen(benchmark::State& state) {
    Random(state, SweepLineImplForced::kChoose);
}
void Forced(benchmark::State& state) {
    Random(state, SweepLineImplForced::kSweep);
}
void Diagonals(benchmark::State& state) {
    RunEvents(state, lmw::bench::ParallelDiagonals(static_cast<std::size_t>(state.range(0))),
              SweepLineImplForced::kChoose);
}
void DiagonalsForced(benchmark::State& state) {
    RunEvents(state, lmw::bench::ParallelDiagonals(static_cast<std::size_t>(state.range(0))),
              SweepLineImplForced::kSweep);
}
BENCHMARK(Chosen)
    ->Args({24, 1})
    ->Args({25, 1})
    ->Args({24, 78})
    ->Args({25, 300})
    ->Args({100, 10})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(Forced)->Args({25, 1})->Args({25, 300})->Args({100, 10})->Unit(benchmark::kMicrosecond);
BENCHMARK(Chosen)
    ->Args({1000, 100})
    ->Args({10000, 1000})
    ->Args({100000, 10000})
    ->Args({100000, 500000})
    ->Args({1000000, 100000})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Forced)
    ->Args({1000, 100})
    ->Args({10000, 1000})
    ->Args({100000, 10000})
    ->Args({100000, 500000})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(Diagonals)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(DiagonalsForced)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// Three measured networks, 193 000 segments; empty when the data are not at hand.
const Lines& Networks() {
    static const Lines lines = [] {
        Lines all;
        for (const char* name : {"ne50m_coastline", "ne10m_rivers_europe", "ne10m_land_borders"}) {
            lmw::test::CsvRow last;
            for (lmw::test::CsvRow& row : lmw::test::ReadCsv(
                     lmw::test::SharedData(std::string("line-segments/") + name + ".csv"))) {
                if (!last.empty() && last[0] == row[0]) {
                    all.push_back({{std::stod(last[1]), std::stod(last[2])},
                                   {std::stod(row[1]), std::stod(row[2])}});
                }
                last = std::move(row);
            }
        }
        return all;
    }();
    return lines;
}

/// Runs `action` on the networks, or says that they are missing.
template <class Action>
void WithNetworks(benchmark::State& state, const Action& action) {
    if (Networks().empty()) {
        state.SkipWithError("no networks (set LMW_TEST_DATA)");
    } else {
        action(Networks());
    }
}

void NetworksChosen(benchmark::State& state) {
    WithNetworks(
        state, [&](const Lines& lines) { RunEvents(state, lines, SweepLineImplForced::kChoose); });
}
BENCHMARK(NetworksChosen)->Unit(benchmark::kMillisecond);

void NetworksForced(benchmark::State& state) {
    WithNetworks(state,
                 [&](const Lines& lines) { RunEvents(state, lines, SweepLineImplForced::kSweep); });
}
BENCHMARK(NetworksForced)->Unit(benchmark::kMillisecond);

#if defined(LMW_BENCH_BOOST)

namespace bgi = boost::geometry::index;
using BoostPoint = boost::geometry::model::d2::point_xy<double>;
using BoostBox = boost::geometry::model::box<BoostPoint>;
using BoostEntry = std::pair<BoostBox, std::uint32_t>;

/// The peer: a packed R-tree of widened boxes, one query per segment, the same pair test, no
/// snapping.
void RunBoostJoin(benchmark::State& state, const Lines& lines) {
    std::vector<LineEvent2D> events;
    for (auto _ : state) {
        events.clear();
        const double h = kPrecision.halfEpsilon[0];
        std::vector<BoostEntry> boxes;
        boxes.reserve(lines.size());
        for (std::uint32_t i = 0; i < lines.size(); ++i) {
            const auto [x0, x1] = std::minmax(lines[i].first.x, lines[i].second.x);
            const auto [y0, y1] = std::minmax(lines[i].first.y, lines[i].second.y);
            boxes.emplace_back(BoostBox{{x0 - h, y0 - h}, {x1 + h, y1 + h}}, i);
        }
        const bgi::rtree<BoostEntry, bgi::rstar<8>> tree(boxes.begin(), boxes.end());
        for (const BoostEntry& entry : boxes) {
            const std::uint32_t i = entry.second;
            for (auto it = tree.qbegin(bgi::intersects(entry.first)); it != tree.qend(); ++it) {
                const std::uint32_t j = it->second;
                Point2D p0;
                Point2D p1;
                if (j > i && LineIntersection2D(p0, p1, lines[i].first, lines[i].second,
                                                lines[j].first, lines[j].second, kPrecision) > 0) {
                    events.push_back({p0, &lines[i], &lines[j]});
                }
            }
        }
        benchmark::DoNotOptimize(events.data());
    }
    state.counters["events"] = static_cast<double>(events.size());
}

void BoostJoin(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    RunBoostJoin(state,
                 lmw::bench::RandomSet(
                     count, lmw::bench::LengthFor(count, static_cast<double>(state.range(1)))));
}
BENCHMARK(BoostJoin)->Args({100000, 10000})->Args({100000, 500000})->Unit(benchmark::kMillisecond);

void NetworksBoostJoin(benchmark::State& state) {
    WithNetworks(state, [&](const Lines& lines) { RunBoostJoin(state, lines); });
}
BENCHMARK(NetworksBoostJoin)->Unit(benchmark::kMillisecond);

#endif

}  // namespace
