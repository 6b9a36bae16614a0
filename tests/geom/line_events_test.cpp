#include "common/geom/line_events.h"

#include "tests/geom/plain_scan.h"
#include "tests/geom/segment_families.h"
#include "tests/support/property_random.h"
#include "tests/support/threads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <string>

namespace {

using namespace Geom;
using namespace lmw::test;

using Lines = std::vector<Line2D>;
using Events = std::vector<LineEvent2D>;

/// LMW_TEST_SETS multiplies the number of random sets, for long runs.
int Rounds() {
    const char* text = std::getenv("LMW_TEST_SETS");
    return text != nullptr ? std::atoi(text) : 1;
}

class SweepIsScan : public testing::TestWithParam<SegmentFamily> {};

TEST_P(SweepIsScan, OnSetsOfManySizes) {  // property 1
    PropertyRandom random;
    const auto expect = [&](std::size_t size, const Precision3D& precision) {
        SCOPED_TRACE(std::to_string(size) + " of decimals " +
                     std::to_string(precision.decimals[0]));
        // The unset tolerance is no distance to build near misses with.
        const double h = std::min(precision.halfEpsilon[random.Chance(0.5) ? 0 : 1], 1.0);
        ExpectSweepIsScan(GetParam().make(random, size, h), precision);
    };
    const Precision3D precisions[] = {Precision3D(3, 3, 3), Precision3D(1, 5, 3),
                                      Precision3D(7, 7, 7)};
    for (int round = 0; round < Rounds() && !HasFailure(); ++round) {
        for (const Precision3D& precision : precisions) {
            for (const std::size_t size : {5U, 25U, 60U, 90U, 160U, 300U}) {
                expect(size, precision);
            }
        }
        expect(30, Precision3D());
        expect(kLargeSet, Precision3D(4, 4, 4));
    }
}

TEST(LineEvents, ThreeSegmentsThroughOnePointReportIdenticalBits) {  // property 2
    const Precision3D precision(3, 3, 3);
    const Lines lines{{{0, 0}, {3, 1}}, {{0, 1}, {3, 0}}, {{1.4999, -1}, {1.5002, 2}}};
    Events events;
    LineCrossingEvents2D(events, lines, precision);
    ASSERT_EQ(3U, events.size());
    for (const LineEvent2D& event : events) {
        EXPECT_TRUE(IsExactEqual2D(event.point, events[0].point));
    }
}

TEST(LineEvents, AreAppendedAndPlaceholdersGiveNone) {  // property 3
    const Precision3D precision(3, 3, 3);
    Events events(1);
    LineIntersectionEvents2D(events, {}, precision);
    LineIntersectionEvents2D(events, Lines(30), precision);
    LineIntersectionEvents2D(events, Lines(30), precision, SweepLineImplForced::kSweep);
    EXPECT_EQ(1U, events.size());
    const Lines crossing{{{0, 0}, {2, 2}}, {}, {{0, 2}, {2, 0}}};
    LineIntersectionEvents2D(events, crossing, precision);
    ASSERT_EQ(2U, events.size());
    EXPECT_EQ(&crossing[2], events[1].second);
    // Under an unset tolerance, where everything is equal, as well.
    events.clear();
    LineIntersectionEvents2D(events, Lines{{{0, 0}, {1, 1}}, {}, {}}, Precision3D());
    EXPECT_TRUE(events.empty());
}

TEST(LineEvents, AnOverlapsFarEndIsDroppedWhenItEndsBoth) {  // property 4
    const Precision3D precision(3, 3, 3);
    const Lines same{{{0, 0}, {1, 0}}, {{1, 0}, {0, 0}}};
    const Lines partial{{{0, 0}, {2, 0}}, {{1, 0}, {3, 0}}};
    using Ask = void (*)(Events&, const Lines&, const Precision3D&, SweepLineImplForced::Type);
    const auto count = [&](Ask ask, const Lines& lines) {
        Events events;
        ask(events, lines, precision, SweepLineImplForced::kChoose);
        return events.size();
    };
    EXPECT_EQ(2U, count(LineIntersectionEvents2D, same));
    EXPECT_EQ(1U, count(LineCoincidentEvents2D, same));
    EXPECT_EQ(2U, count(LineCoincidentEvents2D, partial));
    EXPECT_EQ(1U, count(LineCollisionEvents2D, partial));
    EXPECT_EQ(0U, count(LineCrossingEvents2D, partial));
}

TEST(LineEvents, CollisionsSnapToTheCallersDatabase) {
    const Precision3D precision(0, 0, 0);
    const Lines lines{{{0, 0}, {4, 4}}, {{0, 4}, {4, 0}}};
    const auto database = MakeGeometryDataBase(std::vector<Point2D>{{2.25, 2.25}}, precision);
    Events events;
    LineCollisionEvents2D(events, lines, *database);
    ASSERT_EQ(1U, events.size());
    EXPECT_EQ(2.25, events[0].point.x);
}

TEST(LineEvents, DuplicatesGoAndTheFirstStays) {
    const Lines lines(3);
    const Line2D* a = &lines[0];
    const Line2D* b = &lines[1];
    const Line2D* c = &lines[2];
    Events events{{{0, 0}, a, b}, {{0.4, 0}, b, a}, {{0, 0}, a, c}, {{1, 0}, a, b}, {{0, 0}, a, b}};
    LineRemoveDuplicateEvents2D(events, Precision3D(0, 0, 0));
    ASSERT_EQ(3U, events.size());
    EXPECT_EQ(0.0, events[0].point.x);
    EXPECT_EQ(c, events[1].second);
    EXPECT_EQ(1.0, events[2].point.x);
}

TEST(LineEvents, ManyThreadsMayAskAndDemandTheSweep) {
    PropertyRandom random;
    const Precision3D precision(3, 3, 3);
    const Lines lines = SegmentFamilies()[0].make(random, 300, 1e-3);
    Events expected;
    LineIntersectionEvents2D(expected, lines, precision);
    InThreads(4, [&](std::size_t t) {
        for (int k = 0; k < 5; ++k) {
            SetSweepDemand(t % 2 == 0 ? SweepDemand::kOn : SweepDemand::kOff);
            Events events;
            LineIntersectionEvents2D(events, lines, precision);
            EXPECT_TRUE(SameEvents(expected, events));
        }
    });
    SetSweepDemand(SweepDemand::kOff);
}

INSTANTIATE_TEST_SUITE_P(Families, SweepIsScan, testing::ValuesIn(SegmentFamilies()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

namespace lmw::test {
void PrintTo(const SegmentFamily& family, std::ostream* out) {
    *out << family.name;
}
}  // namespace lmw::test
