// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <vector>

namespace grid {

class TreeStructure;

/// Which branches of a tree are expanded, and the rows that this gives: the shown nodes whose ancestors are
/// all expanded, from top to bottom.
class TreeRows final {
public:
    struct Row {
        int node;
        int depth; ///< 0 at the top level
    };

    explicit TreeRows(const TreeStructure& structure) : structure_(structure) { collapseAll(); }

    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] Row at(int row) const { return rows_[static_cast<std::size_t>(row)]; }
    /// The row of a node; -1 when it has none, or is no node at all.
    [[nodiscard]] int rowOf(int node) const;

    /// Whether any children are shown.
    [[nodiscard]] bool hasChildren(int node) const;
    [[nodiscard]] bool isExpanded(int node) const { return expanded_[static_cast<std::size_t>(node)] != 0; }
    void setExpanded(int node, bool expanded);
    /// Expands a node with all that hangs beneath it.
    void expandBranch(int node);
    /// Expands the ancestors of a node. Returns whether any was collapsed; false for the root.
    bool reveal(int node);
    void expandAll();
    void collapseAll();

    /// Remembers what is expanded, for restore().
    void save() { saved_ = expanded_; }
    /// Brings back what was expanded at save().
    void restore();

    /// Makes the rows anew; to be called when the structure's order or its shown nodes have changed.
    void layout();

private:
    const TreeStructure& structure_;
    std::vector<std::uint8_t> expanded_; // by node
    std::vector<std::uint8_t> saved_;
    std::vector<Row> rows_;
    std::vector<int> rowOfNode_;
};

} // namespace grid
