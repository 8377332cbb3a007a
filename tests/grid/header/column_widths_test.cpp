#include "grid/header/column_widths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace grid {

TEST(ColumnWidths, FillTheWidthAndKeepTheirProportions) {
    const std::vector<double> design{64, 90, 308, 104, 105, 104, 101, 82, 81, 82, 81};
    const double sum = std::accumulate(design.begin(), design.end(), 0.0);
    for (const int total : {300, 917, 1202, 1920, 3841}) {
        const std::vector<int> widths = shareWidth(design, total, 16);
        EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), total);
        for (std::size_t i = 0; i < widths.size(); ++i) {
            EXPECT_NEAR(widths[i], design[i] * total / sum, 1.0) << total;
        }
    }
    const std::vector<int> tight = shareWidth(design, 200, 16);
    EXPECT_EQ(std::accumulate(tight.begin(), tight.end(), 0), 200);
    EXPECT_GE(std::ranges::min(tight), 16);

    std::vector<double> dragged = design;
    const std::vector<int> before = shareWidth(dragged, 1202, 16);
    for (const int width : {400, 5000, 1, 250}) {
        dragEdge(dragged, 2, width, 1202, 16);
        const std::vector<int> after = shareWidth(dragged, 1202, 16);
        EXPECT_EQ(std::accumulate(after.begin(), after.end(), 0), 1202);
        EXPECT_EQ(after[0], before[0]);
        EXPECT_EQ(after[1], before[1]);
        EXPECT_EQ(after[2], std::clamp(width, 16, 1202 - before[0] - before[1] - 8 * 16));
    }
}

} // namespace grid
