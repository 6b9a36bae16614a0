#include "tests/geom/segment_families.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lmw::test {

namespace {

using Geom::Line2D;
using Geom::Point2D;
using Lines = std::vector<Line2D>;

Point2D RandomPoint(PropertyRandom& random, double size) {
    return {random.Uniform(0.0, size), random.Uniform(0.0, size)};
}

/// A displacement that a tolerance of h may or may not bridge.
double Nudge(PropertyRandom& random, double h) {
    const double steps[] = {0.0, 0.5, 0.99, 1.0, 1.01, 1.5, 1.99, 2.0, 2.01, 3.0};
    return h * random.Pick(steps) * (random.Chance(0.5) ? 1.0 : -1.0);
}

Point2D Nudged(PropertyRandom& random, const Point2D& p, double h) {
    return {p.x + Nudge(random, h), p.y + Nudge(random, h)};
}

Point2D Between(const Line2D& line, double t) {
    return {line.first.x + t * (line.second.x - line.first.x),
            line.first.y + t * (line.second.y - line.first.y)};
}

/// Makes segments until there are enough.
template <class Make>
Lines Filled(std::size_t count, const Make& make) {
    Lines lines;
    while (lines.size() < count) {
        make(lines);
    }
    return lines;
}

Lines RandomShort(PropertyRandom& random, std::size_t count, double) {
    const double length = 100.0 / std::sqrt(static_cast<double>(count));
    return Filled(count, [&](Lines& lines) {
        const Point2D p = RandomPoint(random, 100.0);
        lines.push_back(
            {p, {p.x + random.Uniform(-length, length), p.y + random.Uniform(-length, length)}});
    });
}

Lines RandomLong(PropertyRandom& random, std::size_t count, double) {
    // nearly all pairs meet
    return Filled(std::min<std::size_t>(count, 150), [&](Lines& lines) {
        lines.push_back({RandomPoint(random, 100.0), RandomPoint(random, 100.0)});
    });
}

/// Ends on an integer lattice: shared ends, collinear overlaps, T junctions, verticals.
Lines GridAligned(PropertyRandom& random, std::size_t count, double) {
    const int side = std::max(4, static_cast<int>(std::sqrt(static_cast<double>(count))));
    return Filled(count, [&](Lines& lines) {
        const Point2D p{1.0 * random.Integer(0, side), 1.0 * random.Integer(0, side)};
        lines.push_back({p, {p.x + random.Integer(-2, 2), p.y + random.Integer(-2, 2)}});
    });
}

Lines Vertical(PropertyRandom& random, std::size_t count, double h) {
    const int side = std::max(4, static_cast<int>(std::sqrt(static_cast<double>(count))));
    return Filled(count, [&](Lines& lines) {
        const Point2D p{random.Integer(0, side) + Nudge(random, h), random.Uniform(0.0, side)};
        if (random.Chance(0.7)) {
            lines.push_back({p, {p.x + Nudge(random, h), p.y + random.Uniform(-2.0, 2.0)}});
        } else {
            lines.push_back({p, {p.x + random.Uniform(-2.0, 2.0), p.y + Nudge(random, h)}});
        }
    });
}

/// Many segments through and near one point.
Lines Star(PropertyRandom& random, std::size_t count, double h) {
    const Point2D centre{50.0, 50.0};
    return Filled(std::min<std::size_t>(count, 150), [&](Lines& lines) {
        const Point2D start = random.Chance(0.5) ? centre : Nudged(random, centre, h);
        const double angle = random.Uniform(0.0, 6.3);
        const double r = random.LogUniform(h, 50.0);
        const double back = random.Chance(0.3) ? random.LogUniform(h, 50.0) : 0.0;
        lines.push_back({{start.x - back * std::cos(angle), start.y - back * std::sin(angle)},
                         {start.x + r * std::cos(angle), start.y + r * std::sin(angle)}});
    });
}

/// Bundles of almost the same line, a few tolerances apart.
Lines NearParallel(PropertyRandom& random, std::size_t count, double h) {
    return Filled(std::min<std::size_t>(count, 500), [&](Lines& lines) {
        const Line2D line{RandomPoint(random, 100.0), RandomPoint(random, 100.0)};
        for (int k = random.Integer(2, 6); k-- > 0;) {
            lines.push_back({Nudged(random, Between(line, random.Uniform(0.0, 0.1)), h),
                             Nudged(random, Between(line, random.Uniform(0.9, 1.0)), h)});
        }
    });
}

/// Pieces of common carriers, partly overlapping, end to end, or a tolerance apart.
Lines Overlapping(PropertyRandom& random, std::size_t count, double h) {
    return Filled(count, [&](Lines& lines) {
        const Point2D p = RandomPoint(random, 100.0);
        const double angle = random.Chance(0.5) ? random.Integer(0, 3) * 1.5707963267948966
                                                : random.Uniform(0.0, 6.3);
        const Point2D d{std::cos(angle), std::sin(angle)};
        for (int k = random.Integer(1, 8); k-- > 0;) {
            const double s = random.Integer(0, 4) + Nudge(random, h);
            const double e = random.Integer(0, 4) + Nudge(random, h);
            lines.push_back({{p.x + s * d.x, p.y + s * d.y}, {p.x + e * d.x, p.y + e * d.y}});
        }
    });
}

/// Everything within a few tolerances.
Lines Clustered(PropertyRandom& random, std::size_t count, double h) {
    return Filled(count, [&](Lines& lines) {
        const Point2D centre = RandomPoint(random, 100.0);
        for (int k = random.Integer(2, 12); k-- > 0;) {
            const Point2D p{centre.x + random.Uniform(-6.0, 6.0) * h,
                            centre.y + random.Uniform(-6.0, 6.0) * h};
            lines.push_back({p, random.Chance(0.2) ? p : Nudged(random, p, 2.0 * h)});
        }
    });
}

/// Ends that stop short of, touch or pass another segment by a tolerance or so.
Lines NearTouches(PropertyRandom& random, std::size_t count, double h) {
    return Filled(count, [&](Lines& lines) {
        const Point2D p = RandomPoint(random, 100.0);
        const double steep = random.Chance(0.3) ? random.LogUniform(1e-6, 1e3) : 1.0;
        const Line2D line{
            p, {p.x + random.Uniform(-1.0, 1.0), p.y + steep * random.Uniform(-1.0, 1.0)}};
        lines.push_back(line);
        for (int k = random.Integer(1, 4); k-- > 0;) {
            const Point2D end = Nudged(random, Between(line, random.Uniform(-0.01, 1.01)), h);
            const double length = random.LogUniform(h, 3.0);
            const double angle = random.Uniform(0.0, 6.3);
            lines.push_back(
                {{end.x + length * std::cos(angle), end.y + length * std::sin(angle)}, end});
        }
    });
}

/// A crossing beside a row of ends, each equal to the next but not to the one after: what the
/// crossing snaps to hangs on the whole row.
Lines RowsOfEnds(PropertyRandom& random, std::size_t count, double h) {
    return Filled(count, [&](Lines& lines) {
        const Point2D c = RandomPoint(random, 100.0);
        lines.push_back({{c.x - 1.0, c.y + 1.0}, {c.x + 5.0 * h, c.y - 5.0 * h}});
        lines.push_back({{c.x - 1.0, c.y - 1.0}, {c.x + 5.0 * h, c.y + 5.0 * h}});
        const auto row = static_cast<std::ptrdiff_t>(lines.size());
        double along = random.Uniform(0.0, 1.0) * h;
        for (int k = 0; k < 30; ++k) {
            lines.push_back({{c.x + along, c.y}, {c.x + 0.1 * k, c.y + 1.0}});
            along += random.Uniform(0.6, 1.1) * h;
        }
        std::shuffle(lines.begin() + row, lines.end(),
                     random.Engine());  // first come, first stored
    });
}

/// A closed network of short edges, as boundaries are, with a few crossings.
Lines Chains(PropertyRandom& random, std::size_t count, double h) {
    return Filled(count, [&](Lines& lines) {
        Point2D p = RandomPoint(random, 100.0);
        double angle = random.Uniform(0.0, 6.3);
        for (int k = random.Integer(3, 60); k-- > 0;) {
            angle += random.Uniform(-0.7, 0.7);
            const double step = random.Chance(0.1) ? 2.0 * h : random.Uniform(0.05, 0.5);
            const Point2D q{p.x + step * std::cos(angle), p.y + step * std::sin(angle)};
            lines.push_back({p, q});
            p = q;
        }
    });
}

Lines ParallelDiagonals(PropertyRandom& random, std::size_t count, double h) {
    Lines lines;
    const double gap = std::max(100.0 / static_cast<double>(count), 2.5 * h);
    for (std::size_t k = 0; k < count; ++k) {
        const double at = gap * static_cast<double>(k);
        const double slip = random.Uniform(0.0, 5.0);
        lines.push_back({{at + slip, slip - at}, {at + 60.0 + slip, 60.0 - at + slip}});
    }
    return lines;
}

/// A few huge coordinates far from the origin, where one bit is more than the tolerance.
Lines LargeOffset(PropertyRandom& random, std::size_t count, double h) {
    Lines lines = NearTouches(random, count, h);
    const double offset = random.LogUniform(1e3, 1e12);
    for (Line2D& line : lines) {
        for (Point2D* p : {&line.first, &line.second}) {
            *p = {p->x + offset, p->y - 2.0 * offset};
        }
    }
    return lines;
}

/// Magnitudes from the smallest to the largest in one set.
Lines AllMagnitudes(PropertyRandom& random, std::size_t count, double) {
    return Filled(std::min<std::size_t>(count, 150), [&](Lines& lines) {
        const auto value = [&] { return random.SignedLogUniform(1e-12, 1e12); };
        lines.push_back({{value(), value()}, {value(), value()}});
    });
}

/// Placeholders, halves of them, infinities and NaN among ordinary segments.
Lines WithWildValues(PropertyRandom& random, std::size_t count, double h) {
    Lines lines = NearTouches(random, count, h);
    const double infinity = std::numeric_limits<double>::infinity();
    const double wild[] = {std::numeric_limits<double>::max(),       infinity, -infinity,
                           std::numeric_limits<double>::quiet_NaN(), 1e305,    -1e301};
    for (int k = 0; k < 12; ++k) {
        const auto at =
            static_cast<std::size_t>(random.Integer(0, static_cast<int>(lines.size()) - 1));
        Line2D& line = lines[at];
        const int kind = random.Integer(0, 3);
        if (kind == 0) {
            line = {};
        } else if (kind == 1) {
            line.first = {};
        } else if (kind == 2) {
            line.second.x = random.Pick(wild);
        } else {
            line.first = {random.Pick(wild), random.Pick(wild)};
        }
    }
    return lines;
}

}  // namespace

// clang-format off
const std::vector<SegmentFamily>& SegmentFamilies() {
    static const std::vector<SegmentFamily> families{
        {"random_short", RandomShort},  {"random_long", RandomLong},    {"grid_aligned", GridAligned},
        {"vertical", Vertical},         {"star", Star},                 {"near_parallel", NearParallel},
        {"overlapping", Overlapping},   {"clustered", Clustered},       {"near_touches", NearTouches},
        {"rows_of_ends", RowsOfEnds},   {"chains", Chains},
        {"parallel_diagonals", ParallelDiagonals},                      {"large_offset", LargeOffset},
        {"all_magnitudes", AllMagnitudes},
        {"wild_values", WithWildValues},
    };
    return families;
}
// clang-format on

}  // namespace lmw::test
