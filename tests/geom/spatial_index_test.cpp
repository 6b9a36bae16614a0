#include "common/geom/cell_table.h"
#include "common/geom/extents2d.h"
#include "common/geom/geometry_database.h"
#include "common/geom/line2d.h"
#include "common/geom/line_intersection.h"
#include "common/geom/polygon2d.h"
#include "common/geom/quad_tree2d.h"

#include "tests/geom/segment_families.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>
#include <vector>

namespace {

using namespace Geom;
using Geom::Line2D;
using Geom::Point2D;
using Geom::Precision3D;
using lmw::test::PropertyRandom;

const Precision3D kPrecision(3, 3, 3);
const double kH = kPrecision.halfEpsilon[0];
const double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

// ---- cell table

class OpenCellTable : public CellTable {
 public:
    using CellTable::CellIdx;
    using CellTable::GetIdxX;
};

TEST(CellTable, CoordinatesNearABorderHaveBothNeighbours) {  // property 3
    OpenCellTable table;
    table.Initialize({0, 4, 0, 2}, 4, 2, 1, kPrecision);
    struct Row {
        double x;
        int first, second;
    };
    for (const Row& row :
         {Row{0.5, 0, -1}, Row{1.0, 0, 1}, Row{1.0 - 0.9 * kH, 0, 1}, Row{1.0 + 0.9 * kH, 0, 1},
          Row{1.0 - 1.1 * kH, 0, -1}, Row{0.0, 0, -1}, Row{-0.9 * kH, 0, -1},
          Row{-1.1 * kH, -1, -1}, Row{4.0, 3, -1}, Row{4.0 + 0.9 * kH, 3, -1},
          Row{4.0 + 1.1 * kH, -1, -1}, Row{kNaN, -1, -1}, Row{kInfinity, -1, -1},
          Row{-kInfinity, -1, -1}, Row{lmw::kUndefined, -1, -1}}) {
        SCOPED_TRACE(row.x);
        EXPECT_EQ(row.first, table.GetXCellIdx(row.x).first);
        EXPECT_EQ(row.second, table.GetXCellIdx(row.x).second);
        EXPECT_EQ(static_cast<unsigned>(row.first), table.GetIdxX(row.x));
    }
    EXPECT_EQ(6U, table.CellIdx({2.5, 1.5}));
    EXPECT_EQ(CellTable::kOutside, table.CellIdx({2.5, 9}));
    EXPECT_EQ(2U, table.CellIdxX(6));
    EXPECT_EQ(1U, table.CellIdxY(6));
    std::vector<double> borders;
    for (auto it = table.beginX(); !(it == table.endX()); ++it) {
        borders.push_back(*it);
    }
    EXPECT_EQ((std::vector<double>{0, 1, 2, 3, 4}), borders);
}

TEST(CellTable, IndicesNeverLeaveTheTable) {  // property 3
    PropertyRandom random;
    for (int k = 0; k < 3000; ++k) {
        OpenCellTable table;
        const double low = random.SignedLogUniform(1e-3, 1e6);
        const double width = random.LogUniform(1e-4, 1e6);  // cells from far below h
        const auto count = static_cast<unsigned>(random.Integer(1, 40));
        table.Initialize({low, low + width, 0, 1}, count, 1, 1, kPrecision);
        const double at[] = {low, low + width, low + width * random.Uniform(-0.1, 1.1)};
        const double v = random.Pick(at);
        const auto [first, second] = table.GetXCellIdx(v);
        EXPECT_LT(first, static_cast<int>(count));
        EXPECT_LT(second, static_cast<int>(count));
        EXPECT_GE(first, v >= low && v <= low + width ? 0 : -1);
    }
}

/// Whether the segment meets the cell widened (or, negatively, shrunk) by `margin` half-epsilons:
/// their boxes overlap, and the cell's corners do not all lie on one side of the segment. In long
/// doubles, whose rounding is far below a hundredth of the half-epsilon for segments up to 1e12.
bool PassesThrough(const Line2D& line, const CellTable& table, unsigned ix, unsigned iy,
                   const Extents2D& area, double margin) {
    const double w = WidthOf(area) / table.CountX();
    const double t = HeightOf(area) / table.CountY();
    const Extents2D cell{area.x_min + w * ix - margin * kH, area.x_min + w * (ix + 1) + margin * kH,
                         area.y_min + t * iy - margin * kH,
                         area.y_min + t * (iy + 1) + margin * kH};
    const auto& [a, b] = line;
    if (std::max(a.x, b.x) < cell.x_min || std::min(a.x, b.x) > cell.x_max ||
        std::max(a.y, b.y) < cell.y_min || std::min(a.y, b.y) > cell.y_max) {
        return false;
    }
    const auto wide = [](double value) { return static_cast<long double>(value); };
    const long double dx = wide(b.x) - wide(a.x);
    const long double dy = wide(b.y) - wide(a.y);
    int left = 0;
    int right = 0;
    for (const Point2D& corner : CornerPointsOf(cell)) {
        const long double side =
            dx * (wide(corner.y) - wide(a.y)) - dy * (wide(corner.x) - wide(a.x));
        left += side > 0 ? 1 : 0;
        right += side < 0 ? 1 : 0;
    }
    return left < 4 && right < 4;
}

TEST(CellTable, AssignAndFindAllAgreeWithEveryCellTestedAlone) {  // properties 1, 2, 4
    PropertyRandom random;
    for (const auto& family : lmw::test::SegmentFamilies()) {
        SCOPED_TRACE(family.name);
        std::vector<Line2D> lines = family.make(random, 60, kH);
        lines.push_back({{kNaN, 0}, {1, 1}});
        const Extents2D area{10, 60, 10, 50};  // segments lie inside, outside and across
        CellTable table;
        const auto columns = static_cast<unsigned>(random.Integer(1, 9));
        const auto rows = static_cast<unsigned>(random.Integer(1, 9));
        table.Initialize(area, columns, rows, 4, kPrecision);  // fewer items than there are
        table.Assign(lines);
        for (std::size_t k = 0; k < lines.size(); ++k) {
            const auto& [p, q] = lines[k];
            const double values[] = {p.x, p.y, q.x, q.y};
            const bool finite = std::all_of(std::begin(values), std::end(values),
                                            [](double value) { return std::isfinite(value); });
            if (finite && std::any_of(std::begin(values), std::end(values),
                                      [](double value) { return std::fabs(value) > 1e13; })) {
                continue;  // their own rounding is larger than the tolerance
            }
            std::vector<unsigned> found;
            table.FindAll(found, std::vector<Line2D>{lines[k]});
            bool marked_somewhere = false;
            for (unsigned iy = 0; iy < rows; ++iy) {
                for (unsigned ix = 0; ix < columns; ++ix) {
                    const bool marked = table.At(ix, iy).Contains(static_cast<unsigned>(k));
                    marked_somewhere |= marked;
                    // Shrunk by the tolerance it must be marked, widened by three it may be.
                    if (finite && PassesThrough(lines[k], table, ix, iy, area, -0.01)) {
                        EXPECT_TRUE(marked) << k << " in " << ix << ' ' << iy;
                    }
                    if (!finite || !PassesThrough(lines[k], table, ix, iy, area, 3.0)) {
                        EXPECT_FALSE(marked) << k << " in " << ix << ' ' << iy;
                    }
                }
            }
            EXPECT_EQ(marked_somewhere, std::count(found.begin(), found.end(), k) == 1);
        }
    }
}

TEST(CellTable, ARingFindsWhatItsCellsHold) {
    CellTable table;
    table.Initialize({0, 10, 0, 10}, 10, 10, 100, kPrecision);
    for (unsigned index = 0; index < 100; ++index) {
        table.Assign(index % 10, index / 10, index);  // every cell holds its own index
    }
    const Circle2D circle{{5.5, 5.5}, 3.0};
    for (const bool inside : {false, true}) {
        std::vector<unsigned> items{77};
        table.FindAll(items, circle, 0.25, 0.5, inside);
        std::vector<unsigned> expected;
        for (unsigned index = 0; index < 100; ++index) {
            const double dx = std::fabs(index % 10 + 0.5 - 5.5);
            const double dy = std::fabs(index / 10 + 0.5 - 5.5);
            const double close = std::hypot(std::max(dx - 0.5, 0.0), std::max(dy - 0.5, 0.0));
            const double far = std::hypot(dx + 0.5, dy + 0.5);
            if (close <= 3.5 && (inside || far >= 2.75)) {
                expected.push_back(index);
            }
        }
        EXPECT_EQ(expected, items);
    }
}

// ---- quadtree

using Item = std::vector<Point2D>;

bool IsRing(const Item& item) {
    return item.size() >= 3 && IsEqual2D(item.front(), item.back(), kPrecision);
}

bool Touches(const Item& item, const Point2D& p) {
    if (IsRing(item)) {
        return PolygonContainsPoint2D(item, p, kPrecision);
    }
    if (item.size() == 1) {
        return IsEqual2D(item[0], p, kPrecision);
    }
    for (std::size_t k = 1; k < item.size(); ++k) {
        if (LineContainsPoint2D(item[k - 1], item[k], p, kPrecision)) {
            return true;
        }
    }
    return false;
}

double Distance(const Item& item, const Point2D& p) {
    if (IsRing(item) && PolygonContainsPoint2D(item, p, Precision3D(300, 300, 300))) {
        return 0.0;
    }
    double nearest = kInfinity;
    for (std::size_t k = 0; k < item.size(); ++k) {
        const Point2D c =
            LineClosestPoint2D(item[k], item[std::min(k + 1, item.size() - 1)], p,
                               NonPerpendicularMode::kNearerEnd, Precision3D(300, 300, 300));
        nearest = std::min(nearest, std::hypot(c.x - p.x, c.y - p.y));
    }
    return nearest;
}

/// Points, segments, polylines and rings on and near the split lines of a tree over [0, 64] x [0,
/// 64], some beyond it.
Item RandomItem(PropertyRandom& random) {
    const auto value = [&] {
        const double nudges[] = {0, 0.9 * kH, -0.9 * kH, 1.1 * kH, -1.1 * kH, 1.9 * kH, -1.9 * kH};
        return random.Chance(0.5) ? random.Integer(-1, 17) * 4.0 + random.Pick(nudges)
                                  : random.Uniform(-5.0, 70.0);
    };
    const Point2D p{value(), value()};
    const double size = random.Chance(0.2) ? kH : 4.0;
    const Point2D right{p.x + size, p.y};
    const Point2D corner{p.x + size, p.y + size};
    const Item items[] = {
        {p},
        {p, {p.x + random.Integer(-1, 1) * size, p.y + random.Integer(-1, 1) * size}},
        {p, right, {p.x + 2 * size, p.y}},  // flat
        {p, right, corner},
        {p, right, corner, {p.x, p.y + size}, p}};
    return random.Pick(items);
}

TEST(QuadTree, AnswersAsALinearSearchDoes) {  // property 1
    PropertyRandom random;
    for (const std::size_t depth : {0U, 3U, 6U, 40U}) {
        std::vector<Item> items;
        QuadTree2D tree;
        tree.Initialize({0, 64, 0, 64}, depth, kPrecision, 0, 0);
        for (unsigned id = 0; id < 600; ++id) {
            items.push_back(RandomItem(random));
            tree.Insert(id, items.back());
            ASSERT_EQ(items.back().size(), tree.At(id).size());
        }
        for (int k = 0; k < 500; ++k) {
            Point2D p{random.Uniform(-6.0, 72.0), random.Uniform(-6.0, 72.0)};
            if (random.Chance(0.8)) {  // at an item's corner or a little beside it
                p = random.Pick(random.Pick(items));
                p.x += random.Uniform(-1.5, 1.5) * kH;
                p.y += random.Uniform(-1.5, 1.5) * kH;
            }
            unsigned expected = QuadTree2D::kNone;
            double nearest = kInfinity;
            for (unsigned id = 0; id < items.size(); ++id) {
                if (expected == QuadTree2D::kNone && Touches(items[id], p)) {
                    expected = id;
                }
                nearest = std::min(nearest, Distance(items[id], p));
            }
            ASSERT_EQ(expected, tree.Find(p)) << p.x << ' ' << p.y;
            ASSERT_NEAR(nearest, Distance(items[tree.Nearest(p)], p), 1e-12);

            const Extents2D box{p.x, p.x + random.Uniform(0.0, 9.0), p.y, p.y};
            std::vector<unsigned> in_box{7};
            tree.Find(box, in_box);
            std::vector<unsigned> expected_in_box;
            for (unsigned id = 0; id < items.size(); ++id) {
                if (IsExtentsIntersected2D(ExtentsOf(items[id]), box, kPrecision)) {
                    expected_in_box.push_back(id);
                }
            }
            ASSERT_EQ(expected_in_box, in_box);
        }
    }
}

/// A quadtree that divides every full leaf down to its maximum depth; its boxes are far wider than
/// the tolerance.
struct PlainTree {
    Extents2D box;
    std::size_t depths_left;
    std::vector<unsigned> ids;
    std::vector<PlainTree> quadrants;

