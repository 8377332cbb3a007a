#include "grid/rows/column.h"
#include "grid/rows/tree_model.h"
#include "grid/tree/tree_header.h"
#include "grid/tree/tree_view.h"
#include "grid/view/cell_text.h"

#include <QPainter>
#include <QPaintEvent>

namespace grid {
namespace {

constexpr QRgb selectedColor = qRgb(220, 232, 248);
constexpr QRgb selectedInactiveColor = qRgb(234, 236, 240);

} // namespace

void TreeView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setFont(font());
    painter.fillRect(event->rect(), palette().color(QPalette::Base));
    for (const ShownRow& shown : layout_.shownRows()) {
        if (shown.y <= event->rect().bottom() && shown.y + shown.height > event->rect().top()) {
            drawRow(painter, shown);
        }
    }
    if (rows_.count() == 0 && model_.isSearching()) {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(viewport()->rect().adjusted(0, indent, 0, 0), Qt::AlignHCenter | Qt::AlignTop,
                         QStringLiteral("Ничего не найдено"));
    }
}

void TreeView::drawRow(QPainter& painter, const ShownRow& shown) const {
    if (isRowSelected(shown.row)) {
        painter.fillRect(0, shown.y, viewport()->width(), shown.height,
                         QColor(hasFocus() ? selectedColor : selectedInactiveColor));
    }
    painter.fillRect(0, shown.y + shown.height - gridLine, viewport()->width(), gridLine,
                     QColor(gridLineColor));
    for (const int column : header_->visibleColumns()) {
        drawCell(painter, shown, column);
    }
    if (rows_.hasChildren(rows_.at(shown.row).node)) {
        drawButton(painter, shown);
    }
}

void TreeView::drawCell(QPainter& painter, const ShownRow& shown, int column) const {
    const QRect cell = cellRect(shown, column);
    painter.fillRect(cell.right() + 1, shown.y, gridLine, shown.height, QColor(gridLineColor));

    const int node = rows_.at(shown.row).node;
    const bool isFocused = currentIndex() == model_.indexOf(node, column);
    const TreeModel::Range mark =
        isFocused && !typed_.isEmpty() ? TreeModel::Range{0, typed_.size()} : model_.match(node, column);
    painter.setPen(palette().color(QPalette::Text));
    cellText::draw(painter, textRect(shown, column), model_.text(node, column),
                   model_.column(column).alignment(), mark.start, mark.end);

    if (isFocused && hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DotLine));
        painter.drawRect(textRect(shown, column).adjusted(0, 0, -1, -1));
    }
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
