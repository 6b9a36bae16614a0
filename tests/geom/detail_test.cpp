#include "common/geom/detail/end_filter.h"
#include "common/geom/detail/int128.h"
#include "common/geom/detail/line_sweep.h"
#include "common/geom/detail/pair_grid.h"
#include "common/geom/detail/point_grid.h"
#include "common/geom/detail/sweep_items.h"
#include "common/geom/detail/sweep_status.h"

#include "tests/geom/segment_families.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace {

using namespace Geom::detail;
using Geom::Line2D;
using Geom::Precision3D;
using lmw::test::PropertyRandom;

std::vector<std::uint32_t> AllOf(const std::vector<Line2D>& lines) {
    std::vector<std::uint32_t> all(lines.size());
    std::iota(all.begin(), all.end(), 0U);
    return all;
}

std::vector<WideBox> BoxesOf(const std::vector<Line2D>& lines, const Precision3D& precision) {
    std::vector<WideBox> boxes;
    for (const Line2D& line : lines) {
        boxes.push_back(
            WideBoxOf(line.first, line.second, precision.halfEpsilon[0], precision.halfEpsilon[1]));
    }
    return boxes;
}

#if defined(__SIZEOF_INT128__)
TEST(Int128, HalvesCalculateAsTheCompilersOwn) {
    PropertyRandom random;
    const auto number = [&] {
        const auto bits = static_cast<std::int64_t>(random.Engine()()) >> random.Integer(27, 63);
        return random.Chance(0.1) ? std::int64_t{random.Integer(-1, 1)} : bits;  // below 2^36
    };
    for (int k = 0; k < 20000; ++k) {
        const std::int64_t v[] = {number(), number(), number(), number(), number()};
        const auto half = Int128Halves::Product(v[0], v[1]) * v[4] -
                          Int128Halves::Product(v[2], v[3]) + Int128Halves::Product(v[1], v[2]);
        const auto own = Int128Native::Product(v[0], v[1]) * v[4] -
                         Int128Native::Product(v[2], v[3]) + Int128Native::Product(v[1], v[2]);
        ASSERT_EQ(own.Sign(), half.Sign()) << v[0] << ' ' << v[1] << ' ' << v[2] << ' ' << v[3];
        ASSERT_DOUBLE_EQ(own.ToDouble(), half.ToDouble());
    }
}
#endif

TEST(SweepStatus, KeepsOrderAndNeighboursAsAVectorDoes) {
    PropertyRandom random;
    constexpr std::uint32_t kItems = 300;
    SweepStatus status(kItems);
    std::vector<std::uint32_t> plain;  // the same order, from below
    const auto place = [&](std::uint32_t item) {
        return std::find(plain.begin(), plain.end(), item) - plain.begin();
    };
    for (int step = 0; step < 5000; ++step) {
        const auto item = static_cast<std::uint32_t>(random.Integer(0, kItems - 1));
        if (!status.Contains(item)) {
            const auto at = random.Integer(0, static_cast<int>(plain.size()));
            status.Insert(item, [&](std::uint32_t other) { return place(other) < at; });
            plain.insert(plain.begin() + at, item);
        } else if (random.Chance(0.5)) {
            status.Erase(item);
            plain.erase(plain.begin() + place(item));
        } else if (place(item) + 1 < static_cast<std::ptrdiff_t>(plain.size())) {
            const std::uint32_t above = status.Above(item);
            status.Exchange(item, above);
            std::iter_swap(plain.begin() + place(item), plain.begin() + place(above));
        }
        for (std::size_t k = 0; step % 50 == 0 && k < plain.size(); ++k) {
            ASSERT_EQ(k > 0 ? plain[k - 1] : SweepStatus::kNone, status.Below(plain[k]));
            ASSERT_EQ(k + 1 < plain.size() ? plain[k + 1] : SweepStatus::kNone,
                      status.Above(plain[k]));
            ASSERT_EQ(plain[k], status.LowerBound([&](std::uint32_t other) {
                return place(other) >= static_cast<std::ptrdiff_t>(k);
            }));
        }
    }
}

TEST(SweepItems, EventsComeInTheOrderOfTheQueue) {
    PropertyRandom random;
    for (const auto& family : lmw::test::SegmentFamilies()) {
        if (std::string(family.name) == "wild_values") {
            continue;  // the sweep is never given such
        }
        const Precision3D precision(3, 3, 3);
        const auto lines = family.make(random, 200, precision.halfEpsilon[0]);
        const auto events = SweepItems(lines, AllOf(lines), precision).Events();
        EXPECT_TRUE(std::is_sorted(events.begin(), events.end())) << family.name;
        EXPECT_EQ(Geom::impl::LineEventType::kStart, GetLineEventType2D(events.front()));
        EXPECT_EQ(Geom::impl::LineEventType::kEnd, GetLineEventType2D(events.back()));
    }
}

