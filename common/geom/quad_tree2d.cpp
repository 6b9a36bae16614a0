#include "common/geom/quad_tree2d.h"

#include "common/geom/detail/ring.h"
#include "common/geom/detail/segment_math.h"
#include "common/geom/extents2d.h"
#include "common/geom/line2d.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <utility>

namespace Geom {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// In half-epsilons, how far beyond a midline a query looks: an area may stick out of its quadrants
/// by one and be touched by one more.
constexpr double kQueryReach = 2.0;

bool IsIndexable(gtl::iterator_range<const Point2D*> points) noexcept {
    return !points.empty() && std::all_of(points.begin(), points.end(), [](const Point2D& p) {
        return p.IsValid() && std::isfinite(p.x) && std::isfinite(p.y);
    });
}

double SquaredDistanceToSegment(const Point2D& a, const Point2D& b, const Point2D& p) noexcept {
    const Point2D direction = detail::Minus(b, a);
    const double length2 = detail::Dot(direction, direction);
    const double t = length2 > 0.0 ? detail::Dot(detail::Minus(p, a), direction) / length2 : 0.0;
    return detail::SquaredLength(detail::Along(a, direction, std::clamp(t, 0.0, 1.0)), p);
}

double SquaredDistanceToBox(const Extents2D& box, const Point2D& p) noexcept {
    const double dx = std::max({box.x_min - p.x, 0.0, p.x - box.x_max});
    const double dy = std::max({box.y_min - p.y, 0.0, p.y - box.y_max});
    return dx * dx + dy * dy;
}

/// The midlines of a node's box. An axis too short to be told apart is not split: everything counts
/// as left or top.
struct Split {
    double x = 0.0;
    double y = 0.0;
    bool splits_x = false;
    bool splits_y = false;
};
using Quadrants = std::array<bool, 4>;  // left top, right top, left bottom, right bottom

Split SplitOf(const Extents2D& box, const Precision3D& precision) noexcept {
    // Below eight half-epsilons whatever lies near the middle also lies near the edges, and would
    // be stored in all quadrants of all depths.
    constexpr double kNarrowest = 8.0;
    Split split;
    split.x = 0.5 * box.x_min + 0.5 * box.x_max;
    split.y = 0.5 * box.y_min + 0.5 * box.y_max;
    split.splits_x = box.x_max - box.x_min >= kNarrowest * precision.halfEpsilon[0] &&
                     box.x_min < split.x && split.x < box.x_max;
    split.splits_y = box.y_max - box.y_min >= kNarrowest * precision.halfEpsilon[1] &&
                     box.y_min < split.y && split.y < box.y_max;
    return split;
}

Extents2D QuadrantBox(const Extents2D& box, const Split& split, std::size_t quadrant) noexcept {
    Extents2D part = box;
    if (split.splits_x) {
        (quadrant % 2 == 0 ? part.x_max : part.x_min) = split.x;
    }
    if (split.splits_y) {
        (quadrant / 2 == 0 ? part.y_min : part.y_max) = split.y;
    }
    return part;
}

/// The quadrants that `box` meets when they are widened (negative: shrunk) by the tolerances. Only
/// the midlines are looked at: the box already met the node itself, and at the root what lies
/// outside belongs to the edge.
Quadrants Met(const Split& split, const Extents2D& box, double hx, double hy) noexcept {
    const bool left = !split.splits_x || box.x_min <= split.x + hx;
    const bool right = split.splits_x && box.x_max >= split.x - hx;
    const bool top = !split.splits_y || box.y_max >= split.y - hy;
    const bool bottom = split.splits_y && box.y_min <= split.y + hy;
    return {left && top, right && top, left && bottom, right && bottom};
}

/// `points` is how many the item of the box has.
Quadrants EnteredBy(const Split& split, const Extents2D& box, std::size_t points,
                    const Precision3D& precision) noexcept {
    const double hx = precision.halfEpsilon[0];
    const double hy = precision.halfEpsilon[1];
    if (points > 2) {
        // By design: areas count only where they really reach, by more than the tolerance. Widening
        // here as for points and segments would store every shared border on both sides.
        const Quadrants reached = Met(split, box, -hx, -hy);
        if (std::find(reached.begin(), reached.end(), true) != reached.end()) {
            return reached;
        }
    }
    return Met(split, box, hx, hy);
}

/// `condition != 0 ? yes : no` for 0 or 1, as arithmetic on the bits, which no compiler makes a
/// branch of.
double Choose(unsigned condition, double yes, double no) noexcept {
    const std::uint64_t mask = 0 - std::uint64_t{condition};
    return std::bit_cast<double>((std::bit_cast<std::uint64_t>(yes) & mask) |
                                 (std::bit_cast<std::uint64_t>(no) & ~mask));
}

}  // namespace

