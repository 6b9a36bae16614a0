#include "common/geom/extents2d.h"
#include "common/geom/line_events.h"
#include "common/geom/line_intersection.h"
#include "common/geom/polygon_line_entry.h"
#include "common/geom/vector2d.h"

#include "tests/geom/plain_scan.h"
#include "tests/support/shared_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>

namespace {

using namespace Geom;
using namespace lmw::test;

using Polygons = std::vector<std::vector<Point2D>>;

double Number(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

/// Rows whose first `key_count` cells are equal make one row of points; x and y follow them.
Polygons ReadRows(const std::filesystem::path& file, std::size_t key_count) {
    Polygons rows;
    CsvRow last;
    for (const CsvRow& row : ReadCsv(file)) {
        if (rows.empty() ||
            !std::equal(row.begin(), row.begin() + static_cast<int>(key_count), last.begin())) {
            rows.emplace_back();
        }
        rows.back().push_back({Number(row[key_count]), Number(row[key_count + 1])});
        last = row;
    }
    return rows;
}

std::vector<Line2D> Segments(const Polygons& rows) {
    std::vector<Line2D> lines;
    for (const auto& row : rows) {
        for (std::size_t k = 1; k < row.size(); ++k) {
            if (!IsExactEqual2D(row[k - 1], row[k])) {
                lines.push_back({row[k - 1], row[k]});
            }
        }
    }
    return lines;
}

// ---- polygon line entries

const Precision3D kPrecision(3, 3, 3);

TEST(PolygonLineEntries, SharedEdgesAreOneEntryWithTwoUses) {  // unique 1, 2
    const Polygons squares{{{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}},
                           {{2, 0}, {2, 1}, {1, 1.0004}, {1, 0}, {2, 0}}};
    std::vector<PolygonLineEntry> entries{{}};
    PolygonGetAllLineEntries2D(entries, squares, kPrecision);
    ASSERT_EQ(8U, entries.size());
    EXPECT_EQ(0U, entries[5].line_id);
    EXPECT_EQ(1.0, entries[6].line.first.x);
    EXPECT_EQ(0.0, entries[6].line.first.y);  // tolerant order: same x, lower y first
    PolygonGetUniqueLineEntries2D(entries, squares, kPrecision);
    ASSERT_EQ(7U, entries.size());
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> uses{{0, 1}, {1, 2}};
    EXPECT_EQ(uses, entries[1].uses);
    EXPECT_EQ(1.0, entries[1].line.second.y);  // the first use's line
    EXPECT_TRUE(std::is_sorted(entries.begin(), entries.end(),
                               [](const auto& a, const auto& b) { return a.line_id < b.line_id; }));
}

TEST(PolygonLineEntries, OpenRingsLackTheClosingEdgeAndZeroLengthEdgesCount) {
    std::vector<PolygonLineEntry> entries;
    PolygonGetAllLineEntries2D(entries, {{{0, 0}, {1, 0}, {1, 1}}, {}, {{5, 5}}}, kPrecision);
    EXPECT_EQ(2U, entries.size());
    PolygonGetUniqueLineEntries2D(entries, {{{0, 0}, {0, 0}, {1, 0}}}, kPrecision);
    EXPECT_EQ(2U, entries.size());
}

TEST(PolygonLineEntries, OfRealRegionsAreThoseCounted) {
    struct Row {
        const char* name;
        std::size_t all, unique, once, twice;
    };
    for (const Row& row : {Row{"hamersley_geology_regions", 6197, 3264, 331, 2933},
                           Row{"ne50m_states_provinces", 32726, 26195, 19664, 6531}}) {
        const auto path = SharedData(std::string("planar-regions/") + row.name + ".csv");
        LMW_SKIP_WITHOUT(path);
        const Polygons rings = ReadRows(path, 3);
        const Precision3D fine(10, 10, 10);  // finer than any two distinct points of the files
        std::vector<PolygonLineEntry> entries;
        PolygonGetAllLineEntries2D(entries, rings, fine);
        EXPECT_EQ(row.all, entries.size());
        PolygonGetUniqueLineEntries2D(entries, rings, fine);
        EXPECT_EQ(row.unique, entries.size());
        std::map<std::size_t, std::size_t> by_uses;
        for (const PolygonLineEntry& entry : entries) {
            ++by_uses[entry.uses.size()];
        }
        EXPECT_EQ(row.once, by_uses[1]);
        EXPECT_EQ(row.twice, by_uses[2]);
    }
}

// ---- networks

TEST(NetworkData, HasTheCountedCrossingsByGridAndSweep) {
    struct Row {
        std::vector<const char*> files;
        std::size_t crossings;    // of the exact segments
        std::size_t shared_ends;  // pairs
    };
    const char* const rivers = "ne10m_rivers_europe";
    const char* const borders = "ne10m_land_borders";
    const char* const coast = "ne50m_coastline";
    const Row rows[] = {{{coast}, 0, 58975},
                        {{rivers}, 8, 64383},
                        {{borders}, 0, 69395},
                        {{rivers, borders}, 357, 133778},
                        {{coast, rivers, borders}, 490, 192753}};
    for (const auto& [files, crossing_count, shared_ends] : rows) {
        SCOPED_TRACE(crossing_count);
        std::vector<Line2D> lines;
        for (const char* file : files) {
            const auto path = SharedData(std::string("line-segments/") + file + ".csv");
            LMW_SKIP_WITHOUT(path);
            const auto more = Segments(ReadRows(path, 1));
            lines.insert(lines.end(), more.begin(), more.end());
        }
        // So fine that only rounding is tolerated: two crossings lie at an end within that.
        const Precision3D fine(15, 15, 15);
        std::vector<LineEvent2D> crossings;
        LineCrossingEvents2D(crossings, lines, fine);
        EXPECT_LE(crossings.size(), crossing_count);
        EXPECT_GE(crossings.size() + 2, crossing_count);
        std::vector<LineEvent2D> events;
        LineIntersectionEvents2D(events, lines, fine, SweepLineImplForced::kSweep);
        const std::size_t exact = crossing_count + shared_ends;
        EXPECT_GE(events.size(), exact);
        EXPECT_LE(events.size(), exact + 1);  // one pair of borders also touches within rounding
    }
}

// ---- hard cases

Precision3D OfDigits(const Extents2D& box, int digits) {
    return MakePrecision3D({box.x_min, box.x_max}, {box.y_min, box.y_max}, {0, 0}, digits);
}

TEST(RobustnessData, HardPairsMeetWhereTheExactOnesDo) {
    for (const char* file : {"segment_pairs_named", "segment_pairs_hard"}) {
        const auto path = SharedData(std::string("robustness/") + file + ".csv");
        LMW_SKIP_WITHOUT(path);
        for (const CsvRow& row : ReadCsv(path)) {
            SCOPED_TRACE(row[0]);
            const auto point = [&](std::size_t column) {
                return Point2D{Number(row[column]), Number(row[column + 1])};
            };
            const Line2D a{point(1), point(3)};
            const Line2D b{point(5), point(7)};
            // Ten significant digits of the pair's own size.
            const Precision3D precision = OfDigits(ExtentsOf(std::vector<Line2D>{a, b}), 11);
            Point2D p0;
            Point2D p1;
            const int code =
                LineIntersection2D(p0, p1, a.first, a.second, b.first, b.second, precision);
            const int exact = std::atoi(row[9].c_str());
            const double gap = Number(row[14]);
            const double h = std::min(precision.halfEpsilon[0], precision.halfEpsilon[1]);
            if (exact == 0) {  // a touch within tolerance may be reported
                EXPECT_TRUE(code == 0 || gap <= 2.0 * h) << gap << ' ' << h;
                continue;
            }
            ASSERT_GT(code, 0);
            const Point2D exact_point = point(10);
            // Where the lines are nearly parallel the point may slide along them, but stays on
            // both.
            Precision3D wider = precision;
            wider.ScaleEpsilon(1.001);
            for (const Line2D& line : {a, b}) {
                EXPECT_GT(LineIntersection2D(p1, p1, line.first, line.second, p0, p0, wider), 0);
            }
            const Point2D da{a.second.x - a.first.x, a.second.y - a.first.y};
            const Point2D db{b.second.x - b.first.x, b.second.y - b.first.y};
            const double turn = std::fabs(TriArea2x2D({0, 0}, da, db));
            const double lengths = std::hypot(da.x, da.y) * std::hypot(db.x, db.y);
            if (exact == 1 && turn > 1e-3 * lengths) {
                EXPECT_NEAR(p0.x, exact_point.x, 2e3 * h);
                EXPECT_NEAR(p0.y, exact_point.y, 2e3 * h);
            }
        }
    }
}

TEST(RobustnessData, NearlyCollinearTriplesTurnTheExactWayOrNotAtAll) {
    const auto path = SharedData("robustness/orientation_triples.csv");
    LMW_SKIP_WITHOUT(path);
    for (const CsvRow& row : ReadCsv(path)) {
        SCOPED_TRACE(row[0]);
        const Point2D o{Number(row[1]), Number(row[2])};
        const Point2D a{Number(row[3]), Number(row[4])};
        const Point2D b{Number(row[5]), Number(row[6])};
        const Precision3D precision = OfDigits(ExtentsOf(std::vector<Point2D>{o, a, b}), 12);
        const int turn = static_cast<int>(VectorTurn2D(o, a, b, precision));
        EXPECT_TRUE(turn == 0 || turn == -std::atoi(row[7].c_str())) << turn;
    }
}

TEST(RobustnessData, SweepIsScanOnEveryReportedFailure) {
    const auto folder = SharedData("robustness");
    LMW_SKIP_WITHOUT(folder);
    int sets = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().filename().string().rfind("jts_", 0) != 0) {
            continue;
        }
        SCOPED_TRACE(entry.path().filename().string());
        std::map<std::string, std::vector<Line2D>> cases;
        CsvRow last;
        for (const CsvRow& row : ReadCsv(entry.path())) {
            const Point2D p{Number(row[3]), Number(row[4])};
            if (!last.empty() && std::equal(row.begin(), row.begin() + 3, last.begin())) {
                cases[row[0]].push_back({{Number(last[3]), Number(last[4])}, p});
            }
            last = row;
        }
        for (auto& [name, lines] : cases) {
            lines.resize(std::min<std::size_t>(lines.size(), 1000));  // the scan is quadratic
            SCOPED_TRACE(name);
            for (const int digits : {7, 12}) {
                ExpectSweepIsScan(lines, OfDigits(ExtentsOf(lines), digits));
                ++sets;
            }
        }
    }
    EXPECT_GT(sets, 50);
}

}  // namespace
