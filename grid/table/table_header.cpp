// SPDX-License-Identifier: MIT

#include "grid/table/table_header.h"

#include "grid/header/cell_text.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace grid {

namespace {

// Pixels.
constexpr int filterButtonSize = 15;
constexpr int sortMarkWidth = 11;
constexpr int sortNumberWidth = 8;
/// Leaves the edge free, where columns are dragged to another width.
constexpr int marksMargin = 5;

/// The filter button is the last of the marks.
QRect filterButtonRect(const QRect& marks) {
    return {marks.right() + 1 - marksMargin - filterButtonSize,
            marks.top() + (marks.height() - filterButtonSize) / 2, filterButtonSize, filterButtonSize};
}

} // namespace

TableHeader::TableHeader(TableModel& model, QWidget* parent)
    : FittedHeader(model, model.columns(), parent), model_(model) {
    viewport()->setMouseTracking(true);
    connect(this, &QHeaderView::sectionClicked, this, &TableHeader::toggleSort);
    connect(&model, &TableModel::arrangementChanged, viewport(), qOverload<>(&QWidget::update));
}

bool TableHeader::canSort(int column, std::optional<Qt::SortOrder> order) const {
    if (!order) {
        return !model_.sortColumns().empty();
    }
    return column >= 0 && model_.column(column).field() &&
           model_.sortColumns() != std::vector<SortColumn>{{column, *order == Qt::DescendingOrder}};
}

void TableHeader::sort(int column, std::optional<Qt::SortOrder> order) {
    if (canSort(column, order)) {
        model_.sortBy(order ? std::vector<SortColumn>{{column, *order == Qt::DescendingOrder}}
                            : std::vector<SortColumn>());
    }
}

void TableHeader::toggleSort(int column) {
    std::vector<SortColumn> sort = model_.sortColumns();
    const auto found = std::ranges::find(sort, column, &SortColumn::column);
    const Qt::KeyboardModifiers modifiers = QApplication::keyboardModifiers();
    // The first click sorts, the second turns the order round, the third takes it away; Shift leaves the
    // other columns, Ctrl takes away this one alone.
    const bool isAdded = modifiers & Qt::ShiftModifier;
    const bool isTakenAway = modifiers & Qt::ControlModifier;
    if (found == sort.end()) {
        if (!isTakenAway) {
            sort.push_back({column});
        }
    } else if (found->descending || isTakenAway) {
        sort.erase(found);
    } else {
        found->descending = true;
    }
    if (!isAdded && !isTakenAway) {
        std::erase_if(sort, [=](const SortColumn& each) { return each.column != column; });
    }
    model_.sortBy(std::move(sort));
}

bool TableHeader::isFiltered(int column) const {
    return model_.filters().contains(column);
}

bool TableHeader::showsFilterButton(int column) const {
    return isFiltered(column) || (column == hovered_ && model_.column(column).field());
}

int TableHeader::sortMarksWidth(int column) const {
    const auto& sort = model_.sortColumns();
    const bool isSorted = std::ranges::find(sort, column, &SortColumn::column) != sort.end();
    return isSorted ? sortMarkWidth + (sort.size() > 1 ? sortNumberWidth : 0) : 0;
}

int TableHeader::marksWidth(int column) const {
    return sortMarksWidth(column) + (showsFilterButton(column) ? filterButtonSize + marksMargin : 0);
}

int TableHeader::widestMarks(int column) const {
    return sortMarksWidth(column) + (model_.column(column).field() ? filterButtonSize + marksMargin : 0);
}

bool TableHeader::isOverFilterButton(const QPoint& position) const {
    const int column = logicalIndexAt(position);
    return column >= 0 && model_.column(column).field() &&
           filterButtonRect(partsOf(column, sectionRect(column), widestMarks(column)).marks)
               .contains(position);
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int column) const {
    painter->save();
    const Parts parts = partsOf(column, rect, marksWidth(column));
    drawSection(*painter, rect, column, parts.text, column == hovered_);
    drawSortMarks(*painter, parts.marks, column);
    if (showsFilterButton(column)) {
        drawFilterButton(*painter, filterButtonRect(parts.marks), column);
    }
    painter->restore();
}

void TableHeader::drawSortMarks(QPainter& painter, const QRect& area, int column) const {
    const auto& sort = model_.sortColumns();
    const auto found = std::ranges::find(sort, column, &SortColumn::column);
    if (found == sort.end()) {
        return;
    }
    const QPointF center(area.left() + sortMarkWidth / 2.0, area.center().y() + 0.5);
    drawSortMark(painter, center, found->descending);
    if (sort.size() > 1) {
        QFont small = font();
        small.setPixelSize(std::max(9, fontMetrics().height() * 3 / 5));
        painter.setFont(small);
        painter.setPen(palette().color(QPalette::Active, QPalette::ButtonText));
        painter.drawText(area.adjusted(sortMarkWidth - 1, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::number(found - sort.begin() + 1));
    }
}

void TableHeader::drawFilterButton(QPainter& painter, const QRect& button, int column) const {
    const bool inForce = isFiltered(column);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Mid), 0));
    painter.setBrush(palette().color(inForce ? QPalette::Highlight : QPalette::Base));
    painter.drawRoundedRect(QRectF(button).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    const QPointF center = QRectF(button).center();
    drawTriangle(painter, center, 2.5, palette().color(inForce ? QPalette::HighlightedText : QPalette::Text));
    if (inForce) {
        painter.drawRect(QRectF(center.x() - 1, center.y() - 1, 2, 5)); // the neck makes it a funnel
    }
}

void TableHeader::setHovered(int column) {
    if (column != hovered_) {
        hovered_ = column;
        viewport()->update();
    }
}

void TableHeader::followPointer() {
    const QPoint pointer = QCursor::pos();
    const bool isHere = QApplication::widgetAt(pointer) == viewport();
    setHovered(isHere ? logicalIndexAt(viewport()->mapFromGlobal(pointer)) : -1);
}

void TableHeader::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isOverFilterButton(event->pos())) {
        emit filterRequested(logicalIndexAt(event->pos()));
        return;
    }
    FittedHeader::mousePressEvent(event);
}

void TableHeader::mouseMoveEvent(QMouseEvent* event) {
    setHovered(event->buttons() == Qt::NoButton ? logicalIndexAt(event->pos()) : -1);
    FittedHeader::mouseMoveEvent(event);
}

bool TableHeader::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        setHovered(-1);
    }
    return FittedHeader::viewportEvent(event);
}

} // namespace grid
