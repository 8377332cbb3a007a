// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace grid {

/// What places a row in the tree.
struct TreeKey {
    std::optional<std::int64_t> id;
    std::optional<std::int64_t> parent;
};

/// The shape of a tree whose nodes are the rows of a dataset, numbered from 0, with the nodes that are shown
/// of it and their order. The invisible root above the top level is `root`.
class TreeStructure final {
public:
    static constexpr int root = -1;

    TreeStructure() = default;

    /// Hangs every row beneath the first row that bears its parent's id. A row stands at the top level when
    /// it has no parent or its parent is missing; of a circle of parents that is the row which comes first.
    explicit TreeStructure(std::span<const TreeKey> keys);

    /// Rows, shown or not.
    [[nodiscard]] int rowCount() const { return static_cast<int>(parents_.size()); }
    /// The parent of a node; `root` at the top level.
    [[nodiscard]] int parent(int node) const { return parents_[at(node)]; }
    /// Whether showOnly() has left the node.
    [[nodiscard]] bool isShown(int node) const { return positions_[at(node)] >= 0; }

    /// The shown children of a node or of the root, in their order.
    [[nodiscard]] std::span<const int> children(int node) const;
    /// The place of a shown node among its parent's shown children.
    [[nodiscard]] int position(int node) const { return positions_[at(node)]; }

    /// Puts siblings in the order in which they stand in `order`, a permutation of all rows; an empty one
    /// stands for the rows' own order.
    void sort(std::vector<int> order);

    /// Shows only nodes that match, and their ancestors.
    void showOnly(const std::function<bool(int node)>& matches);
    /// Shows all nodes again.
    void showAll();

    /// The shown node after `node` when every branch is open, `root` after the last one; the first one after
    /// the root.
    [[nodiscard]] int next(int node) const;
    /// The shown node after `node` and all that hangs beneath it; `root` after the last one.
    [[nodiscard]] int nextBranch(int node) const;

private:
    [[nodiscard]] static std::size_t at(int node) { return static_cast<std::size_t>(node); }
    void openCircles();
    void arrange();

    std::vector<int> parents_;
    std::vector<int> order_;           // empty: the rows' own order
    std::vector<std::uint8_t> kept_;   // empty: all are shown
    std::vector<int> starts_ = {0, 0}; // where a node's children start, the root's first
    std::vector<int> children_;
    std::vector<int> positions_; // -1 for a node that is not shown
};

} // namespace grid
