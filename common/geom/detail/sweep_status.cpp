#include "common/geom/detail/sweep_status.h"

#include <utility>

namespace Geom::detail {

void SweepStatus::Attach(Index item, Index parent, bool above) {
    Index node = kNone;
    if (free_.empty()) {
        node = static_cast<Index>(nodes_.size());
        nodes_.emplace_back();
    } else {
        node = free_.back();
        free_.pop_back();
    }
    random_ ^= random_ << 13U;  // xorshift32 (Marsaglia 2003)
    random_ ^= random_ >> 17U;
    random_ ^= random_ << 5U;
    Node& entry = nodes_[node];
    entry = {item, kNone, kNone, parent, kNone, kNone, random_};
    node_of_[item] = node;
    if (parent == kNone) {
        root_ = node;
        return;
    }
    Node& up = nodes_[parent];
    if (above) {
        up.right = node;
        entry.previous = parent;
        entry.next = std::exchange(up.next, node);
        if (entry.next != kNone) {
            nodes_[entry.next].previous = node;
        }
    } else {
        up.left = node;
        entry.next = parent;
        entry.previous = std::exchange(up.previous, node);
        if (entry.previous != kNone) {
            nodes_[entry.previous].next = node;
        }
    }
    while (nodes_[node].parent != kNone &&
           nodes_[nodes_[node].parent].weight < nodes_[node].weight) {
        RotateUp(node);
    }
}

void SweepStatus::Erase(Index item) {
    const Index node = std::exchange(node_of_[item], kNone);
    while (nodes_[node].left != kNone && nodes_[node].right != kNone) {
        const Index left = nodes_[node].left;
        const Index right = nodes_[node].right;
        RotateUp(nodes_[left].weight > nodes_[right].weight ? left : right);
    }
    const Node& entry = nodes_[node];
    const Index child = entry.left != kNone ? entry.left : entry.right;
    if (child != kNone) {
        nodes_[child].parent = entry.parent;
    }
    ReplaceChild(entry.parent, node, child);
    if (entry.previous != kNone) {
        nodes_[entry.previous].next = entry.next;
    }
    if (entry.next != kNone) {
        nodes_[entry.next].previous = entry.previous;
    }
    free_.push_back(node);
}

void SweepStatus::Exchange(Index a, Index b) noexcept {
    std::swap(node_of_[a], node_of_[b]);
    nodes_[node_of_[a]].item = a;
    nodes_[node_of_[b]].item = b;
}

void SweepStatus::RotateUp(Index node) noexcept {
    const Index parent = nodes_[node].parent;
    const Index grandparent = nodes_[parent].parent;
    Index moved = kNone;  // the subtree between the two, which changes its parent
    if (nodes_[parent].left == node) {
        moved = std::exchange(nodes_[node].right, parent);
        nodes_[parent].left = moved;
    } else {
        moved = std::exchange(nodes_[node].left, parent);
        nodes_[parent].right = moved;
    }
    if (moved != kNone) {
        nodes_[moved].parent = parent;
    }
    nodes_[parent].parent = node;
    nodes_[node].parent = grandparent;
    ReplaceChild(grandparent, parent, node);
}

void SweepStatus::ReplaceChild(Index parent, Index old_child, Index new_child) noexcept {
    if (parent == kNone) {
        root_ = new_child;
    } else if (nodes_[parent].left == old_child) {
        nodes_[parent].left = new_child;
    } else {
        nodes_[parent].right = new_child;
    }
}

}  // namespace Geom::detail
