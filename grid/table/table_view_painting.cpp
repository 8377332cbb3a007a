#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/table_header.h"
#include "grid/table/table_view.h"
#include "grid/view/cell_text.h"

#include <QPainter>
#include <QPaintEvent>

namespace grid {
namespace {

QColor mixed(const QColor& first, const QColor& second, double share) {
    const auto mix = [share](int one, int other) { return qRound(one * share + other * (1 - share)); };
    return {mix(first.red(), second.red()), mix(first.green(), second.green()),
            mix(first.blue(), second.blue())};
}

} // namespace

void TableView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setFont(font());
    painter.fillRect(event->rect(), palette().color(QPalette::Active, QPalette::Base));
    for (const ShownRow& shown : layout_.shownRows()) {
        if (event->region().intersects(QRect(0, shown.y, viewport()->width(), shown.height))) {
            drawRow(painter, shown, event->rect());
        }
    }
}

void TableView::drawRow(QPainter& painter, const ShownRow& shown, const QRect& exposed) const {
    // The disabled colours are left out: a grid is only ever disabled while it is exported.
    const QColor base = palette().color(QPalette::Active, QPalette::Base);
    const QColor highlight = palette().color(QPalette::Active, QPalette::Highlight);
    const bool isCurrent = shown.row == currentIndex().row();
    const bool isSelected = selectionModel()->isRowSelected(shown.row);
    const QRect row(0, shown.y, viewport()->width(), shown.height);
    QColor text = palette().color(QPalette::Active, QPalette::Text);
    if (isSelected && hasFocus()) {
        painter.fillRect(row, highlight);
        text = palette().color(QPalette::Active, QPalette::HighlightedText);
    } else if (isSelected || isCurrent) {
        painter.fillRect(row, mixed(highlight, base, 0.25));
    }

    const QPen linePen(QColor(gridLineColor), 0);
    for (const int column : header_->visibleColumns()) {
        const QRect cell(header_->sectionViewportPosition(column), shown.y, header_->sectionSize(column),
                         shown.height);
        if (!cell.intersects(exposed)) {
            continue;
        }
        painter.setPen(text);
        drawCell(painter, cell, shown.row, column);
        painter.setPen(linePen);
        painter.drawLine(cell.topRight(), cell.bottomRight());
        if (isCurrent && column == currentIndex().column() && hasFocus()) {
            painter.setPen(QPen(text, 1, Qt::DotLine));
            painter.drawRect(cell.adjusted(0, 0, -2, -2));
        }
    }
    painter.setPen(linePen);
    painter.drawLine(row.bottomLeft(), row.bottomRight());
}

void TableView::drawCell(QPainter& painter, const QRect& cell, int row, int columnIndex) const {
    const Column& column = tableModel_->column(columnIndex);
    if (!column.field()) {
        return;
    }
    std::optional<qsizetype> mark;
    if (marked_) {
        mark = marked_->findIn(tableModel_->dataSet(), tableModel_->dataSetRow(row), *column.field());
    }
    const qsizetype markEnd = mark ? *mark + marked_->length() : 0;
    cellText::draw(painter, cell, tableModel_->text(row, columnIndex), column.alignment(), mark.value_or(0),
                   markEnd);
}

} // namespace grid
