// SPDX-License-Identifier: MIT

#include "grid/header/cell_text.h"
#include "grid/header/fitted_header.h"
#include "grid/rows/column.h"
#include "grid/view/row_view.h"

#include <QPainter>
#include <QPaintEvent>

namespace grid {

namespace {

constexpr QRgb gridLineColor = qRgb(192, 192, 192);

} // namespace

void RowView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setFont(font());
    // The disabled colours are left out: a view is only ever disabled while it is exported.
    painter.fillRect(event->rect(), palette().color(QPalette::Active, QPalette::Base));
    for (const ShownRow& shown : layout_.shownRows()) {
        if (event->region().intersects(QRect(0, shown.y, viewport()->width(), shown.height))) {
            drawRow(painter, shown, event->rect());
        }
    }
    if (rowCount() == 0) {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
        painter.drawText(viewport()->rect().adjusted(0, fontMetrics().height(), 0, 0),
                         Qt::AlignHCenter | Qt::AlignTop, emptyText());
    }
}

void RowView::drawRow(QPainter& painter, const ShownRow& shown, const QRect& exposed) const {
    const RowColors colors = rowColors(shown.row);
    if (colors.background.isValid()) {
        painter.fillRect(0, shown.y, viewport()->width(), shown.height, colors.background);
    }
    painter.fillRect(0, shown.y + shown.height - gridLine, viewport()->width(), gridLine,
                     QColor(gridLineColor));
    for (const int column : header_->visibleColumns()) {
        const QRect area = textRect(shown, column);
        if (area.left() > exposed.right() || area.right() + gridLine < exposed.left()) {
            continue;
        }
        painter.fillRect(area.right() + 1, shown.y, gridLine, shown.height, QColor(gridLineColor));
        painter.setPen(colors.text);
        drawCellText(painter, area, textOf(shown.row, column), header_->column(column).alignment(),
                     marksIn(shown.row, column), cellKind(column));
        if (hasFocus() && shown.row == currentRow() && column == currentIndex().column()) {
            painter.setPen(QPen(colors.text, 1, Qt::DotLine));
            // Along the middle of its pixels, so that no scale factor takes it beyond the cell that is
            // repainted.
            painter.drawRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5));
        }
    }
}

} // namespace grid
