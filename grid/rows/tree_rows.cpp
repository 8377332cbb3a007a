// SPDX-License-Identifier: MIT

#include "grid/rows/tree_rows.h"

#include "grid/rows/tree_structure.h"

#include <utility>

namespace grid {

int TreeRows::rowOf(int node) const {
    // The root turns into a number beyond all nodes.
    const auto place = static_cast<std::size_t>(node);
    return place < rowOfNode_.size() ? rowOfNode_[place] : -1;
}

bool TreeRows::hasChildren(int node) const {
    return !structure_.children(node).empty();
}

void TreeRows::setExpanded(int node, bool expanded) {
    expanded_[static_cast<std::size_t>(node)] = expanded ? 1 : 0;
    layout();
}

void TreeRows::expandBranch(int node) {
    const int end = structure_.nextBranch(node);
    for (int member = node; member != end; member = structure_.next(member)) {
        expanded_[static_cast<std::size_t>(member)] = 1;
    }
    layout();
}

bool TreeRows::reveal(int node) {
    if (node == TreeStructure::root) {
        return false;
    }
    bool changed = false;
    for (int ancestor = structure_.parent(node); ancestor != TreeStructure::root;
         ancestor = structure_.parent(ancestor)) {
        changed = changed || !isExpanded(ancestor);
        expanded_[static_cast<std::size_t>(ancestor)] = 1;
    }
    if (changed) {
        layout();
    }
    return changed;
}

void TreeRows::expandAll() {
    expanded_.assign(static_cast<std::size_t>(structure_.rowCount()), 1);
    layout();
}

void TreeRows::collapseAll() {
    expanded_.assign(static_cast<std::size_t>(structure_.rowCount()), 0);
    layout();
}

void TreeRows::restore() {
    expanded_ = std::move(saved_);
    expanded_.resize(static_cast<std::size_t>(structure_.rowCount()));
    layout();
}

void TreeRows::layout() {
    rows_.clear();
    rowOfNode_.assign(expanded_.size(), -1);
    int depth = 0;
    int node = structure_.next(TreeStructure::root);
    while (node != TreeStructure::root) {
        rowOfNode_[static_cast<std::size_t>(node)] = count();
        rows_.push_back({node, depth});
        if (isExpanded(node) && hasChildren(node)) {
            node = structure_.next(node);
            ++depth;
            continue;
        }
        const int following = structure_.nextBranch(node);
        if (following != TreeStructure::root) {
            for (int ancestor = node; structure_.parent(ancestor) != structure_.parent(following);
                 ancestor = structure_.parent(ancestor)) {
                --depth;
            }
        }
        node = following;
    }
}

} // namespace grid
