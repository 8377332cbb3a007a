// SPDX-License-Identifier: MIT

#include "grid/tree/tree_header.h"

#include "grid/rows/column.h"
#include "grid/rows/tree_model.h"

#include <QPainter>

namespace grid {

namespace {

constexpr int sortMarkWidth = 16; // pixels, with the room around it

} // namespace

TreeHeader::TreeHeader(TreeModel& model, QWidget* parent)
    : FittedHeader(model, model.columns(), parent), model_(model) {
    connect(this, &QHeaderView::sectionClicked, this, &TreeHeader::toggleSort);
}

int TreeHeader::marksWidth(int column) const {
    return model_.sortColumn() == column ? sortMarkWidth : 0;
}

void TreeHeader::toggleSort(int column) {
    // The first click sorts, the second turns the order round, the third takes it away.
    const bool isSorted = model_.sortColumn() == column;
    if (isSorted && model_.isDescending()) {
        sort(column, std::nullopt);
    } else {
        sort(column, isSorted ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

bool TreeHeader::canSort(int column, std::optional<Qt::SortOrder> order) const {
    if (!order) {
        return model_.sortColumn().has_value();
    }
    const bool isSoAlready =
        model_.sortColumn() == column && model_.isDescending() == (*order == Qt::DescendingOrder);
    return column >= 0 && model_.column(column).field() && !isSoAlready;
}

void TreeHeader::sort(int column, std::optional<Qt::SortOrder> order) {
    if (canSort(column, order)) {
        model_.sort(order ? column : -1, order.value_or(Qt::AscendingOrder));
        viewport()->update();
    }
}

void TreeHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    painter->save();
    const auto [text, marks] = partsOf(logicalIndex, rect, marksWidth(logicalIndex));
    drawSection(*painter, rect, logicalIndex, text, false);
    if (model_.sortColumn() == logicalIndex) {
        drawSortMark(*painter, QRectF(marks).center(), model_.isDescending());
    }
    painter->restore();
}

} // namespace grid
