#pragma once

// The status of the line sweep: the items cut by the sweep position, in order from below, as a
// treap whose nodes are also linked to their neighbours. Places are exchanged by exchanging the
// contents of two neighbouring nodes, so the tree's shape does not change when items cross.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Geom::detail {

/// An ordered list of item numbers with logarithmic insertion (expected) and linked neighbours. The
/// order itself is the caller's: Insert and LowerBound are told by a predicate where to go.
class SweepStatus {
 public:
    using Index = std::uint32_t;
    static constexpr Index kNone = 0xFFFFFFFFU;

    explicit SweepStatus(std::size_t item_count) : node_of_(item_count, kNone) {}

    [[nodiscard]] bool Contains(Index item) const noexcept { return node_of_[item] != kNone; }
    /// The item above or below, or kNone.
    [[nodiscard]] Index Above(Index item) const noexcept {
        return ItemOf(nodes_[node_of_[item]].next);
    }
    [[nodiscard]] Index Below(Index item) const noexcept {
        return ItemOf(nodes_[node_of_[item]].previous);
    }

    /// Inserts `item`, going above another item wherever `goes_above(other)` holds.
    template <class GoesAbove>
    void Insert(Index item, const GoesAbove& goes_above) {
        Index parent = kNone;
        bool above = false;
        for (Index node = root_; node != kNone;
             node = above ? nodes_[node].right : nodes_[node].left) {
            parent = node;
            above = goes_above(nodes_[node].item);
        }
        Attach(item, parent, above);
    }

    /// The lowest item for which `reached(item)` holds, or kNone; it must hold for all above that
    /// one.
    template <class Reached>
    [[nodiscard]] Index LowerBound(const Reached& reached) const {
        Index best = kNone;
        for (Index node = root_; node != kNone;) {
            if (reached(nodes_[node].item)) {
                best = nodes_[node].item;
                node = nodes_[node].left;
            } else {
                node = nodes_[node].right;
            }
        }
        return best;
    }

    void Erase(Index item);

    /// Exchanges the places of two items that stand in the list.
    void Exchange(Index a, Index b) noexcept;

 private:
    struct Node {
        Index item;
        Index left;
        Index right;
        Index parent;
        Index previous;
        Index next;
        std::uint32_t weight;  // random; a parent's is never smaller than its children's
    };

    [[nodiscard]] Index ItemOf(Index node) const noexcept {
        return node == kNone ? kNone : nodes_[node].item;
    }
    void Attach(Index item, Index parent, bool above);
    void RotateUp(Index node) noexcept;
    void ReplaceChild(Index parent, Index old_child, Index new_child) noexcept;

    std::vector<Node> nodes_;
    std::vector<Index> node_of_;
    std::vector<Index> free_;
    Index root_ = kNone;
    std::uint32_t random_ = 0x9E3779B9U;
};

}  // namespace Geom::detail
