#include "common/geom/line_events.h"

#include "common/geom/line_intersection.h"

#include "tests/geom/segment_families.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <ostream>
#include <string>
#include <thread>

namespace {

using Geom::Line2D;
using Geom::LineEvent2D;
using Geom::Point2D;
using Geom::Precision3D;
using Geom::SweepLineImplForced;
using lmw::test::Exact;
using lmw::test::PropertyRandom;

using Lines = std::vector<Line2D>;
using Events = std::vector<LineEvent2D>;
using Ask = void (*)(Events&, const Lines&, const Precision3D&, SweepLineImplForced::Type);

/// A question and its own kind: on Windows the address of an imported function has two values, the
/// library's and that of the program's stub, so an address cannot tell which question it is.
enum class Kind { kIntersection, kCoincident, kCrossing, kCollision };
struct Question {
    const char* name;
    Kind kind;
    Ask ask;
};

const Question kQuestions[] = {
    {"intersection", Kind::kIntersection, Geom::LineIntersectionEvents2D},
    {"coincident", Kind::kCoincident, Geom::LineCoincidentEvents2D},
    {"crossing", Kind::kCrossing, Geom::LineCrossingEvents2D},
    {"collision", Kind::kCollision, Geom::LineCollisionEvents2D},
};

bool IsEndOf(const Point2D& p, const Line2D& line, const Precision3D& precision) {
    return IsEqual2D(p, line.first, precision) || IsEqual2D(p, line.second, precision);
}

/// The definition, written plainly: every pair, the public pair tests, and snapping to the first
/// equal point by linear search.
class PlainScan {
 public:
    PlainScan(const Lines& lines, const Precision3D& precision)
        : lines_(lines), precision_(precision) {
        for (const Line2D& line : lines) {
            if (line.first.IsValid() && line.second.IsValid()) {
                Snap(line.first);
                Snap(line.second);
            }
        }
    }

    Events Run(Kind kind) {
        Events events;
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            for (std::size_t j = i + 1; j < lines_.size(); ++j) {
                const Line2D& a = lines_[i];
                const Line2D& b = lines_[j];
                if (IsPlaceholder(a) || IsPlaceholder(b)) {
                    continue;
                }
                for (const Point2D& p : Points(kind, a, b)) {
                    if (p.IsValid()) {
                        events.push_back({Snap(p), &a, &b});
                    }
                }
            }
        }
        return events;
    }

 private:
    static bool IsPlaceholder(const Line2D& line) {
        return !line.first.IsValid() && !line.second.IsValid();
    }

    std::vector<Point2D> Points(Kind kind, const Line2D& a, const Line2D& b) const {
        Point2D p0;
        Point2D p1;
        if (kind == Kind::kCollision) {
            return {LineCollision2D(a.first, a.second, b.first, b.second, precision_)};
        }
        const int code =
            LineIntersection2D(p0, p1, a.first, a.second, b.first, b.second, precision_);
        if (kind == Kind::kCoincident) {
            if (code != 2) {
                return {};
            }
            const bool both = IsEndOf(p1, a, precision_) && IsEndOf(p1, b, precision_);
            return both ? std::vector{p0} : std::vector{p0, p1};
        }
        if (kind == Kind::kCrossing &&
            !LineIsCrossing2D(a.first, a.second, b.first, b.second, precision_)) {
            return {};
        }
        return {p0, p1};
    }

    Point2D Snap(const Point2D& p) {
        for (const Point2D& known : stored_) {
            if (IsEqual2D(known, p, precision_)) {
                return known;
            }
        }
        return stored_.emplace_back(p);
    }

    const Lines& lines_;
    const Precision3D& precision_;
    std::vector<Point2D> stored_;
};

