// SPDX-License-Identifier: MIT

#include "grid/header/cell_text.h"
#include "grid/tree/tree_view.h"

#include <QPainter>

namespace grid {

namespace {

constexpr QRgb selectedColor = qRgb(220, 232, 248);
constexpr QRgb selectedInactiveColor = qRgb(234, 236, 240);

} // namespace

RowView::RowColors TreeView::rowColors(int row) const {
    const QColor background = hasFocus() ? selectedColor : selectedInactiveColor;
    return {isRowSelected(row) ? background : QColor(), palette().color(QPalette::Active, QPalette::Text)};
}

std::vector<TextRange> TreeView::marksIn(int row, int column) const {
    const bool isTypedHere = !typed_.isEmpty() && row == currentRow() && column == focusColumn();
    return isTypedHere ? std::vector<TextRange>{{0, typed_.size()}}
                       : model_.marks(rows_.at(row).node, column);
}

QString TreeView::emptyText() const {
    return model_.isSearching() ? QStringLiteral("Ничего не найдено") : QString();
}

void TreeView::drawRow(QPainter& painter, const ShownRow& shown, const QRect& exposed) const {
    RowView::drawRow(painter, shown, exposed);
    if (rows_.hasChildren(rows_.at(shown.row).node)) {
        drawButton(painter, shown);
    }
}

QRect TreeView::buttonRect(const ShownRow& shown) const {
    const int lineHeight = fontMetrics().height() + 2 * cellTextPaddingY;
    const int left = textRect(shown, treeColumn()).left() - indent;
    return {left + (indent - buttonSize) / 2 + 2, shown.y + (lineHeight - buttonSize) / 2, buttonSize,
            buttonSize};
}

void TreeView::drawButton(QPainter& painter, const ShownRow& shown) const {
    const QRect box = buttonRect(shown);
    const QColor line = palette().color(QPalette::Dark);
    const QColor sign = palette().color(QPalette::Text);
    const int middle = buttonSize / 2;
    constexpr int gap = 2;
    painter.fillRect(box, line);
    painter.fillRect(box.adjusted(1, 1, -1, -1), palette().color(QPalette::Base));
    painter.fillRect(box.left() + gap, box.top() + middle, buttonSize - 2 * gap, 1, sign);
    if (!rows_.isExpanded(rows_.at(shown.row).node)) {
        painter.fillRect(box.left() + middle, box.top() + gap, 1, buttonSize - 2 * gap, sign);
    }
}

} // namespace grid
