// SPDX-License-Identifier: MIT

#include "grid/rows/tree_rows.h"
#include "grid/rows/tree_structure.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using grid::TreeKey;
using grid::TreeStructure;

/// The nodes with their children in brackets.
std::string print(const TreeStructure& tree, int node = TreeStructure::root) {
    std::string text;
    for (const int child : tree.children(node)) {
        text += text.empty() ? "" : " ";
        text += std::to_string(child);
        if (const std::string beneath = print(tree, child); !beneath.empty()) {
            text.append("(").append(beneath).append(")");
        }
    }
    return text;
}

constexpr auto null = std::nullopt;

TEST(TreeStructure, LosesNoRow) {
    struct Case {
        const char* what;
        std::vector<TreeKey> keys;
        std::string expected;
    };
    const Case cases[] = {
        {"no rows", {}, ""},
        {"children before their parent", {{3, 2}, {2, 1}, {1, null}}, "2(1(0))"},
        {"missing parent", {{1, null}, {2, 99}, {3, 2}}, "0 1(2)"},
        {"own parent", {{1, 1}, {2, 1}}, "0(1)"},
        {"circle with a tail", {{9, 7}, {5, 6}, {6, 7}, {7, 5}}, "1(3(0 2))"},
        {"two circles", {{1, 2}, {2, 1}, {3, 4}, {4, 3}}, "0(1) 2(3)"},
        {"same id twice", {{1, null}, {1, null}, {2, 1}, {2, 2}}, "0(2(3)) 1"},
        {"no id", {{null, null}, {null, null}, {1, null}, {null, 1}}, "0 1 2(3)"},
        {"ends of the range", {{INT64_MIN, null}, {INT64_MAX, INT64_MIN}, {0, INT64_MAX}}, "0(1(2))"},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(print(TreeStructure(each.keys)), each.expected) << each.what;
    }
}

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
