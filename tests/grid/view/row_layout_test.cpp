// SPDX-License-Identifier: MIT

#include "grid/view/row_layout.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace grid {

TEST(RowLayout, ShowsEveryPixelOfEveryRowAndMeasuresFewOfThem) {
    int measured = 0;
    const auto height = [&](int row) {
        ++measured;
        return row % 10 == 9 ? 730 : 20 + row % 3;
    };
    RowLayout layout(height);
    layout.setViewportHeight(300);
    layout.reset(1'000'000);
    layout.setTop(layout.lastPosition());
    EXPECT_EQ(layout.shownRows().back().row, 999'999);
    EXPECT_EQ(layout.shownRows().back().y + layout.shownRows().back().height, 300);
    EXPECT_LT(measured, 100);

    // Through the first rows, nothing is left out: what begins a step was on screen before it.
    for (const int step : {1, 3, 100}) {
        layout.setTop({});
        int seenRow = 0;
        int seenPixels = 0;
        while (layout.top().row < 200) {
            for (const ShownRow& shown : layout.shownRows()) {
                ASSERT_LE(shown.row, seenRow + 1);
                if (shown.row >= seenRow) {
                    ASSERT_LE(-shown.y, shown.row == seenRow ? seenPixels : 0);
                    seenRow = shown.row;
                    seenPixels = std::min(shown.height, 300 - shown.y);
                }
            }
            const ScrollPosition before = layout.top();
            layout.setTop(layout.moved(before, step));
            ASSERT_LT(before, layout.top());
        }
        while (ScrollPosition() < layout.top()) {
            const ScrollPosition before = layout.top();
            layout.setTop(layout.moved(before, -step));
            ASSERT_LT(layout.top(), before);
            const ShownRow last = layout.shownRows().back();
            ASSERT_TRUE(step > 1 || last.row >= before.row || last.y + last.height <= 300)
                << "what was above the view is in it";
        }
    }

    layout.reset(1);
    layout.setTop({0, 5000});
    EXPECT_EQ(layout.top(), ScrollPosition());
    layout.reset(0);
    EXPECT_TRUE(layout.shownRows().empty());
    EXPECT_EQ(layout.rowAt(10), -1);
}

} // namespace grid
