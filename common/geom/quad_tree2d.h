#pragma once

// A region quadtree over points, segments, polylines and polygons: which item lies at a point, in a
// box, nearest to a point. Items may differ widely in size; for evenly spread segments and
// questions about whole neighbourhoods cell_table.h is smaller. Surprising: items of three or more
// points are kept out of quadrants that they reach by no more than the half-epsilon; the search
// makes up for it.

#include "common/export.h"
#include "common/geom/geom_types.h"
#include "common/geom/precision.h"
#include "common/iterator_range.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Geom {

/// Items are rows of points under the caller's identifiers, each inserted once: one point, a
/// segment, a polyline, or a ring (three or more points of which the first and last are equal),
/// which counts with its area.
///
/// 1. Find answers what a linear search over all items answers, wherever they lie: items and points
///    outside the root's extents are kept in the quadrants at the edge.
/// 2. A leaf holds four items; one at the maximum depth, or too small for the tolerance to tell its
///    quadrants apart, any number in an overflow list. Where five items or more have boxes that
///    cover one area, all quadrants there are divided down to that depth: choose it with that in
///    mind, each level has up to four times the leaves.
/// 3. Items with infinite, NaN or invalid coordinates keep their points but are never found.
///
/// Queries are read-only, allocate nothing (but for their output), and may run at once. Insertion
/// and query are logarithmic for items that do not overlap much. Copying copies everything.
class LMW_API QuadTree2D {
 public:
    /// What a search answers when there is none.
    enum : unsigned { kNone = 0xFFFFFFFFU };

    /// Clears, and reserves for the expected numbers.
    void Initialize(const Extents2D& extents, std::size_t maxDepth, const Precision3D& precision,
                    std::size_t expectedItems, std::size_t pointsPerItem);

    /// Inserts an item. The item table grows to `id` + 1 entries.
    void Insert(unsigned id, gtl::iterator_range<const Point2D*> points);

    /// The item's points, empty for an identifier that was not inserted; valid until the next
    /// change.
    [[nodiscard]] gtl::iterator_range<const Point2D*> At(unsigned id) const noexcept;

    /// The lowest identifier among the items that contain the point or touch it within tolerance (a
    /// ring counts with its area, a polyline with its segments), or kNone.
    [[nodiscard]] unsigned Find(const Point2D& point) const noexcept;

    /// All items whose bounding boxes meet `box`, gaps up to the half-epsilon included; ascending.
    /// `ids` is cleared.
    void Find(const Extents2D& box, std::vector<unsigned>& ids) const;

    /// The item nearest to the point (distance to its segments, 0 within a ring), the lowest
    /// identifier among equally near ones; kNone in an empty tree.
    [[nodiscard]] unsigned Nearest(const Point2D& point) const noexcept;

    /// Back to one empty root leaf.
    void Clear();

    /// The boxes of the leaves, in depth-first order, for drawing.
    [[nodiscard]] std::vector<Extents2D> LeafBoxes() const;

    /// Items kept in overflow lists, each as often as it is kept.
    [[nodiscard]] std::size_t OverflowCount() const noexcept;

 private:
    static constexpr unsigned kLeafItems = 4;

    enum class NodeKind : std::uint32_t { kLeaf = 0, kSplit = 1 };
    struct Node {
        NodeKind kind = NodeKind::kLeaf;
        std::uint32_t count = 0;  // of items; above four, slot 0 is the number of an overflow list
        std::array<std::uint32_t, kLeafItems> slots{};  // items, or children (0: none yet)
    };
    struct PointRange {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };

    void InsertAt(std::uint32_t node, const Extents2D& box, std::size_t depth, unsigned id);
    void Distribute(std::uint32_t node, const Extents2D& box, std::size_t depth, unsigned id);
    [[nodiscard]] gtl::iterator_range<const std::uint32_t*> ItemsOf(
        const Node& node) const noexcept;

    /// The node at which the way from the root to the point may part or ends in a leaf, kNone where
    /// it ends in a quadrant without a child. `box` becomes the node's from the root's.
    [[nodiscard]] std::uint32_t Descend(const Point2D& point, Extents2D& box) const noexcept;
    template <class Visit>
    void VisitLeaves(std::uint32_t node, const Extents2D& box, const Extents2D& query,
                     const Visit& visit) const;
    void SearchNearest(std::uint32_t node, const Extents2D& box, const Extents2D& region,
                       const Point2D& point, unsigned& best, double& best_distance) const noexcept;
    [[nodiscard]] bool Touches(unsigned id, const Point2D& point) const noexcept;
    [[nodiscard]] double SquaredDistance(unsigned id, const Point2D& point) const noexcept;
    void CollectLeafBoxes(std::uint32_t node, const Extents2D& box,
                          std::vector<Extents2D>& boxes) const;

    Extents2D extents_;
    std::uint32_t max_depth_ = 0;
    std::vector<Node> nodes_{Node{}};
    std::vector<std::vector<std::uint32_t>> overflow_;
    Precision3D precision_;
    std::vector<PointRange> items_;
    std::vector<Point2D> pool_;
    std::vector<Extents2D> item_boxes_;
};

}  // namespace Geom
