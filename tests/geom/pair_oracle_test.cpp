#include "common/geom/line2d.h"
#include "common/geom/line_intersection.h"

#include "tests/geom/segment_families.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace Geom;
using namespace lmw::test;

/// The pair test step by step from the public primitives, without any short cut.
class PlainPair {
 public:
    PlainPair(const Line2D& a, const Line2D& b, const Precision3D& precision)
        : a_(a), b_(b), precision_(precision) {}

    int Run(Point2D& p0, Point2D& p1) const {
        p0 = p1 = kInvalidPoint;
        if (!BoxesMeet()) {
            return 0;
        }
        Point2D interior;
        bool has_interior = false;
        std::vector<Point2D> list;
        const auto touch = [&](const Point2D& p, const Line2D& s) {
            const Point2D closest =
                LineClosestPoint2D(s.first, s.second, p, NonPerpendicularMode::kNone, precision_);
            const bool found =
                IsEqual2D(closest, p, precision_) &&
                (closest.IsValid() || IsExactEqual2D(p, s.first) || IsExactEqual2D(p, s.second));
            if (found && !has_interior && !IsEqual2D(p, s.first, precision_) &&
                !IsEqual2D(p, s.second, precision_)) {
                has_interior = true;
                interior = p;
            } else if (found) {
                list.push_back(p);
            }
        };
        touch(a_.first, b_);
        touch(a_.second, b_);
        touch(b_.first, a_);
        touch(b_.second, a_);
        int code = 0;
        if (has_interior) {
            p0 = interior;
            code = list.empty() ? 1 : (Collinear() ? 2 : 0);
            p1 = list.empty() ? kInvalidPoint : list[0];
        } else if (!list.empty()) {
            p0 = list[0];
            code = 1;
            for (auto p = list.rbegin(); p != list.rend(); ++p) {
                if (!IsEqual2D(*p, p0, precision_)) {
                    code = 2;
                    p1 = *p;
                }
            }
        }
        if (code < 2) {
            code = Crosses(p0) ? 1 : code;
            p1 = kInvalidPoint;
        }
        p0 = code == 0 ? kInvalidPoint : p0;
        return code;
    }

 private:
    bool BoxesMeet() const {
        const double hx = precision_.halfEpsilon[0];
        const double hy = precision_.halfEpsilon[1];
        const auto apart = [](double p, double q, double r, double s, double h) {
            return !(std::min(p, q) - h <= std::max(r, s) + h &&
                     std::min(r, s) - h <= std::max(p, q) + h);
        };
        return !apart(a_.first.x, a_.second.x, b_.first.x, b_.second.x, hx) &&
               !apart(a_.first.y, a_.second.y, b_.first.y, b_.second.y, hy);
    }

    bool Collinear() const {
        const auto length2 = [](const Line2D& l) {
            const double dx = l.second.x - l.first.x;
            const double dy = l.second.y - l.first.y;
            return dx * dx + dy * dy;
        };
        const Line2D& longer = length2(b_) > length2(a_) ? b_ : a_;
        const Line2D& shorter = length2(b_) > length2(a_) ? a_ : b_;
        const auto on = [&](const Point2D& p) {
            return IsEqual2D(InfLineClosestPoint2D(longer.first, longer.second, p, precision_), p,
                             precision_);
        };
        return on(shorter.first) && on(shorter.second);
    }

    bool Crosses(Point2D& p0) const {
        const Point2D da{a_.second.x - a_.first.x, a_.second.y - a_.first.y};
        const Point2D db{b_.second.x - b_.first.x, b_.second.y - b_.first.y};
        const Point2D w{b_.first.x - a_.first.x, b_.first.y - a_.first.y};
        const auto cross = [](const Point2D& u, const Point2D& v) { return u.x * v.y - u.y * v.x; };
        const double d = cross(da, db);
        if (d == 0.0) {
            return false;
        }
        const double t = cross(w, db) / d;
        const double u = cross(w, da) / d;
        if (!(std::fabs(cross(w, db)) <= std::fabs(d) && t >= 0.0 &&
              std::fabs(cross(w, da)) <= std::fabs(d) && u >= 0.0)) {
            return false;
        }
        const Point2D at_a{a_.first.x + t * da.x, a_.first.y + t * da.y};
        if (!IsEqual2D(at_a, Point2D{b_.first.x + u * db.x, b_.first.y + u * db.y}, precision_)) {
            return false;
        }
        p0 = at_a;
        return true;
    }

    const Line2D& a_;
    const Line2D& b_;
    const Precision3D& precision_;
};

std::string Text(const Line2D& line) {
    return "{{" + Exact(line.first.x) + ", " + Exact(line.first.y) + "}, {" + Exact(line.second.x) +
           ", " + Exact(line.second.y) + "}} ";
}

void ExpectPlainAnswer(const Line2D& a, const Line2D& b, const Precision3D& precision) {
    Point2D p0;
    Point2D p1;
    Point2D q0;
    Point2D q1;
    const int plain = PlainPair(a, b, precision).Run(p0, p1);
    ASSERT_EQ(plain, LineIntersection2D(q0, q1, a.first, a.second, b.first, b.second, precision))
        << Text(a) << Text(b);
    ASSERT_TRUE(IsExactEqual2D(p0, q0) && IsExactEqual2D(p1, q1)) << Text(a) << Text(b);
}

TEST(PairOracle, TheShortCutsChangeNoAnswer) {
    PropertyRandom random;
    for (const auto& family : SegmentFamilies()) {
        SCOPED_TRACE(family.name);
        for (const Precision3D& precision :
             {Precision3D(3, 3, 3), Precision3D(1, 6, 3), Precision3D(15, 15, 15)}) {
            const auto lines = family.make(random, 150, precision.halfEpsilon[0]);
            for (std::size_t i = 0; i < lines.size(); ++i) {
                for (std::size_t j = i + 1; j < lines.size(); ++j) {
                    ExpectPlainAnswer(lines[i], lines[j], precision);
                }
            }
        }
    }
}

/// Nearly collinear pairs of any size and offset, with a tolerance near the rounding of the
/// coordinates: here a short cut with too little allowance would show.
TEST(PairOracle, TheShortCutsAllowForRounding) {
    PropertyRandom random;
    for (int k = 0; k < 60000; ++k) {
        const double size = random.LogUniform(1e-6, 1e6);
        const double offset = random.Chance(0.5) ? 0.0 : random.LogUniform(1.0, 1e8) * size;
        const Point2D o{offset, -offset};
        const Point2D d{random.Uniform(-size, size), random.Uniform(-size, size)};
        Precision3D precision(0, 0, 0);
        precision.ScaleEpsilon(random.LogUniform(1e-17, 1e-3) * (size + offset));
        const double h = precision.halfEpsilon[0];
        const auto on_line = [&] {
            const double t = random.Uniform(-0.5, 1.5);
            return Point2D{o.x + t * d.x + random.Uniform(-2.5, 2.5) * h,
                           o.y + t * d.y + random.Uniform(-2.5, 2.5) * h};
        };
        const Point2D end{o.x + d.x, o.y + d.y};
        const Point2D away{o.x + random.Uniform(-size, size), o.y + random.Uniform(-size, size)};
        ExpectPlainAnswer({o, end}, {on_line(), random.Chance(0.5) ? on_line() : away}, precision);
    }
}

}  // namespace