void QuadTree2D::Initialize(const Extents2D& extents, std::size_t maxDepth,
                            const Precision3D& precision, std::size_t expectedItems,
                            std::size_t pointsPerItem) {
    extents_ = extents;
    max_depth_ = static_cast<std::uint32_t>(std::min<std::size_t>(maxDepth, 0xFFFFFFFFU));
    precision_ = precision;
    Clear();
    nodes_.reserve(expectedItems / 4 + 1);
    items_.reserve(expectedItems + 1);
    item_boxes_.reserve(expectedItems + 1);
    pool_.reserve(expectedItems * pointsPerItem);
}

void QuadTree2D::Clear() {
    nodes_.assign(1, Node{});
    overflow_.clear();
    items_.clear();
    item_boxes_.clear();
    pool_.clear();
}

// ---- insertion

void QuadTree2D::Insert(unsigned id, gtl::iterator_range<const Point2D*> points) {
    const auto begin = static_cast<std::uint32_t>(pool_.size());
    pool_.insert(pool_.end(), points.begin(), points.end());
    if (items_.size() <= id) {
        items_.resize(std::size_t{id} + 1);
        item_boxes_.resize(std::size_t{id} + 1);
    }
    items_[id] = {begin, static_cast<std::uint32_t>(pool_.size())};
    const gtl::iterator_range<const Point2D*> stored = At(id);
    if (!IsIndexable(stored)) {
        return;
    }
    Extents2D box{stored.begin()->x, stored.begin()->x, stored.begin()->y, stored.begin()->y};
    for (const Point2D& p : stored) {
        box = {std::min(box.x_min, p.x), std::max(box.x_max, p.x), std::min(box.y_min, p.y),
               std::max(box.y_max, p.y)};
    }
    item_boxes_[id] = box;
    InsertAt(0, extents_, 0, id);
}

gtl::iterator_range<const Point2D*> QuadTree2D::At(unsigned id) const noexcept {
    if (id >= items_.size()) {
        return {};
    }
    return {pool_.data() + items_[id].begin, pool_.data() + items_[id].end};
}

void QuadTree2D::InsertAt(std::uint32_t node, const Extents2D& box, std::size_t depth,
                          unsigned id) {
    // No reference to a node is kept across an insertion: the table may move.
    if (nodes_[node].kind == NodeKind::kSplit) {
        Distribute(node, box, depth, id);
        return;
    }
    const std::uint32_t count = nodes_[node].count;
    if (count < kLeafItems) {
        nodes_[node].slots[count] = id;
        ++nodes_[node].count;
        return;
    }
    const Split split = SplitOf(box, precision_);
    if (count == kLeafItems && depth < max_depth_ && (split.splits_x || split.splits_y)) {
        const Node leaf = std::exchange(nodes_[node], {NodeKind::kSplit, 0, {}});
        for (const std::uint32_t item : leaf.slots) {
            Distribute(node, box, depth, item);
        }
        Distribute(node, box, depth, id);
        return;
    }
    if (count == kLeafItems) {
        overflow_.emplace_back(nodes_[node].slots.begin(), nodes_[node].slots.end());
        nodes_[node].slots = {static_cast<std::uint32_t>(overflow_.size() - 1)};
    }
    overflow_[nodes_[node].slots[0]].push_back(id);
    ++nodes_[node].count;
}

void QuadTree2D::Distribute(std::uint32_t node, const Extents2D& box, std::size_t depth,
                            unsigned id) {
    const Split split = SplitOf(box, precision_);
    const Quadrants entered = EnteredBy(split, item_boxes_[id], At(id).size(), precision_);
    for (std::size_t quadrant = 0; quadrant < entered.size(); ++quadrant) {
        if (!entered[quadrant]) {
            continue;
        }
        if (nodes_[node].slots[quadrant] == 0) {
            nodes_[node].slots[quadrant] = static_cast<std::uint32_t>(nodes_.size());
            nodes_.emplace_back();
        }
        InsertAt(nodes_[node].slots[quadrant], QuadrantBox(box, split, quadrant), depth + 1, id);
    }
}

