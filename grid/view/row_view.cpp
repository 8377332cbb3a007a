// SPDX-License-Identifier: MIT

#include "grid/view/row_view.h"

#include "db/data_set.h"
#include "db/field.h"
#include "grid/header/cell_text.h"
#include "grid/header/fitted_header.h"
#include "grid/rows/column.h"
#include "grid/rows/long_values.h"

#include <QAccessible>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace grid {

RowView::RowView(QWidget* parent)
    : QAbstractItemView(parent), layout_([this](int row) { return measureRow(row); }) {
    setFrameShape(NoFrame);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void RowView::assemble(QAbstractItemModel& model, FittedHeader& header, QWidget* footer,
                       db::DataSet& dataSet) {
    header_ = &header;
    footer_ = footer;
    dataSet_ = &dataSet;
    focusColumn_ = header.visibleColumns().front();
    setModel(&model);
    connect(header_, &FittedHeader::layoutChanged, this, &RowView::rowsChanged);
    connect(header_, &FittedHeader::hiddenColumnsChanged, this, &RowView::leaveHiddenColumn);
    connect(header_, &FittedHeader::menuRequested, this, &RowView::openColumnMenu);
    connect(header_, &FittedHeader::sectionHandleDoubleClicked, this, &RowView::fitColumn);
    connect(&model, &QAbstractItemModel::modelAboutToBeReset, this, [this] { replacingRows_ = true; });
    // After setModel(), so that rows and selection have been reset before.
    connect(&model, &QAbstractItemModel::modelReset, this, [this] {
        replacingRows_ = false;
        followDataSet();
    });
    connect(dataSet_, &db::DataSet::currentRowChanged, this, &RowView::followDataSet);
    followDataSet();
}

bool RowView::isRowSelected(int row) const {
    return selectionModel()->isSelected(indexOf(row, focusColumn_));
}

std::vector<int> RowView::selectedRows() const {
    // Asking the selection row by row would go through all its ranges each time.
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int place = range.top(); place <= range.bottom(); ++place) {
            if (const int row = rowOf(model()->index(place, 0, range.parent())); row >= 0) {
                rows.push_back(row);
            }
        }
    }
    std::ranges::sort(rows);
    return rows;
}

void RowView::reset() {
    QAbstractItemView::reset();
    rowsChanged();
}

void RowView::rowsChanged() {
    layout_.reset(rowCount());
    // At once: a layout that is left for later comes with the painting and asks for another one.
    doItemsLayout();
}

void RowView::rowsInserted(const QModelIndex& parent, int first, int last) {
    QAbstractItemView::rowsInserted(parent, first, last);
    layout_.extend(rowCount());
    isStale_ = isStale_ || !isVisible();
    if (!isStale_) {
        verticalScrollBar()->setRange(0, layout_.scrollMaximum());
    }
}

int RowView::indentation(int, int) const {
    return 0;
}

CellKind RowView::cellKind(int column) const {
    const db::Field* const field = header_->column(column).field();
    return field && field->isNumber() ? CellKind::Number : CellKind::Text;
}

int RowView::fullIndentation(int, int) const {
    return 0;
}

int RowView::fittingWidth(int row, int column) const {
    return fullIndentation(row, column) + cellTextWidth(textOf(row, column), font());
}

void RowView::fitColumn(int column) {
    if (!isVisible()) {
        return;
    }
    std::vector<std::int32_t> rows(static_cast<std::size_t>(rowCount()));
    for (int row = 0; row < rowCount(); ++row) {
        rows[static_cast<std::size_t>(row)] = dataSetRow(row);
    }
    // Names can wrap where another column takes the room; numbers and codes would be lost or in pieces.
    constexpr int codeLength = 14; // characters
    const int longestCode = codeLength * fontMetrics().averageCharWidth();
    const auto leastWidth = [&](int other) {
        const int widest = widestCell(other, rows);
        return cellKind(other) == CellKind::Number ? widest : std::min(widest, longestCode);
    };
    header_->fitColumn(column, widestCell(column, rows), leastWidth);
}

