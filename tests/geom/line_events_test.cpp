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
using Question = void (*)(Events&, const Lines&, const Precision3D&, SweepLineImplForced::Type);

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

    Events Run(Question question) {
        Events events;
        for (std::size_t i = 0; i < lines_.size(); ++i) {
            for (std::size_t j = i + 1; j < lines_.size(); ++j) {
                const Line2D& a = lines_[i];
                const Line2D& b = lines_[j];
                if (IsPlaceholder(a) || IsPlaceholder(b)) {
                    continue;
                }
                for (const Point2D& p : Points(question, a, b)) {
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

    std::vector<Point2D> Points(Question question, const Line2D& a, const Line2D& b) const {
        Point2D p0;
        Point2D p1;
        if (question == static_cast<Question>(Geom::LineCollisionEvents2D)) {
            return {LineCollision2D(a.first, a.second, b.first, b.second, precision_)};
        }
        const int code =
            LineIntersection2D(p0, p1, a.first, a.second, b.first, b.second, precision_);
        if (question == Geom::LineCoincidentEvents2D) {
            if (code != 2) {
                return {};
            }
            const bool both = IsEndOf(p1, a, precision_) && IsEndOf(p1, b, precision_);
            return both ? std::vector{p0} : std::vector{p0, p1};
        }
        if (question == Geom::LineCrossingEvents2D &&
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

const std::pair<const char*, Question> kQuestions[] = {
    {"intersection", Geom::LineIntersectionEvents2D},
    {"coincident", Geom::LineCoincidentEvents2D},
    {"crossing", Geom::LineCrossingEvents2D},
    {"collision", Geom::LineCollisionEvents2D},
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
    for (const auto& [name, question] : kQuestions) {
        SCOPED_TRACE(name);
        const Events scan = PlainScan(lines, precision).Run(question);
        Events swept;
        question(swept, lines, precision, SweepLineImplForced::kSweep);
        EXPECT_TRUE(SameEvents(scan, swept)) << "sweep: " << Difference(scan, swept);
        Events chosen;
        question(chosen, lines, precision, SweepLineImplForced::kChoose);
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

INSTANTIATE_TEST_SUITE_P(Families, SweepIsScan, testing::ValuesIn(lmw::test::SegmentFamilies()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

namespace lmw::test {
void PrintTo(const SegmentFamily& family, std::ostream* out) {
    *out << family.name;
}
}  // namespace lmw::test