// ---- queries

gtl::iterator_range<const std::uint32_t*> QuadTree2D::ItemsOf(const Node& node) const noexcept {
    if (node.count > kLeafItems) {
        return overflow_[node.slots[0]];
    }
    return {node.slots.data(), node.slots.data() + node.count};
}

template <class Visit>
void QuadTree2D::VisitLeaves(std::uint32_t node, const Extents2D& box, const Extents2D& query,
                             const Visit& visit) const {
    const Node& entry = nodes_[node];
    if (entry.kind == NodeKind::kLeaf) {
        for (const std::uint32_t id : ItemsOf(entry)) {
            visit(id);
        }
        return;
    }
    const Split split = SplitOf(box, precision_);
    const Quadrants met = Met(split, query, kQueryReach * precision_.halfEpsilon[0],
                              kQueryReach * precision_.halfEpsilon[1]);
    for (std::size_t quadrant = 0; quadrant < met.size(); ++quadrant) {
        if (met[quadrant] && entry.slots[quadrant] != 0) {
            VisitLeaves(entry.slots[quadrant], QuadrantBox(box, split, quadrant), query, visit);
        }
    }
}

/// Nearly every point lies clear of the midlines all the way down. Its way is then a chain of loads
/// without any branch that depends on the quadrant: every second one would be mispredicted.
std::uint32_t QuadTree2D::Descend(const Point2D& point, Extents2D& box) const noexcept {
    const double hx = kQueryReach * precision_.halfEpsilon[0];
    const double hy = kQueryReach * precision_.halfEpsilon[1];
    std::uint32_t node = 0;
    while (nodes_[node].kind == NodeKind::kSplit) {
        const Split split = SplitOf(box, precision_);
        const unsigned right = point.x > split.x + hx ? 1 : 0;
        const unsigned left = point.x < split.x - hx ? 1 : 0;
        const unsigned top = point.y > split.y + hy ? 1 : 0;
        const unsigned bottom = point.y < split.y - hy ? 1 : 0;
        const bool clear =
            split.splits_x && split.splits_y && ((right | left) & (top | bottom)) != 0;
        if (!clear) {
            break;
        }
        node = nodes_[node].slots[right + 2 * bottom];
        if (node == 0) {
            return kNone;
        }
        box = {Choose(right, split.x, box.x_min), Choose(left, split.x, box.x_max),
               Choose(top, split.y, box.y_min), Choose(bottom, split.y, box.y_max)};
    }
    return node;
}

bool QuadTree2D::Touches(unsigned id, const Point2D& point) const noexcept {
    const gtl::iterator_range<const Point2D*> points = At(id);
    const detail::PointRow row{points.begin(), points.size()};
    if (row.count == 2) {  // the commonest item, whose test begins with its box
        return LineContainsPoint2D(row.points[0], row.points[1], point, precision_);
    }
    if (!IsExtentsIntersected2D(item_boxes_[id], {point.x, point.x, point.y, point.y},
                                precision_)) {
        return false;
    }
    if (detail::RowTouches(row, point, precision_)) {
        return true;
    }
    return row.count >= 3 && IsEqual2D(row.points[0], row.points[row.count - 1], precision_) &&
           detail::RingEncloses(row, point);
}

unsigned QuadTree2D::Find(const Point2D& point) const noexcept {
    if (!point.IsValid() || !std::isfinite(point.x) || !std::isfinite(point.y)) {
        return kNone;
    }
    Extents2D box = extents_;
    const std::uint32_t start = Descend(point, box);
    if (start == kNone) {
        return kNone;
    }
    unsigned best = kNone;
    VisitLeaves(start, box, {point.x, point.x, point.y, point.y}, [&](unsigned id) {
        if (id < best && Touches(id, point)) {
            best = id;
        }
    });
    return best;
}