/// The width in which no text of a column breaks; `rows` are the dataset's rows, as they stand in the view.
int RowView::widestCell(int column, const std::vector<std::int32_t>& rows) const {
    const db::Field* const field = header_->column(column).field();
    if (!field || rows.empty()) {
        return 0;
    }
    std::vector<std::int32_t> leading;
    if (fullIndentation(0, column) > 0) {
        for (int row = 0; row < rowCount(); ++row) {
            leading.push_back(fullIndentation(row, column) / fontMetrics().averageCharWidth());
        }
    }
    // To measure a million texts takes seconds. The widest is among those with the most characters, unless
    // hundreds of longer ones consist of narrow letters; digits are all of one width.
    const std::size_t measured = field->isNumber() ? 20 : 300;
    int widest = 0;
    for (const int row : placesOfLongValues(dataSet_->rows(), *field, rows, leading, measured)) {
        widest = std::max(widest, fittingWidth(row, column));
    }
    return widest + gridLine;
}

int RowView::measureRow(int row) const {
    int height = cellTextHeight(QString(), 1, font());
    for (const int index : header_->visibleColumns()) {
        if (header_->column(index).field() && cellKind(index) == CellKind::Text) {
            const int width = header_->sectionSize(index) - gridLine - indentation(row, index);
            height = std::max(height, cellTextHeight(textOf(row, index), width, font()));
        }
    }
    return height + gridLine;
}

void RowView::updateGeometries() {
    if (arranging_ || !header_) {
        return;
    }
    isStale_ = !isVisible();
    if (isStale_) {
        return;
    }
    const QScopedValueRollback guard(arranging_, true);
    // The scroll bar's coming narrows the columns, which heightens header and rows; its going does the
    // reverse.
    int width = -1;
    for (int pass = 0; pass < 3 && viewport()->width() != width; ++pass) {
        width = viewport()->width();
        arrangeFor(width);
    }
}

void RowView::arrangeFor(int width) {
    header_->fitWidth(width);
    const int headerHeight = header_->fittedHeight();
    const int footerHeight = footer_ ? footer_->sizeHint().height() : 0;
    setViewportMargins(0, headerHeight, 0, footerHeight);
    const QRect area = viewport()->geometry();
    header_->setGeometry(area.left(), area.top() - headerHeight, width, headerHeight);
    if (footer_) {
        footer_->setGeometry(area.left(), area.bottom() + 1, width, footerHeight);
    }
    layout_.setViewportHeight(area.height());

    QScrollBar& bar = *verticalScrollBar();
    bar.setSingleStep(1);
    bar.setPageStep(std::max(1, static_cast<int>(layout_.shownRows().size()) - 1));
    bar.setRange(0, layout_.scrollMaximum());
    bar.setValue(layout_.scrollValue());
    // By itself the scroll bar would come or go only later.
    setViewportMargins(viewportMargins());
}

void RowView::changeEvent(QEvent* event) {
    QAbstractItemView::changeEvent(event);
    if (header_ && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)) {
        rowsChanged();
    }
}

void RowView::showEvent(QShowEvent* event) {
    QAbstractItemView::showEvent(event);
    if (isStale_) {
        updateGeometries();
    }
    if (scrollOnShow_) {
        const auto [index, hint] = *std::exchange(scrollOnShow_, std::nullopt);
        scrollTo(index, hint);
    }
}

void RowView::scrollContentsBy(int, int) {
    const int value = verticalScrollBar()->value();
    if (!arranging_ && value != layout_.scrollValue()) {
        scrollToPosition(layout_.positionAt(value));
    }
}

void RowView::scrollToPosition(ScrollPosition position) {
    if (!isVisible()) {
        layout_.setTop(position);
        return;
    }
    const std::vector<ShownRow> before = layout_.shownRows();
    layout_.setTop(position);
    const auto stillShown =
        std::ranges::find_if(before, [this](const ShownRow& shown) { return layout_.shown(shown.row); });
    if (stillShown == before.end()) {
        viewport()->update();
    } else if (const int shift = layout_.shown(stillShown->row)->y - stillShown->y; shift != 0) {
        viewport()->scroll(0, shift);
    }
    verticalScrollBar()->setValue(layout_.scrollValue());
}

void RowView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!isVisible()) {
        scrollOnShow_.emplace(index, hint);
        return;
    }
    if (isStale_) {
        updateGeometries(); // on the way to being shown
    }
    const int row = rowOf(index);
    if (row < 0) {
        return;
    }
    switch (hint) {
    case EnsureVisible:
        scrollToPosition(layout_.positionShowing(row));
        break;
    case PositionAtTop:
        scrollToPosition({row, 0});
        break;
    case PositionAtBottom:
        scrollToPosition(layout_.positionEndingWith(row));
        break;
    case PositionAtCenter:
        scrollToPosition({(layout_.positionEndingWith(row).row + row) / 2, 0});
        break;
    }
}

