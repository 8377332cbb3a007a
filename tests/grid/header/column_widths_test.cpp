// SPDX-License-Identifier: MIT

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

TEST(ColumnWidths, FitAColumnWithoutTakingWhatOthersNeed) {
    const std::vector<int> widths{50, 300, 100, 60, 90};
    const std::vector<int> least{40, 40, 30, 55, 95};
    const auto fitted = [&](std::size_t column, int width) {
        std::vector<double> weights(widths.size());
        fitColumn(weights, widths, column, width, least);
        return shareWidth(weights, 600, 24);
    };
    using Widths = std::vector<int>;
    EXPECT_EQ(fitted(1, 175), Widths({50, 175, 150, 90, 135})) << "the others grow in proportion";
    EXPECT_EQ(fitted(1, 340), Widths({50, 340, 65, 55, 90}))
        << "one gives way, two have no more than they need";
    EXPECT_EQ(fitted(1, 5000), Widths({50, 375, 30, 55, 90}));
    EXPECT_EQ(fitted(4, 141), Widths({45, 269, 90, 55, 141})) << "the last one draws from the left";
}

} // namespace grid