void QuadTree2D::Find(const Extents2D& box, std::vector<unsigned>& ids) const {
    ids.clear();
    if (box.IsEmpty()) {
        return;
    }
    VisitLeaves(0, extents_, box, [&](unsigned id) {
        if (IsExtentsIntersected2D(item_boxes_[id], box, precision_)) {
            ids.push_back(id);
        }
    });
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
}

double QuadTree2D::SquaredDistance(unsigned id, const Point2D& point) const noexcept {
    const gtl::iterator_range<const Point2D*> points = At(id);
    const detail::PointRow row{points.begin(), points.size()};
    if (row.count >= 3 && IsEqual2D(row.points[0], row.points[row.count - 1], precision_) &&
        detail::RingEncloses(row, point)) {
        return 0.0;
    }
    double nearest = detail::SquaredLength(row.points[0], point);
    for (std::size_t i = 1; i < row.count; ++i) {
        nearest =
            std::min(nearest, SquaredDistanceToSegment(row.points[i - 1], row.points[i], point));
    }
    return nearest;
}

void QuadTree2D::SearchNearest(std::uint32_t node, const Extents2D& box, const Extents2D& region,
                               const Point2D& point, unsigned& best,
                               double& best_distance) const noexcept {
    const Node& entry = nodes_[node];
    if (entry.kind == NodeKind::kLeaf) {
        for (const std::uint32_t id : ItemsOf(entry)) {
            if (SquaredDistanceToBox(item_boxes_[id], point) > best_distance) {
                continue;
            }
            const double distance = SquaredDistance(id, point);
            if (distance < best_distance || (distance == best_distance && id < best)) {
                best = id;
                best_distance = distance;
            }
        }
        return;
    }
    // Nearest quadrant first. A region reaches without end where the root's extents end, and a
    // little beyond its midlines, as in VisitLeaves.
    struct Child {
        double distance;
        std::size_t quadrant;
    };
    const Split split = SplitOf(box, precision_);
    const double hx = kQueryReach * precision_.halfEpsilon[0];
    const double hy = kQueryReach * precision_.halfEpsilon[1];
    std::array<Child, 4> children{};
    for (std::size_t quadrant = 0; quadrant < children.size(); ++quadrant) {
        const Extents2D part = QuadrantBox(region, split, quadrant);
        children[quadrant] = {
            SquaredDistanceToBox(
                {part.x_min - hx, part.x_max + hx, part.y_min - hy, part.y_max + hy}, point),
            quadrant};
    }
    std::sort(children.begin(), children.end(),
              [](const Child& a, const Child& b) { return a.distance < b.distance; });
    for (const Child& child : children) {
        if (entry.slots[child.quadrant] != 0 && child.distance <= best_distance) {
            SearchNearest(entry.slots[child.quadrant], QuadrantBox(box, split, child.quadrant),
                          QuadrantBox(region, split, child.quadrant), point, best, best_distance);
        }
    }
}

unsigned QuadTree2D::Nearest(const Point2D& point) const noexcept {
    if (!point.IsValid() || !std::isfinite(point.x) || !std::isfinite(point.y)) {
        return kNone;
    }
    unsigned best = kNone;
    double best_distance = kInfinity;
    SearchNearest(0, extents_, {-kInfinity, kInfinity, -kInfinity, kInfinity}, point, best,
                  best_distance);
    return best;
}

// ---- looking inside

void QuadTree2D::CollectLeafBoxes(std::uint32_t node, const Extents2D& box,
                                  std::vector<Extents2D>& boxes) const {
    const Node& entry = nodes_[node];
    if (entry.kind == NodeKind::kLeaf) {
        boxes.push_back(box);
        return;
    }
    const Split split = SplitOf(box, precision_);
    for (std::size_t quadrant = 0; quadrant < entry.slots.size(); ++quadrant) {
        if (entry.slots[quadrant] != 0) {
            CollectLeafBoxes(entry.slots[quadrant], QuadrantBox(box, split, quadrant), boxes);
        }
    }
}

std::vector<Extents2D> QuadTree2D::LeafBoxes() const {
    std::vector<Extents2D> boxes;
    CollectLeafBoxes(0, extents_, boxes);
    return boxes;
}

std::size_t QuadTree2D::OverflowCount() const noexcept {
    std::size_t count = 0;
    for (const auto& list : overflow_) {
        count += list.size();
    }
    return count;
}

}  // namespace Geom
