// SPDX-License-Identifier: MIT

// Trees of any ids and parents: doubled, missing, in circles.

#include "fuzz/fuzzing.h"
#include "grid/rows/tree_rows.h"
#include "grid/rows/tree_structure.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

using fuzz::check;
using fuzz::Input;
using grid::TreeKey;
using grid::TreeStructure;

/// Mostly small, so that they meet.
std::optional<std::int64_t> takeKey(Input& input) {
    const auto key = input.ConsumeIntegral<std::uint8_t>();
    return key == 0     ? std::nullopt
           : key == 255 ? std::optional(input.ConsumeIntegral<std::int64_t>())
                        : std::optional<std::int64_t>(key % 32);
}

/// Every node that is to be shown comes once, beneath its parent and at its position.
void checkShape(const TreeStructure& tree, const std::vector<bool>& isShown) {
    std::vector<bool> seen(isShown.size());
    for (int node = tree.next(TreeStructure::root); node != TreeStructure::root; node = tree.next(node)) {
        check(!seen[static_cast<std::size_t>(node)]);
        seen[static_cast<std::size_t>(node)] = true;
        const auto siblings = tree.children(tree.parent(node));
        check(siblings[static_cast<std::size_t>(tree.position(node))] == node);
    }
    check(seen == isShown);
    for (int node = 0; node < tree.rowCount(); ++node) {
        check(tree.isShown(node) == isShown[static_cast<std::size_t>(node)]);
    }
}

/// A parent is the first row of its id, unless the node stands at the top level for a circle's sake.
void checkParents(const TreeStructure& tree, const std::vector<TreeKey>& keys) {
    for (int node = 0; node < tree.rowCount(); ++node) {
        const auto& wanted = keys[static_cast<std::size_t>(node)].parent;
        const auto found =
            std::ranges::find_if(keys, [&](const TreeKey& key) { return wanted && key.id == wanted; });
        const int expected =
            found == keys.end() ? TreeStructure::root : static_cast<int>(found - keys.begin());
        if (tree.parent(node) == expected) {
            continue;
        }
        check(tree.parent(node) == TreeStructure::root);
        int above = expected;
        while (above != node && above != TreeStructure::root) {
            check(above > node);
            above = tree.parent(above);
        }
        check(above == node);
    }
}

} // namespace

void fuzz::run(Input& input) {
    std::vector<TreeKey> keys(input.ConsumeIntegralInRange<std::size_t>(0, 60));
    std::ranges::generate(keys, [&] { return TreeKey{takeKey(input), takeKey(input)}; });
    TreeStructure tree(keys);
    const std::vector<bool> all(keys.size(), true);
    checkShape(tree, all);
    checkParents(tree, keys);

    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    for (std::size_t place = 1; place < order.size(); ++place) {
        std::swap(order[place], order[input.ConsumeIntegralInRange<std::size_t>(0, place)]);
    }
    tree.sort(order);
    checkShape(tree, all);

    std::vector<bool> matches(keys.size());
    for (std::size_t node = 0; node < matches.size(); ++node) {
        matches[node] = input.ConsumeBool();
    }
    tree.showOnly([&](int node) { return matches[static_cast<std::size_t>(node)]; });
    std::vector<bool> isKept(keys.size());
    for (int node = 0; node < tree.rowCount(); ++node) {
        for (int kept = node; matches[static_cast<std::size_t>(node)] && kept != TreeStructure::root;
             kept = tree.parent(kept)) {
            isKept[static_cast<std::size_t>(kept)] = true;
        }
    }
    checkShape(tree, isKept);
    grid::TreeRows rows(tree);
    rows.expandAll();
    check(rows.count() == std::ranges::count(isKept, true));
}
