// SPDX-License-Identifier: MIT

#include "grid/rows/tree_rows.h"
#include "grid/rows/tree_structure.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace {

using grid::TreeKey;
using grid::TreeStructure;

constexpr auto null = std::nullopt;

TEST(TreeStructure, TakesDeepChainsAndLongCircles) {
    constexpr int count = 100'000;
    std::vector<TreeKey> keys;
    keys.reserve(count);
    for (int node = 0; node < count; ++node) {
        keys.push_back({node, node + 1});
    }
    keys.back().parent = null;
    for (const bool isCircle : {false, true}) {
        if (isCircle) {
            keys.back().parent = 0;
        }
        TreeStructure tree(keys);
        grid::TreeRows rows(tree);
        EXPECT_EQ(rows.count(), 1);
        rows.expandAll();
        EXPECT_EQ(rows.count(), count);
        EXPECT_EQ(rows.at(count - 1).depth, count - 1);
        rows.setExpanded(rows.at(10).node, false);
        EXPECT_EQ(rows.count(), 11);
        rows.expandBranch(rows.at(0).node);
        EXPECT_EQ(rows.count(), count);
        rows.collapseAll();
        EXPECT_TRUE(rows.reveal(isCircle ? 1 : 0));
        EXPECT_EQ(rows.count(), count);
    }
}

} // namespace
