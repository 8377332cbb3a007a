// SPDX-License-Identifier: MIT

#include "grid/header/column_widths.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace grid {

std::vector<int> shareWidth(std::span<const double> weights, int total, int minimum) {
    const auto count = static_cast<int>(weights.size());
    if (count == 0) {
        return {};
    }
    minimum = std::min(minimum, total / count);

    // Columns whose share is too small get the minimum; the others share what that leaves, which may make
    // further ones too small.
    std::vector<bool> isMinimal(weights.size(), false);
    double freeWidth = total;
    double freeWeight = std::accumulate(weights.begin(), weights.end(), 0.0);
    for (bool found = true; found;) {
        found = false;
        for (std::size_t i = 0; i < weights.size(); ++i) {
            if (!isMinimal[i] && weights[i] * freeWidth < minimum * freeWeight) {
                isMinimal[i] = found = true;
                freeWidth -= minimum;
                freeWeight -= weights[i];
            }
        }
    }

    std::vector<int> widths;
    widths.reserve(weights.size());
    double edge = 0;
    int lastEdge = 0;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        edge += isMinimal[i] ? minimum : weights[i] * freeWidth / freeWeight;
        const int rounded = i + 1 == weights.size() ? total : static_cast<int>(std::lround(edge));
        widths.push_back(rounded - lastEdge);
        lastEdge = rounded;
    }
    return widths;
}

void dragEdge(std::span<double> weights, std::size_t column, int width, int total, int minimum) {
    if (column + 1 >= weights.size()) {
        return;
    }
    const std::vector<int> widths = shareWidth(weights, total, minimum);
    const int left = std::accumulate(widths.begin(), widths.begin() + static_cast<std::ptrdiff_t>(column), 0);
    const int available = total - left;
    const auto following = static_cast<int>(weights.size() - column - 1);
    const int widest = std::max(minimum, available - following * minimum);
    width = std::clamp(width, std::min(minimum, widest), widest);

    // From here on a weight is a width in pixels; the columns to the right keep their proportions unless one
    // of them is down to the minimum, which must not draw room from the columns to the left.
    const std::span<double> right = weights.subspan(column + 1);
    const std::vector<int> rightWidths = shareWidth(right, available - width, minimum);
    const bool isTight = std::ranges::any_of(rightWidths, [&](int one) { return one <= minimum; });
    const double rightWeight = std::accumulate(right.begin(), right.end(), 0.0);
    for (std::size_t i = 0; i < right.size(); ++i) {
        right[i] = isTight ? rightWidths[i] : right[i] * (available - width) / rightWeight;
    }
    std::copy_n(widths.begin(), column, weights.begin());
    weights[column] = width;
}

void fitColumn(std::span<double> weights, std::span<const int> widths, std::size_t column, int width,
               std::span<const int> least) {
    const bool isLast = column + 1 == weights.size();
    const std::size_t first = isLast ? 0 : column + 1;
    const std::size_t count = isLast ? column : weights.size() - first;
    std::vector<double> minimums;
    for (std::size_t i = first; i < first + count; ++i) {
        minimums.push_back(std::min(least[i], widths[i]));
    }
    const auto shared = widths.subspan(first, count);
    const int total = widths[column] + std::accumulate(shared.begin(), shared.end(), 0);
    const double needed = std::accumulate(minimums.begin(), minimums.end(), 0.0);
    const double fitted = count == 0 ? total : std::min<double>(width, total - needed);

    // As in shareWidth(), columns that would get too little get their minimum and leave the sharing.
    double freeWidth = total - fitted;
    double freeWeight = std::accumulate(shared.begin(), shared.end(), 0.0);
    std::vector<bool> isMinimal(count, false);
    for (bool found = true; found;) {
        found = false;
        for (std::size_t i = 0; i < count; ++i) {
            if (!isMinimal[i] && shared[i] * freeWidth < minimums[i] * freeWeight) {
                isMinimal[i] = found = true;
                freeWidth -= minimums[i];
                freeWeight -= shared[i];
            }
        }
    }
    std::ranges::copy(widths, weights.begin());
    weights[column] = fitted;
    for (std::size_t i = 0; i < count; ++i) {
        weights[first + i] = isMinimal[i] ? minimums[i] : shared[i] * freeWidth / freeWeight;
    }
}

} // namespace grid
