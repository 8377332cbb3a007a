// SPDX-License-Identifier: MIT

#include "grid/view/row_layout.h"

#include <algorithm>
#include <cstdlib>

namespace grid {

namespace {

/// Heights kept at a time: some screens full of rows.
constexpr std::size_t heightLimit = 2048;

} // namespace

void RowLayout::reset(int rowCount) {
    rowCount_ = rowCount;
    heights_.clear();
    setTop(top_);
}

void RowLayout::extend(int rowCount) {
    rowCount_ = rowCount;
    shownRowsValid_ = false;
}

void RowLayout::setViewportHeight(int height) {
    if (height != viewportHeight_) {
        viewportHeight_ = height;
        setTop(top_);
    }
}

int RowLayout::rowHeight(int row) const {
    if (const auto known = heights_.find(row); known != heights_.end()) {
        return known->second;
    }
    if (heights_.size() >= heightLimit) {
        heights_.clear();
    }
    return heights_[row] = measure_(row);
}

const std::vector<ShownRow>& RowLayout::shownRows() const {
    if (!shownRowsValid_) {
        shownRowsValid_ = true;
        shownRows_.clear();
        int y = -top().offset;
        for (int row = top().row; row < rowCount_ && y < viewportHeight_; ++row) {
            shownRows_.push_back({row, y, rowHeight(row)});
            y += shownRows_.back().height;
        }
    }
    return shownRows_;
}

const ShownRow* RowLayout::shown(int row) const {
    const std::vector<ShownRow>& rows = shownRows();
    if (rows.empty() || row < rows.front().row || row > rows.back().row) {
        return nullptr;
    }
    return &rows[static_cast<std::size_t>(row - rows.front().row)];
}

int RowLayout::rowAt(int y) const {
    for (const ShownRow& shown : shownRows()) {
        if (y < shown.y + shown.height) {
            return shown.row;
        }
    }
    return -1;
}

ScrollPosition RowLayout::top() const {
    if (!topWithinRows_) {
        topWithinRows_ = true;
        top_ = std::clamp(top_, ScrollPosition(), lastPosition());
        const int hidable = rowCount_ > 0 ? std::max(0, rowHeight(top_.row) - viewportHeight_) : 0;
        top_.offset = std::min(top_.offset, hidable);
    }
    return top_;
}

void RowLayout::setTop(ScrollPosition position) {
    top_ = position;
    topWithinRows_ = false;
    shownRowsValid_ = false;
}

ScrollPosition RowLayout::lastPosition() const {
    return rowCount_ > 0 ? positionEndingWith(rowCount_ - 1) : ScrollPosition();
}

ScrollPosition RowLayout::positionEndingWith(int row) const {
    int used = rowHeight(row);
    if (used > viewportHeight_) {
        return {row, used - std::max(viewportHeight_, 1)};
    }
    while (row > 0 && used + rowHeight(row - 1) <= viewportHeight_) {
        used += rowHeight(--row);
    }
    return {row, 0};
}

ScrollPosition RowLayout::positionShowing(int row) const {
    if (row < top().row || (row == top().row && rowHeight(row) <= viewportHeight_)) {
        return {row, 0};
    }
    if (row == top().row) {
        return top();
    }
    const ShownRow* const onScreen = shown(row);
    if (onScreen && onScreen->y + onScreen->height <= viewportHeight_) {
        return top();
    }
    return rowHeight(row) > viewportHeight_ ? ScrollPosition{row, 0} : positionEndingWith(row);
}

ScrollPosition RowLayout::oneDown(ScrollPosition from) const {
    const int hidden = rowHeight(from.row) - from.offset - viewportHeight_;
    if (hidden > 0) {
        return {from.row, from.offset + std::min(hidden, std::max(1, viewportHeight_ / 4))};
    }
    return {from.row + 1, 0};
}

ScrollPosition RowLayout::oneUp(ScrollPosition from) const {
    if (from.offset > 0) {
        return {from.row, std::max(0, from.offset - std::max(1, viewportHeight_ / 4))};
    }
    return {from.row - 1, std::max(0, rowHeight(from.row - 1) - viewportHeight_)};
}

ScrollPosition RowLayout::moved(ScrollPosition from, int rows) const {
    const ScrollPosition last = lastPosition();
    const bool isDown = rows > 0;
    int left = viewportHeight_;
    for (int step = 0; step < std::abs(rows) && (isDown ? from < last : ScrollPosition() < from); ++step) {
        const ScrollPosition next = isDown ? oneDown(from) : oneUp(from);
        left -= isDown ? distance(from, next) : distance(next, from);
        if (left < 0 && step > 0) {
            break;
        }
        from = next;
    }
    return std::min(from, last);
}

/// From a position down to another one in the same row or the next.
int RowLayout::distance(ScrollPosition upper, ScrollPosition lower) const {
    const int start = lower.row == upper.row ? 0 : rowHeight(upper.row);
    return start + lower.offset - upper.offset;
}

int RowLayout::scrollValue() const {
    const ScrollPosition position = top();
    return position.row + (position.offset > 0 && position == lastPosition() ? 1 : 0);
}

int RowLayout::scrollMaximum() const {
    const ScrollPosition last = lastPosition();
    return last.row + (last.offset > 0 ? 1 : 0);
}

ScrollPosition RowLayout::positionAt(int value) const {
    const ScrollPosition last = lastPosition();
    return value > last.row ? last : ScrollPosition{value, 0};
}

int RowLayout::rowOnePageFrom(int row, bool down) const {
    const int step = down ? 1 : -1;
    const int end = down ? rowCount_ - 1 : 0;
    if (row == end) {
        return row;
    }
    int target = row;
    for (int used = rowHeight(row); target != end; target += step) {
        used += rowHeight(target + step);
        if (used > viewportHeight_) {
            break;
        }
    }
    return target == row ? row + step : target;
}

} // namespace grid