/// Beyond the meeting pairs the sweep may only find pairs close by: the cost rests on that.
TEST(SweepPairs, FindsNothingAmongSegmentsThatKeepTheirDistance) {  // property 2
    const Precision3D precision(3, 3, 3);
    const double gap = 10.0 * precision.halfEpsilon[0];
    std::vector<Line2D> lines;
    for (int k = 0; k < 100; ++k) {  // diagonals in each other's boxes
        lines.push_back({{k * gap, -k * gap}, {k * gap + 9.0, 9.0 - k * gap}});
    }
    EXPECT_TRUE(SweepPairs(lines, BoxesOf(lines, precision), AllOf(lines), precision).empty());
}

/// Sparse ends, so that chains of equal ones form, reach across cells and break off.
TEST(EndFilter, LeavesOutOnlyEndsThatChangeNoAnswer) {
    PropertyRandom random;
    const Precision3D precision(3, 3, 3);
    const double h = precision.halfEpsilon[0];
    int closed = 0;
    std::size_t left_out = 0;
    for (int k = 0; k < 2000; ++k) {
        const auto point = [&] {
            return Geom::Point2D{h * random.Uniform(0.0, 150.0), h * random.Uniform(0.0, 2.0)};
        };
        std::vector<Line2D> lines(80);
        for (Line2D& line : lines) {
            line = {point(), point()};
        }
        const Geom::Point2D points[] = {point(), point(), point(), point()};
        EndFilter filter({0.0, 150.0 * h, 0.0, 2.0 * h}, 200, precision);
        for (const Geom::Point2D& p : points) {
            filter.MarkAround(p);
        }
        const auto ends = filter.CloseOver(lines);
        if (!ends) {
            continue;
        }
        ++closed;
        PointGrid all(precision);
        PointGrid some(precision);
        for (const Line2D& line : lines) {
            all.Insert(line.first);
            all.Insert(line.second);
        }
        for (const Geom::Point2D& end : *ends) {
            some.Insert(end);
        }
        left_out += 2 * lines.size() - ends->size();
        for (const Geom::Point2D& p : points) {
            ASSERT_TRUE(IsExactEqual2D(all.Points()[all.Insert(p)], some.Points()[some.Insert(p)]));
        }
    }
    EXPECT_GT(closed, 1000);
    EXPECT_GT(left_out, 10000U);
}

TEST(PairGrid, MissesNoPairWhereTheRangeHasNoWidthToDivideBy) {
    const Precision3D exact(400, 400, 400);  // no tolerance at all
    std::vector<Line2D> star;
    std::vector<WideBox> boxes;
    for (int k = 0; k < 100; ++k) {
        star.push_back({{0.0, 0.0}, {1e-315 * k, 1e-315 * (100 - k)}});
        boxes.push_back(WideBoxOf(star.back().first, star.back().second, 0.0, 0.0));
    }
    std::vector<std::uint32_t> used(star.size());
    std::iota(used.begin(), used.end(), 0U);
    std::size_t visits = 0;
    EXPECT_TRUE(PairGrid(star, boxes, used, exact).ForPairs([&](auto, auto) {
        ++visits;
        return true;
    }));
    EXPECT_EQ(100U * 99U / 2U, visits);
}

TEST(PairGrid, GivesUpRatherThanWorkQuadratically) {
    const Precision3D precision(3, 3, 3);
    std::vector<Line2D> fan;  // all boxes meet, the directions differ, nothing meets
    for (int k = 0; k < 2000; ++k) {
        const double angle = 1.4 * k / 2000.0 + 0.05;
        fan.push_back({{10.0 * std::cos(angle), 10.0 * std::sin(angle)},
                       {5000.0 * std::cos(angle), 5000.0 * std::sin(angle)}});
    }
    std::size_t visits = 0;
    const auto boxes = BoxesOf(fan, precision);
    const auto used = AllOf(fan);
    const bool all = PairGrid(fan, boxes, used, precision).ForPairs([&](auto, auto) {
        ++visits;
        return false;
    });
    EXPECT_FALSE(all);
    EXPECT_LT(visits, 200U * fan.size());
}

}  // namespace