    void Insert(unsigned id, const std::vector<Item>& items) {
        ids.push_back(id);
        if (quadrants.empty() && (ids.size() <= 4 || depths_left == 0)) {
            return;
        }
        const double x = 0.5 * (box.x_min + box.x_max);
        const double y = 0.5 * (box.y_min + box.y_max);
        if (quadrants.empty()) {
            quadrants = {{{box.x_min, x, y, box.y_max}, depths_left - 1, {}, {}},
                         {{x, box.x_max, y, box.y_max}, depths_left - 1, {}, {}},
                         {{box.x_min, x, box.y_min, y}, depths_left - 1, {}, {}},
                         {{x, box.x_max, box.y_min, y}, depths_left - 1, {}, {}}};
        }
        for (const unsigned pending : std::exchange(ids, {})) {
            const Extents2D own = ExtentsOf(items[pending]);
            const double h = items[pending].size() > 2 ? -kH : kH;
            for (PlainTree& part : quadrants) {
                if (own.x_min <= part.box.x_max + h && own.x_max >= part.box.x_min - h &&
                    own.y_min <= part.box.y_max + h && own.y_max >= part.box.y_min - h) {
                    part.Insert(pending, items);
                }
            }
        }
    }

    void Collect(std::vector<Extents2D>& leaves, std::size_t& overflow) const {
        if (!ids.empty()) {
            leaves.push_back(box);
            overflow += ids.size() > 4 ? ids.size() : 0;
        }
        for (const PlainTree& part : quadrants) {
            part.Collect(leaves, overflow);
        }
    }
};

bool IsSameBox(const Extents2D& a, const Extents2D& b) {
    return a.x_min == b.x_min && a.x_max == b.x_max && a.y_min == b.y_min && a.y_max == b.y_max;
}

TEST(QuadTree, DividesFullLeavesDownToTheMaximumDepth) {  // property 2
    PropertyRandom random;
    SCOPED_TRACE(random.Trace());
    for (int repeat = 0; repeat < 20; ++repeat) {
        std::vector<Item> items;
        QuadTree2D tree;
        tree.Initialize({0, 64, 0, 64}, 5, kPrecision, 0, 0);
        PlainTree plain{{0, 64, 0, 64}, 5, {}, {}};
        for (unsigned id = 0; id < 40; ++id) {  // each in the boxes of many others
            const Point2D p{1.0 * random.Integer(0, 40), 1.0 * random.Integer(0, 40)};
            const Point2D q{p.x + random.Integer(1, 23), p.y + random.Integer(1, 23)};
            items.push_back(random.Chance(0.5) ? Item{p, q}
                                               : Item{p, {q.x, p.y}, q, {p.x, q.y}, p});
            tree.Insert(id, items.back());
            plain.Insert(id, items);
            std::vector<Extents2D> leaves;
            std::size_t overflow = 0;
            plain.Collect(leaves, overflow);
            ASSERT_TRUE(std::ranges::equal(leaves, tree.LeafBoxes(), IsSameBox)) << id;
            ASSERT_EQ(overflow, tree.OverflowCount());
        }
        ASSERT_GT(tree.OverflowCount(), 100U);
    }
}

TEST(QuadTree, OverflowsAtTheMaximumDepthAndWhereTheToleranceEnds) {  // property 2
    QuadTree2D flat;
    flat.Initialize({0, 8, 0, 8}, 0, kPrecision, 5, 1);
    QuadTree2D deep;
    deep.Initialize({0, 8, 0, 8}, 1000000, kPrecision, 5, 1);
    for (unsigned id = 0; id < 5; ++id) {
        flat.Insert(id, Item{{1.0 * id, 1}});
        deep.Insert(id, Item{{3.0, 3.0}});
        EXPECT_EQ(id < 4 ? 0U : 5U, flat.OverflowCount());
    }
    EXPECT_EQ(3U, flat.Find({3, 1}));
    EXPECT_GE(deep.OverflowCount(), 5U);
    EXPECT_LT(deep.LeafBoxes().size(), 40U);
    flat.Clear();
    EXPECT_EQ(QuadTree2D::kNone, flat.Find({3, 1}));
    EXPECT_EQ(QuadTree2D::kNone, flat.Nearest({3, 1}));
    EXPECT_TRUE(flat.At(3).empty());
}

TEST(QuadTree, AnAreaIsNotStoredInAQuadrantItOnlyTouchesASegmentIs) {
    // Four points fill the left top quadrant's leaf and make the root split; then one item on the
    // edge.
    const auto leaves = [](const Item& item) {
        QuadTree2D tree;
        tree.Initialize({0, 8, 0, 8}, 1, kPrecision, 8, 4);
        for (unsigned id = 0; id < 4; ++id) {
            tree.Insert(id, Item{{1, 5.0 + 0.1 * id}});
        }
        tree.Insert(4, item);
        return tree.LeafBoxes().size();
    };
    const double edge = 4 + 0.9 * kH;  // reaches the right half within tolerance only
    EXPECT_EQ(2U, leaves({{3, 6}, {edge, 6}}));
    EXPECT_EQ(1U, leaves({{3, 6}, {edge, 6}, {edge, 7}, {3, 6}}));
    EXPECT_EQ(4U, leaves({{4, 4}, {4, 4}, {4, 4}}));  // nowhere by the shrunk test: widened
}

TEST(QuadTree, WildItemsAndPointsAreNeverFound) {  // property 3
    QuadTree2D tree;
    tree.Initialize({0, 8, 0, 8}, 8, kPrecision, 8, 4);
    tree.Insert(2, Item{{kNaN, 1}});
    tree.Insert(5, Item{{1, 1}, {kInfinity, 1}});
    tree.Insert(3, Item{{}});
    tree.Insert(4, Item{});
    EXPECT_EQ(2U, tree.At(5).size());
    EXPECT_EQ(QuadTree2D::kNone, tree.Find({1, 1}));
    EXPECT_EQ(QuadTree2D::kNone, tree.Nearest({1, 1}));
    tree.Insert(0, Item{{0, 0}, {8, 0}, {8, 8}, {0, 8}, {0, 0}});
    EXPECT_EQ(0U, tree.Find({1, 1}));
    EXPECT_EQ(QuadTree2D::kNone, tree.Find({kNaN, 1}));
    EXPECT_EQ(QuadTree2D::kNone, tree.Find({}));
    LMW_SKIP_UNCOUNTED_ALLOCATIONS();
    EXPECT_EQ(0U, lmw::test::AllocationsOf([&] {
                  (void)tree.Find({1, 1});
                  (void)tree.Nearest({9, 9});
              }));
}

/// The definition: the first stored point that is equal.
GID LinearFind(const std::vector<Point2D>& stored, const Point2D& p, const Precision3D& precision) {
    for (std::size_t k = 0; k < stored.size(); ++k) {
        if (IsEqual2D(stored[k], p, precision)) {
            return static_cast<GID>(k + 1);
        }
    }
    return 0;
}

TEST(GeometryDatabase, AnswersAsALinearSearchDoes) {  // properties 1, 2, 3
    PropertyRandom random;
    const double infinity = std::numeric_limits<double>::infinity();
    for (const Precision3D& precision :
         {Precision3D(2, 5, 0), Precision3D(-1, 0, 0), Precision3D(400, 2, 0), Precision3D()}) {
        const double hx = std::min(precision.halfEpsilon[0], 1e9);
        const double hy = std::min(precision.halfEpsilon[1], 1e9);
        for (const double scale : {1.0, 1e6, 4e15, 3e16, 1e200}) {
            const auto database = MakeGeometryDataBase(std::vector<Point2D>{}, precision);
            std::vector<Point2D> stored;
            std::vector<std::pair<Point2D, GID>> answers;
            for (int k = 0; k < 400; ++k) {
                // Multiples of a quarter of the tolerance around a cell border of any size.
                Point2D p{scale * hx + 0.25 * hx * random.Integer(-40, 40),
                          scale * hy * random.Integer(0, 1) + 0.25 * hy * random.Integer(-40, 40)};
                if (random.Chance(0.02)) {
                    p.x = random.Chance(0.5) ? infinity : -infinity;
                }
                const GID found = LinearFind(stored, p, precision);
                ASSERT_EQ(found, database->FindPoint(p));
                const GID id = database->InsertPoint(p);
                if (found == 0) {
                    stored.push_back(p);
                }
                ASSERT_EQ(found != 0 ? found : stored.size(), id);
                answers.emplace_back(p, id);
            }
            for (const auto& [p, id] : answers) {
                EXPECT_EQ(id, database->FindPoint(p));
            }
            EXPECT_EQ(stored.size(), database->PointCount());
        }
    }
}

TEST(GeometryDatabase, LinesAreUnorderedPairs) {  // properties 4, 5
    const Precision3D precision(0, 0, 0);
    const auto database = MakeGeometryDataBase(
        std::vector<Line2D>{
            {{5, 5}, {0, 0}}, {{0, 0.4}, {5.4, 5}}, {{0, 0}, {0.1, 0}}, {{0, 0}, {}}},
        precision);
    EXPECT_EQ(2U, database->LineCount());
    EXPECT_EQ(1U, database->FindLine({{0, 0}, {5, 5}}));
    EXPECT_EQ(2U, database->FindLine({{0, 0}, {0, 0}}));
    EXPECT_EQ(0U, database->FindLine({{0, 0}, {9, 9}}));
    EXPECT_EQ(std::pair(GID{1}, GID{2}), database->LineAt(1));
    EXPECT_EQ(std::pair(GID{0}, GID{0}), database->LineAt(3));
    EXPECT_EQ(5.0, database->PointAt(1).x);
    EXPECT_FALSE(database->PointAt(0).IsValid());
    EXPECT_FALSE(database->PointAt(3).IsValid());
    EXPECT_EQ(0U, database->InsertPoint({}));
    EXPECT_EQ(0U, database->FindPoint({}));
    EXPECT_EQ(0U, database->InsertLine({{}, {1, 1}}));
    EXPECT_EQ(2U, database->PointCount());
}

TEST(InputIndexByDbId, AnswersFirstAndAllPositions) {
    const Geom::InputIndexByDbId index({7, 0, 3, 7, 0xFFFFFFFF, 7});
    EXPECT_EQ(0U, index.First(7));
    EXPECT_EQ(4U, index.First(0xFFFFFFFF));
    EXPECT_EQ(Geom::InputIndexByDbId::kNone, index.First(0));
    EXPECT_EQ(Geom::InputIndexByDbId::kNone, index.First(4));
    const auto all = index.All(7);
    EXPECT_EQ((std::vector<unsigned>{0, 3, 5}), std::vector<unsigned>(all.begin(), all.end()));
    EXPECT_TRUE(index.All(8).empty());
}

}  // namespace
