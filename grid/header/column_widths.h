// SPDX-License-Identifier: MIT

#pragma once

#include <span>
#include <vector>

namespace grid {

/// Divides `total` pixels among columns in proportion to `weights` (above 0). The widths add up to `total`
/// exactly and each edge is off by less than a pixel; no column gets less than `minimum` while there is room
/// for that.
[[nodiscard]] std::vector<int> shareWidth(std::span<const double> weights, int total, int minimum);

/// Changes `weights` as a column's right edge is dragged to make it `width` of `total` pixels wide: the
/// columns to its left stay, those to its right share the rest in proportion. The last column has no edge to
/// drag.
void dragEdge(std::span<double> weights, std::size_t column, int width, int total, int minimum);

/// Changes `weights` to make a column `width` of their `widths` wide, all in pixels: the columns to its
/// right, or to the left of the last one, share what that leaves in proportion. None of these becomes
/// narrower than its `least` width, unless it is so already; the column gets less where they need the room.
void fitColumn(std::span<double> weights, std::span<const int> widths, std::size_t column, int width,
               std::span<const int> least);

} // namespace grid
