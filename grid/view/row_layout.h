// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <unordered_map>
#include <vector>

namespace grid {

/// A place to scroll to: the top row and how many of its pixels lie above the viewport.
struct ScrollPosition {
    int row = 0;
    int offset = 0;
    bool operator==(const ScrollPosition&) const = default;
    bool operator<(const ScrollPosition& other) const {
        return row != other.row ? row < other.row : offset < other.offset;
    }
};

/// A row on screen; `y` is its upper edge in the viewport.
struct ShownRow {
    int row;
    int y;
    int height;
};

/// Where rows of different heights stand in a viewport. Rows are measured when somebody asks for a place, and
/// laid out downwards from the top row, so that the number of rows costs nothing. All lengths are pixels.
class RowLayout final {
public:
    /// `measure` returns the height of a row, above 0.
    explicit RowLayout(std::function<int(int row)> measure) : measure_(std::move(measure)) {}

    /// Forgets all heights: other rows, widths or fonts. The top row stays as far as there are rows.
    void reset(int rowCount);
    /// More rows follow those that there have been.
    void extend(int rowCount);
    /// Fits the rows into a viewport of another height.
    void setViewportHeight(int height);

    /// The height of a row, measured or remembered.
    [[nodiscard]] int rowHeight(int row) const;
    /// The rows on screen from top to bottom, also those that are partly visible.
    [[nodiscard]] const std::vector<ShownRow>& shownRows() const;
    /// The row if it is on screen, or null.
    [[nodiscard]] const ShownRow* shown(int row) const;
    /// The row at `y`, -1 below the last one.
    [[nodiscard]] int rowAt(int y) const;

    /// The position scrolled to.
    [[nodiscard]] ScrollPosition top() const;
    /// Scrolls, though not beyond the last position.
    void setTop(ScrollPosition position);

    /// The position that shows the whole of the last row at the bottom.
    [[nodiscard]] ScrollPosition lastPosition() const;
    /// The position that shows the end of `row` at the bottom; its beginning lies above when it is too tall.
    [[nodiscard]] ScrollPosition positionEndingWith(int row) const;
    /// The nearest position that shows `row`, from its beginning when it is too tall.
    [[nodiscard]] ScrollPosition positionShowing(int row) const;
    /// The position `rows` further down, or up when negative, though no further than what was in view leaves
    /// it; rows that are taller than the viewport are gone through piece by piece.
    [[nodiscard]] ScrollPosition moved(ScrollPosition from, int rows) const;

    /// The place of the top row on a scroll bar that counts rows from 0. A last row that is taller than the
    /// viewport has a value of its own for its end.
    [[nodiscard]] int scrollValue() const;
    /// The highest such value.
    [[nodiscard]] int scrollMaximum() const;
    /// The position that stands at `value` of the scroll bar.
    [[nodiscard]] ScrollPosition positionAt(int value) const;

    /// The farthest row below or above that fits on screen together with `row`; at least its neighbour.
    [[nodiscard]] int rowOnePageFrom(int row, bool down) const;

private:
    [[nodiscard]] ScrollPosition oneDown(ScrollPosition from) const;
    [[nodiscard]] ScrollPosition oneUp(ScrollPosition from) const;
    [[nodiscard]] int distance(ScrollPosition upper, ScrollPosition lower) const;

    std::function<int(int row)> measure_;
    int rowCount_ = 0;
    int viewportHeight_ = 0;
    mutable ScrollPosition top_;
    mutable bool topWithinRows_ = false;
    mutable std::unordered_map<int, int> heights_;
    mutable std::vector<ShownRow> shownRows_;
    mutable bool shownRowsValid_ = false;
};

} // namespace grid
