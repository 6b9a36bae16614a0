#include "tests/geom/plain_scan.h"

#include "common/geom/line_intersection.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <utility>

namespace lmw::test {

namespace {

using namespace Geom;
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
    {"intersection", Kind::kIntersection, LineIntersectionEvents2D},
    {"coincident", Kind::kCoincident, LineCoincidentEvents2D},
    {"crossing", Kind::kCrossing, LineCrossingEvents2D},
    {"collision", Kind::kCollision, LineCollisionEvents2D},
};

bool IsEndOf(const Point2D& p, const Line2D& line, const Precision3D& precision) {
    return IsEqual2D(p, line.first, precision) || IsEqual2D(p, line.second, precision);
}

/// Points in the order of their coming; each snaps to the first one that is equal.
class FirstEqual {
 public:
    explicit FirstEqual(const Precision3D& precision) : precision_(precision) {}

    Point2D Snap(const Point2D& p) {
        if (std::isnan(p.x)) {  // equals nothing
            return p;
        }
        const double reach = 2.0 * precision_.halfEpsilon[0];
        std::size_t first = points_.size();
        for (auto near = by_x_.lower_bound(p.x - reach);
             near != by_x_.end() && near->first <= p.x + reach; ++near) {
            if (near->second < first && IsEqual2D(points_[near->second], p, precision_)) {
                first = near->second;
            }
        }
        if (first == points_.size()) {
            by_x_.emplace(p.x, first);
            points_.push_back(p);
        }
        return points_[first];
    }

 private:
    Precision3D precision_;
    std::vector<Point2D> points_;
    std::multimap<double, std::size_t> by_x_;  // saves time: only these can be equal
};

/// The definition, written plainly: the public pair tests on every pair, and snapping.
class PlainScan {
 public:
    PlainScan(const Lines& lines, const Precision3D& precision)
        : precision_(precision), ends_(precision) {
        for (const Line2D& line : lines) {
            if (line.first.IsValid() && line.second.IsValid()) {
                ends_.Snap(line.first);
                ends_.Snap(line.second);
            }
        }
        for (std::size_t i = 0; i < lines.size(); ++i) {
            for (std::size_t j = i + 1; j < lines.size(); ++j) {
                AddPair(lines[i], lines[j]);
            }
        }
    }

    [[nodiscard]] Events Run(Kind kind) const {
        Events events;
        FirstEqual stored = ends_;
        for (const Pair& pair : pairs_) {
            for (const Point2D& p : Points(kind, pair)) {
                if (p.IsValid()) {
                    events.push_back({stored.Snap(p), pair.a, pair.b});
                }
            }
        }
        return events;
    }

 private:
    /// Two segments for which LineIntersection2D answers `code`, 1 or 2.
    struct Pair {
        const Line2D* a;
        const Line2D* b;
        int code;
        Point2D p0, p1;
    };

    static bool IsPlaceholder(const Line2D& line) {
        return !line.first.IsValid() && !line.second.IsValid();
    }

    void AddPair(const Line2D& a, const Line2D& b) {
        Pair pair{&a, &b, 0, {}, {}};
        pair.code =
            LineIntersection2D(pair.p0, pair.p1, a.first, a.second, b.first, b.second, precision_);
        if (pair.code > 0 && !IsPlaceholder(a) && !IsPlaceholder(b)) {
            pairs_.push_back(pair);
        }
    }

    [[nodiscard]] std::array<Point2D, 2> Points(Kind kind, const Pair& pair) const {
        const auto& [a, b, code, p0, p1] = pair;
        switch (kind) {
            case Kind::kIntersection:
                return {p0, p1};
            case Kind::kCoincident: {
                const bool of_both = IsEndOf(p1, *a, precision_) && IsEndOf(p1, *b, precision_);
                return {code == 2 ? p0 : Point2D{}, of_both ? Point2D{} : p1};
            }
            case Kind::kCrossing:
                return {LineIsCrossing2D(a->first, a->second, b->first, b->second, precision_)
                            ? p0
                            : Point2D{}};
            case Kind::kCollision:
                return {LineCollision2D(a->first, a->second, b->first, b->second, precision_)};
        }
        return {};
    }

    const Precision3D& precision_;
    FirstEqual ends_;
    std::vector<Pair> pairs_;
};

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

}  // namespace

bool SameEvents(const std::vector<LineEvent2D>& a, const std::vector<LineEvent2D>& b) {
    const auto same = [](const LineEvent2D& e, const LineEvent2D& f) {
        // NaN cannot be reported, so comparing values compares bits, but for the sign of zero.
        return e.point.x == f.point.x && std::signbit(e.point.x) == std::signbit(f.point.x) &&
               e.point.y == f.point.y && std::signbit(e.point.y) == std::signbit(f.point.y) &&
               e.first == f.first && e.second == f.second;
    };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), same);
}

void ExpectSweepIsScan(const std::vector<Line2D>& lines, const Precision3D& precision) {
    const PlainScan plain(lines, precision);
    for (const Question& question : kQuestions) {
        SCOPED_TRACE(question.name);
        const Events scan = plain.Run(question.kind);
        Events swept;
        question.ask(swept, lines, precision, SweepLineImplForced::kSweep);
        EXPECT_TRUE(SameEvents(scan, swept)) << "sweep: " << Difference(scan, swept);
        Events chosen;
        question.ask(chosen, lines, precision, SweepLineImplForced::kChoose);
        EXPECT_TRUE(SameEvents(scan, chosen)) << "chosen: " << Difference(scan, chosen);
    }
}

}  // namespace lmw::test