bool SameEvents(const Events& a, const Events& b) {
    const auto same = [](const LineEvent2D& e, const LineEvent2D& f) {
        // NaN cannot be reported, so comparing values compares bits, but for the sign of zero.
        return e.point.x == f.point.x && std::signbit(e.point.x) == std::signbit(f.point.x) &&
               e.point.y == f.point.y && std::signbit(e.point.y) == std::signbit(f.point.y) &&
               e.first == f.first && e.second == f.second;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

/// The first difference and its two segments, ready to be pasted.
std::string Difference(const Events& scan, const Events& other) {
    std::string text = std::to_string(scan.size()) + " events by the scan, " +
                       std::to_string(other.size()) + " by the other method\n";
    for (std::size_t k = 0; k < scan.size(); ++k) {
        if (k < other.size() && SameEvents({scan[k]}, {other[k]})) {
            continue;
        }
        for (const Line2D* line : {scan[k].first, scan[k].second}) {
            text += "{{" + Exact(line->first.x) + ", " + Exact(line->first.y) + "}, {" +
                    Exact(line->second.x) + ", " + Exact(line->second.y) + "}},\n";
        }
        break;
    }
    return text;
}

void ExpectSweepIsScan(const Lines& lines, const Precision3D& precision) {
    for (const Question& question : kQuestions) {
        SCOPED_TRACE(question.name);
        const Events scan = PlainScan(lines, precision).Run(question.kind);
        Events swept;
        question.ask(swept, lines, precision, SweepLineImplForced::kSweep);
        EXPECT_TRUE(SameEvents(scan, swept)) << "sweep: " << Difference(scan, swept);
        Events chosen;
        question.ask(chosen, lines, precision, SweepLineImplForced::kChoose);
        EXPECT_TRUE(SameEvents(scan, chosen)) << "chosen: " << Difference(scan, chosen);
    }
}

/// LMW_TEST_SETS multiplies the number of random sets, for long runs.
int Rounds() {
    const char* text = std::getenv("LMW_TEST_SETS");
    return text != nullptr ? std::atoi(text) : 1;
}

class SweepIsScan : public testing::TestWithParam<lmw::test::SegmentFamily> {};

TEST_P(SweepIsScan, OnSetsOfManySizes) {  // property 1
    PropertyRandom random;
    const Precision3D precisions[] = {Precision3D(3, 3, 3), Precision3D(1, 5, 3),
                                      Precision3D(7, 7, 7)};
    for (int round = 0; round < Rounds(); ++round) {
        for (const std::size_t size : {5U, 25U, 60U, 90U, 160U, 300U}) {
            for (const Precision3D& precision : precisions) {
                const double h = precision.halfEpsilon[random.Chance(0.5) ? 0 : 1];
                const Lines lines = GetParam().make(random, size, h);
                SCOPED_TRACE(random.Trace() + " size " + std::to_string(size));
                ExpectSweepIsScan(lines, precision);
                if (HasFailure()) {
                    return;
                }
            }
        }
    }
}

TEST_P(SweepIsScan, OnOneLargeSet) {  // property 1
    PropertyRandom random(7);
    const Precision3D precision(4, 4, 4);
    const Lines lines = GetParam().make(random, 2000, precision.halfEpsilon[0]);
    ExpectSweepIsScan(lines, precision);
}

TEST(LineEvents, ThreeSegmentsThroughOnePointReportIdenticalBits) {  // property 2
    const Precision3D precision(3, 3, 3);
    const Lines lines{{{0, 0}, {3, 1}}, {{0, 1}, {3, 0}}, {{1.4999, -1}, {1.5002, 2}}};
    Events events;
    Geom::LineCrossingEvents2D(events, lines, precision);
    ASSERT_EQ(3U, events.size());
    for (const LineEvent2D& event : events) {
        EXPECT_TRUE(IsExactEqual2D(event.point, events[0].point));
    }
}

TEST(LineEvents, AreAppendedAndPlaceholdersGiveNone) {  // property 3
    const Precision3D precision(3, 3, 3);
    Events events(1);
    Geom::LineIntersectionEvents2D(events, {}, precision);
    Geom::LineIntersectionEvents2D(events, Lines(30), precision);
    Geom::LineIntersectionEvents2D(events, Lines(30), precision, SweepLineImplForced::kSweep);
    EXPECT_EQ(1U, events.size());
    const Lines crossing{{{0, 0}, {2, 2}}, {}, {{0, 2}, {2, 0}}};
    Geom::LineIntersectionEvents2D(events, crossing, precision);
    ASSERT_EQ(2U, events.size());
    EXPECT_EQ(&crossing[2], events[1].second);
    // Under an unset tolerance, where everything is equal, as well.
    events.clear();
    Geom::LineIntersectionEvents2D(events, Lines{{{0, 0}, {1, 1}}, {}, {}}, Precision3D());
    EXPECT_TRUE(events.empty());
}

TEST(LineEvents, AnOverlapsFarEndIsDroppedWhenItEndsBoth) {  // property 4
    const Precision3D precision(3, 3, 3);
    const Lines same{{{0, 0}, {1, 0}}, {{1, 0}, {0, 0}}};
    const Lines partial{{{0, 0}, {2, 0}}, {{1, 0}, {3, 0}}};
    const auto count = [&](Ask ask, const Lines& lines) {
        Events events;
        ask(events, lines, precision, SweepLineImplForced::kChoose);
        return events.size();
    };
    EXPECT_EQ(2U, count(Geom::LineIntersectionEvents2D, same));
    EXPECT_EQ(1U, count(Geom::LineCoincidentEvents2D, same));
    EXPECT_EQ(2U, count(Geom::LineCoincidentEvents2D, partial));
    EXPECT_EQ(1U, count(Geom::LineCollisionEvents2D, partial));
    EXPECT_EQ(0U, count(Geom::LineCrossingEvents2D, partial));
}

TEST(LineEvents, CollisionsSnapToTheCallersDatabase) {
    const Precision3D precision(0, 0, 0);
    const Lines lines{{{0, 0}, {4, 4}}, {{0, 4}, {4, 0}}};
    const auto database = Geom::MakeGeometryDataBase(std::vector<Point2D>{{2.25, 2.25}}, precision);
    Events events;
    Geom::LineCollisionEvents2D(events, lines, *database);
    ASSERT_EQ(1U, events.size());
    EXPECT_EQ(2.25, events[0].point.x);
}

TEST(LineEvents, DuplicatesGoAndTheFirstStays) {
    const Lines lines(3);
    const Line2D* a = &lines[0];
    const Line2D* b = &lines[1];
    const Line2D* c = &lines[2];
    Events events{{{0, 0}, a, b}, {{0.4, 0}, b, a}, {{0, 0}, a, c}, {{1, 0}, a, b}, {{0, 0}, a, b}};
    Geom::LineRemoveDuplicateEvents2D(events, Precision3D(0, 0, 0));
    ASSERT_EQ(3U, events.size());
    EXPECT_EQ(0.0, events[0].point.x);
    EXPECT_EQ(c, events[1].second);
    EXPECT_EQ(1.0, events[2].point.x);
}

TEST(LineEvents, ManyThreadsMayAskAndDemandTheSweep) {
    PropertyRandom random;
    const Precision3D precision(3, 3, 3);
    const Lines lines = lmw::test::SegmentFamilies()[0].make(random, 300, 1e-3);
    Events expected;
    Geom::LineIntersectionEvents2D(expected, lines, precision);
    std::vector<std::thread> threads;
    std::vector<int> same(4, 0);
    for (std::size_t t = 0; t < same.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int k = 0; k < 5; ++k) {
                SetSweepDemand(t % 2 == 0 ? Geom::SweepDemand::kOn : Geom::SweepDemand::kOff);
                Events events;
                Geom::LineIntersectionEvents2D(events, lines, precision);
                same[t] += SameEvents(expected, events) ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    SetSweepDemand(Geom::SweepDemand::kOff);
    EXPECT_EQ(std::vector<int>(4, 5), same);
}

INSTANTIATE_TEST_SUITE_P(Families, SweepIsScan, testing::ValuesIn(lmw::test::SegmentFamilies()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

namespace lmw::test {
void PrintTo(const SegmentFamily& family, std::ostream* out) {
    *out << family.name;
}
}  // namespace lmw::test