QRect RowView::rowRect(int row) const {
    const ShownRow* const shown = layout_.shown(row);
    return shown ? QRect(0, shown->y, viewport()->width(), shown->height) : QRect();
}

QRect RowView::visualRect(const QModelIndex& index) const {
    const ShownRow* const shown = layout_.shown(rowOf(index));
    if (!shown || header_->isSectionHidden(index.column())) {
        return {};
    }
    return {header_->sectionViewportPosition(index.column()), shown->y, header_->sectionSize(index.column()),
            shown->height};
}

QRect RowView::textRect(const ShownRow& shown, int column) const {
    const int indented = indentation(shown.row, column);
    return {header_->sectionViewportPosition(column) + indented, shown.y,
            header_->sectionSize(column) - indented - gridLine, shown.height - gridLine};
}

QModelIndex RowView::indexAt(const QPoint& point) const {
    const int row = point.y() < 0 ? -1 : layout_.rowAt(point.y());
    const int column = header_->logicalIndexAt(point.x());
    return row < 0 || column < 0 ? QModelIndex() : indexOf(row, column);
}

bool RowView::isIndexHidden(const QModelIndex& index) const {
    return rowOf(index) < 0 || header_->isSectionHidden(index.column());
}

void RowView::followDataSet() {
    // Another view may move the dataset on before this one's rows are there; its own moves this one knows.
    if (replacingRows_ || movingTogether_) {
        return;
    }
    const QScopedValueRollback guard(movingTogether_, true);
    const int row = bringIn(dataSet_->currentRow());
    if (row != currentRow()) {
        makeCurrent(row < 0 ? QModelIndex() : indexOf(row, focusColumn_), Qt::NoModifier);
    }
}

void RowView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QAbstractItemView::currentChanged(current, previous);
    if (isVisible()) {
        viewport()->update(rowRect(rowOf(previous)));
        viewport()->update(rowRect(rowOf(current)));
    } else {
        scrollTo(current);
    }
    if (!current.isValid()) {
        return;
    }
    focusColumn_ = current.column();
    if (!movingTogether_) {
        const QScopedValueRollback guard(movingTogether_, true);
        dataSet_->moveTo(dataSetRow(rowOf(current)));
    }
    reportFocus();
}

void RowView::reportFocus() {
    // Assistive technology would ask at once for what it is told of, and is not answered while rows come.
    if (!QAccessible::isActive() || !hasFocus() || !dataSet_->isOpen()) {
        return;
    }
    QAccessibleInterface* const view = QAccessible::queryAccessibleInterface(this);
    if (QAccessibleInterface* const focused = view ? view->focusChild() : nullptr) {
        QAccessibleEvent event(focused, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void RowView::goToFirstRow() {
    if (rowCount() > 0) {
        makeCurrent(indexOf(0, focusColumn_), Qt::NoModifier);
        scrollTo(currentIndex(), PositionAtTop);
    }
}

void RowView::makeCurrent(const QModelIndex& index, Qt::KeyboardModifiers modifiers) {
    if (!(modifiers & Qt::ShiftModifier)) {
        anchor_ = index;
        selectionModel()->setCurrentIndex(
            index, modifiers & Qt::ControlModifier
                       ? QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate)
                       : QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        return;
    }
    if (rowOf(anchor_) < 0) {
        anchor_ = currentRow() < 0 ? index : currentIndex();
    }
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    const auto [first, last] = std::minmax({rowOf(anchor_), rowOf(index)});
    selectionModel()->select(selectionOf(first, last), QItemSelectionModel::ClearAndSelect);
}

void RowView::selectAll() {
    if (rowCount() > 0) {
        selectionModel()->select(selectionOf(0, rowCount() - 1), QItemSelectionModel::ClearAndSelect);
    }
}

void RowView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
    if (rowCount() > 0) {
        const QRect area = rect.normalized();
        selectionModel()->select(selectionOf(rowNear(area.top()), rowNear(area.bottom())), command);
    }
}

QRegion RowView::visualRegionForSelection(const QItemSelection& selection) const {
    QRegion region;
    for (const ShownRow& shown : layout_.shownRows()) {
        const QModelIndex index = indexOf(shown.row, focusColumn_);
        if (std::ranges::any_of(selection, [&](const auto& range) { return range.contains(index); })) {
            region += rowRect(shown.row);
        }
    }
    return region;
}

} // namespace grid
