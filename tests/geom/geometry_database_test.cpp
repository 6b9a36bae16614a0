#include "common/geom/geometry_database.h"

#include "tests/support/property_random.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Geom::Line2D;
using Geom::Point2D;
using Geom::Precision3D;
using lmw::test::PropertyRandom;

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
    SCOPED_TRACE(random.Trace());
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

TEST(GeometryDatabase, TheFirstComerStaysAndNothingMergesTransitively) {  // properties 1, 2
    const Precision3D precision(0, 0, 0);
    const auto database =
        MakeGeometryDataBase(std::vector<Point2D>{{0, 0}, {0.9, 0}, {0.45, 0}}, precision);
    EXPECT_EQ(2U, database->PointCount());
    EXPECT_EQ(1U, database->FindPoint({0.45, 0}));  // equal to both: the first
    EXPECT_EQ(2U, database->FindPoint({0.6, 0}));
    EXPECT_EQ(0.9, database->PointAt(2).x);
    EXPECT_FALSE(database->PointAt(3).IsValid());
    EXPECT_FALSE(database->PointAt(0).IsValid());
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
