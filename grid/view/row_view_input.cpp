// SPDX-License-Identifier: MIT

#include "grid/header/cut_text_tip.h"
#include "grid/header/fitted_header.h"
#include "grid/view/commands.h"
#include "grid/view/row_view.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>

namespace grid {

namespace {

/// Milliseconds between two rows while a selection is drawn beyond the edge of the view.
constexpr int dragScrollInterval = 50;

} // namespace

QModelIndex RowView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
    const int last = rowCount() - 1;
    const int current = currentRow();
    if (last < 0 || current < 0) {
        return last < 0 ? QModelIndex() : indexOf(0, focusColumn_);
    }
    const auto inRow = [&](int row) { return indexOf(std::clamp(row, 0, last), focusColumn_); };
    switch (action) {
    case MoveUp:
    case MovePrevious:
        return inRow(current - 1);
    case MoveDown:
    case MoveNext:
        return inRow(current + 1);
    case MoveLeft:
        return cellBeside(-1);
    case MoveRight:
        return cellBeside(1);
    case MoveHome:
        return inRow(0);
    case MoveEnd:
        return inRow(last);
    case MovePageUp:
        return inRow(layout_.rowOnePageFrom(current, false));
    case MovePageDown:
        return inRow(layout_.rowOnePageFrom(current, true));
    }
    return currentIndex();
}

/// The cell `step` columns to the right of the one in focus, or to the left; that one itself at the edge.
QModelIndex RowView::cellBeside(int step) const {
    const std::vector<int> columns = header_->visibleColumns();
    const auto place = std::ranges::find(columns, focusColumn_) - columns.begin() + step;
    const bool exists = place >= 0 && place < std::ssize(columns);
    return indexOf(currentRow(), exists ? columns[static_cast<std::size_t>(place)] : focusColumn_);
}

/// Shows more of the current row if it is taller than the viewport and goes on beyond its edge.
bool RowView::scrollWithinTallRow(CursorAction action) {
    const bool isPage = action == MovePageUp || action == MovePageDown;
    const bool isDown = action == MoveDown || action == MovePageDown;
    const ShownRow* const shown = layout_.shown(currentRow());
    const int height = viewport()->height();
    if (!shown || shown->height <= height || !(isPage || isDown || action == MoveUp)) {
        return false;
    }
    const int hidden = isDown ? shown->y + shown->height - height : -shown->y;
    if (hidden <= 0) {
        return false;
    }
    const int step = std::min(hidden, std::max(1, isPage ? height : height / 4));
    scrollToPosition({shown->row, std::max(0, -shown->y + (isDown ? step : -step))});
    return true;
}

bool RowView::handleCommandKey(const QKeyEvent& event) {
    const QKeyCombination pressed(event.modifiers() & ~Qt::KeypadModifier, static_cast<Qt::Key>(event.key()));
    if (const auto* const command = std::ranges::find(sortCommands, pressed, &SortCommand::key);
        command != sortCommands.end()) {
        header_->sort(focusColumn_, command->order);
    } else if (event.matches(QKeySequence::Copy)) {
        copySelection();
    } else if (pressed == copyCellKey) {
        copyCell();
    } else if (pressed == cellMenuKey) {
        openCellMenuByKey();
    } else if (event.key() == Qt::Key_Space) {
        toggleCurrentRow();
    } else {
        return false;
    }
    return true;
}

void RowView::keyPressEvent(QKeyEvent* event) {
    struct Move {
        int key;
        CursorAction action;
    };
    static constexpr Move moves[] = {
        {Qt::Key_Up, MoveUp},         {Qt::Key_Down, MoveDown},         {Qt::Key_Left, MoveLeft},
        {Qt::Key_Right, MoveRight},   {Qt::Key_Home, MoveHome},         {Qt::Key_End, MoveEnd},
        {Qt::Key_PageUp, MovePageUp}, {Qt::Key_PageDown, MovePageDown},
    };
    if (handleCommandKey(*event)) {
        return;
    }
    if (const auto* const move = std::ranges::find(moves, event->key(), &Move::key);
        move == std::end(moves)) {
        QAbstractItemView::keyPressEvent(event);
    } else if (rowCount() > 0 && !scrollWithinTallRow(move->action)) {
        // Control leaves the selection at a single step; whoever jumps wants to be where he jumps to.
        const bool isStep = move->action == MoveUp || move->action == MoveDown;
        makeCurrent(moveCursor(move->action, event->modifiers()),
                    event->modifiers() & (isStep ? Qt::ControlModifier | Qt::ShiftModifier
                                                 : Qt::KeyboardModifiers(Qt::ShiftModifier)));
    }
}

void RowView::keyboardSearch(const QString&) {}

void RowView::toggleCurrentRow() {
    if (currentIndex().isValid()) {
        selectionModel()->select(currentIndex(), QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    }
}

void RowView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) {
        return;
    }
    makeCurrent(index, event->modifiers());
    const auto control = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    dragging_ = control != Qt::ControlModifier;
    if (!dragging_) {
        toggleCurrentRow();
    }
}

void RowView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) {
        return;
    }
    const int y = event->position().toPoint().y();
    if (y >= 0 && y < viewport()->height()) {
        dragScroll_.stop();
        dragTo(y);
    } else if (!dragScroll_.isActive()) {
        dragScroll_.start(dragScrollInterval, this);
    }
}

void RowView::mouseReleaseEvent(QMouseEvent*) {
    dragging_ = false;
    dragScroll_.stop();
}

void RowView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == dragScroll_.timerId()) {
        dragTo(viewport()->mapFromGlobal(QCursor::pos()).y());
    } else {
        QAbstractItemView::timerEvent(event);
    }
}

void RowView::dragTo(int y) {
    if (const int row = rowNear(y); row != currentRow()) {
        makeCurrent(indexOf(row, focusColumn_), Qt::ShiftModifier);
    }
}

/// The row at `y`, which may lie beyond the rows: the next one on that side, or the last one; -1 when there
/// are none.
int RowView::rowNear(int y) const {
    const std::vector<ShownRow>& shown = layout_.shownRows();
    if (shown.empty()) {
        return -1;
    }
    if (y < 0) {
        return std::max(0, shown.front().row - 1);
    }
    const int row = y < viewport()->height() ? layout_.rowAt(y) : shown.back().row + 1;
    return row < 0 ? shown.back().row : std::min(row, rowCount() - 1);
}

void RowView::wheelEvent(QWheelEvent* event) {
    constexpr int notch = 120;
    wheelRest_ += event->angleDelta().y() * QApplication::wheelScrollLines();
    const int rows = wheelRest_ / notch;
    wheelRest_ -= rows * notch;
    if (rows != 0) {
        scrollToPosition(layout_.moved(layout_.top(), -rows));
    }
    event->accept();
}

bool RowView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QAbstractItemView::viewportEvent(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QModelIndex index = indexAt(help.pos());
    const ShownRow* const shown = layout_.shown(rowOf(index));
    showCutTextTip(help, *viewport(), shown ? textRect(*shown, index.column()) : QRect(),
                   shown ? textOf(shown->row, index.column()) : QString(),
                   shown ? cellKind(index.column()) : CellKind::Text);
    return true;
}

} // namespace grid
