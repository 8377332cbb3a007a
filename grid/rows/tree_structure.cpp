// SPDX-License-Identifier: MIT

#include "grid/rows/tree_structure.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace grid {

TreeStructure::TreeStructure(std::span<const TreeKey> keys) : parents_(keys.size(), root) {
    std::unordered_map<std::int64_t, int> nodes;
    nodes.reserve(keys.size());
    for (int node = 0; node < rowCount(); ++node) {
        if (const auto& id = keys[at(node)].id) {
            nodes.emplace(*id, node);
        }
    }
    for (int node = 0; node < rowCount(); ++node) {
        if (const auto& parent = keys[at(node)].parent) {
            const auto found = nodes.find(*parent);
            parents_[at(node)] = found == nodes.end() ? root : found->second;
        }
    }
    openCircles();
    arrange();
}

void TreeStructure::openCircles() {
    constexpr int unseen = -1;
    std::vector<int> seenFrom(parents_.size(), unseen);
    for (int start = 0; start < rowCount(); ++start) {
        int node = start;
        while (node != root && seenFrom[at(node)] == unseen) {
            seenFrom[at(node)] = start;
            node = parents_[at(node)];
        }
        if (node == root || seenFrom[at(node)] != start) {
            continue;
        }
        int first = node;
        for (int member = parents_[at(node)]; member != node; member = parents_[at(member)]) {
            first = std::min(first, member);
        }
        parents_[at(first)] = root;
    }
}

void TreeStructure::sort(std::vector<int> order) {
    order_ = std::move(order);
    arrange();
}

void TreeStructure::showOnly(const std::function<bool(int node)>& matches) {
    kept_.assign(parents_.size(), 0);
    for (int node = 0; node < rowCount(); ++node) {
        if (!matches(node)) {
            continue;
        }
        for (int kept = node; kept != root && kept_[at(kept)] == 0; kept = parents_[at(kept)]) {
            kept_[at(kept)] = 1;
        }
    }
    arrange();
}

void TreeStructure::showAll() {
    kept_.clear();
    arrange();
}

void TreeStructure::arrange() {
    const auto isKept = [this](int node) { return kept_.empty() || kept_[at(node)] != 0; };

    // One place further than the child counts belong, so that filling moves the starts to where they belong.
    starts_.assign(parents_.size() + 3, 0);
    for (int node = 0; node < rowCount(); ++node) {
        starts_[at(parents_[at(node)] + 3)] += isKept(node) ? 1 : 0;
    }
    for (std::size_t index = 1; index < starts_.size(); ++index) {
        starts_[index] += starts_[index - 1];
    }
    children_.resize(at(starts_.back()));
    for (int index = 0; index < rowCount(); ++index) {
        const int node = order_.empty() ? index : order_[at(index)];
        if (isKept(node)) {
            children_[at(starts_[at(parents_[at(node)] + 2)]++)] = node;
        }
    }
    starts_.pop_back();

    positions_.assign(parents_.size(), -1);
    for (int node = root; node < rowCount(); ++node) {
        int position = 0;
        for (const int child : children(node)) {
            positions_[at(child)] = position++;
        }
    }
}

std::span<const int> TreeStructure::children(int node) const {
    const int start = starts_[at(node + 1)];
    const int end = starts_[at(node + 2)];
    return std::span(children_).subspan(at(start), at(end - start));
}

int TreeStructure::next(int node) const {
    const std::span<const int> beneath = children(node);
    return beneath.empty() ? nextBranch(node) : beneath.front();
}

int TreeStructure::nextBranch(int node) const {
    while (node != root) {
        const std::span<const int> siblings = children(parent(node));
        const std::size_t following = at(position(node)) + 1;
        if (following < siblings.size()) {
            return siblings[following];
        }
        node = parent(node);
    }
    return root;
}

} // namespace grid
