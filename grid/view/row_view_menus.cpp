// SPDX-License-Identifier: MIT

#include "grid/header/fitted_header.h"
#include "grid/rows/column.h"
#include "grid/view/commands.h"
#include "grid/view/menu.h"
#include "grid/view/row_view.h"

#include <QContextMenuEvent>
#include <QMenu>

#include <algorithm>

namespace grid {

void RowView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) {
        openCellMenuByKey();
        return;
    }
    const QModelIndex cell = indexAt(event->pos());
    if (cell.isValid()) {
        makeCurrent(cell, isRowSelected(rowOf(cell)) ? Qt::ControlModifier : Qt::NoModifier);
    }
    makeCellMenu(cell).popup(event->globalPos());
}

void RowView::openCellMenuByKey() {
    const QModelIndex cell = currentIndex();
    if (cell.isValid()) {
        scrollTo(cell);
    }
    // A row may be taller than the view.
    const QRect area = visualRect(cell).intersected(viewport()->rect());
    QMenu& menu = makeCellMenu(cell);
    menu.popup(viewport()->mapToGlobal(area.isEmpty() ? QPoint() : area.bottomLeft()));
    menu.setActiveAction(menu.actions().front());
}

/// A menu that deletes itself when it closes.
QMenu& RowView::makeMenu(const QString& name) {
    auto* const menu = new QMenu(this);
    menu->setObjectName(name);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setFont(font()); // windows do not inherit it
    return *menu;
}

QMenu& RowView::makeCellMenu(const QModelIndex& cell) {
    QMenu& menu = makeMenu(QStringLiteral("CellMenu"));
    menu.setAccessibleName(QStringLiteral("Меню строки"));
    const bool isCell = cell.isValid();
    const bool hasRows = selectionModel()->hasSelection() || currentRow() >= 0;
    addEntry(menu, QStringLiteral("Копировать ячейку"), copyCellKey, isCell, [this] { copyCell(); });
    addEntry(menu, QStringLiteral("Копировать строки"), QKeySequence::Copy, hasRows,
             [this] { copySelection(); });
    addEntry(menu, QStringLiteral("Копировать с заголовками"), {}, hasRows, [this] { copySelection(true); });
    menu.addSeparator();
    addCellEntries(menu, cell);
    menu.addSeparator();
    addEntry(menu, QStringLiteral("Найти…"), QKeySequence::Find, true, [this] { emit findRequested(); });
    menu.addSeparator();
    // The header has no focus: this is the keyboard's way to it.
    const int column = isCell ? cell.column() : focusColumn_;
    QMenu& columnMenu =
        *menu.addMenu(QStringLiteral("Столбец ") + quotedForMenu(header_->column(column).headerText()));
    columnMenu.setFont(font());
    fillColumnMenu(columnMenu, column);
    return menu;
}

void RowView::openColumnMenu(int column, const QPoint& place) {
    // The keys that the menu shows are for the column in focus.
    if (column >= 0) {
        moveFocusTo(column);
    }
    QMenu& menu = makeMenu(QStringLiteral("ColumnMenu"));
    menu.setAccessibleName(QStringLiteral("Меню столбца"));
    fillColumnMenu(menu, column);
    menu.popup(place);
}

void RowView::fillColumnMenu(QMenu& menu, int column) {
    for (const SortCommand& command : sortCommands) {
        addEntry(menu, command.text.toString(), command.key, header_->canSort(column, command.order),
                 [=, this] { header_->sort(column, command.order); });
    }
    menu.addSeparator();
    addColumnEntries(menu, column);
    menu.addSeparator();
    addEntry(menu, QStringLiteral("Ширина по содержимому"), {}, column >= 0,
             [=, this] { fitColumn(column); });
    addEntry(menu, QStringLiteral("Скрыть столбец"), {}, header_->canHide(column),
             [=, this] { header_->setColumnHidden(column, true); });
    addHiddenColumns(menu);
    addEntry(menu, QStringLiteral("Исходный вид"), {}, !header_->hasInitialLayout(),
             [this] { header_->restoreInitialLayout(); });
}

void RowView::addHiddenColumns(QMenu& menu) {
    const std::vector<int> hidden = header_->hiddenByUser();
    QMenu& columns = *menu.addMenu(QStringLiteral("Показать столбец"));
    columns.setFont(font());
    columns.setEnabled(!hidden.empty());
    for (const int column : hidden) {
        addEntry(columns, plainForMenu(header_->column(column).headerText()), {}, true,
                 [=, this] { header_->setColumnHidden(column, false); });
    }
}

/// The focus goes on to the next visible column, or to the one before.
void RowView::leaveHiddenColumn() {
    if (!header_->isSectionHidden(focusColumn_)) {
        return;
    }
    const std::vector<int> columns = header_->visibleColumns();
    const auto next = std::ranges::find_if(columns, [this](int column) {
        return header_->visualIndex(column) > header_->visualIndex(focusColumn_);
    });
    moveFocusTo(next == columns.end() ? columns.back() : *next);
}

/// Another column, in the same row.
void RowView::moveFocusTo(int column) {
    focusColumn_ = column;
    if (currentIndex().isValid()) {
        makeCurrent(indexOf(currentRow(), focusColumn_), Qt::ControlModifier);
    }
}

} // namespace grid
