#include "grid/rows/table_model.h"
#include "grid/table/table_header.h"
#include "grid/table/table_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>

namespace grid {

QModelIndex TableView::neighbour(const QModelIndex& index, int columnStep) const {
    const int last = header_->count() - 1;
    int visual = header_->visualIndex(index.column()) + columnStep;
    while (visual >= 0 && visual <= last && header_->isSectionHidden(header_->logicalIndex(visual))) {
        visual += columnStep;
    }
    return visual < 0 || visual > last ? index : index.siblingAtColumn(header_->logicalIndex(visual));
}

QModelIndex TableView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
    const int lastRow = tableModel_->rowCount() - 1;
    const QModelIndex current = currentIndex();
    if (!current.isValid()) {
        return tableModel_->index(lastRow < 0 ? -1 : 0, startColumn());
    }
    const auto toRow = [&](int row) { return current.siblingAtRow(std::clamp(row, 0, lastRow)); };
    switch (action) {
    case MoveUp:
    case MovePrevious:
        return toRow(current.row() - 1);
    case MoveDown:
    case MoveNext:
        return toRow(current.row() + 1);
    case MoveLeft:
        return neighbour(current, -1);
    case MoveRight:
        return neighbour(current, 1);
    case MoveHome:
        return toRow(0);
    case MoveEnd:
        return toRow(lastRow);
    case MovePageUp:
        return toRow(layout_.rowOnePageFrom(current.row(), false));
    case MovePageDown:
        return toRow(layout_.rowOnePageFrom(current.row(), true));
    }
    return current;
}

/// Shows more of a row that is taller than the viewport; false when its end on that side is in view already.
bool TableView::scrollWithin(int row, bool down, int pixels) {
    const ShownRow* const shown = layout_.shown(row);
    if (!shown || shown->height <= viewport()->height()) {
        return false;
    }
    const int hidden = down ? shown->y + shown->height - viewport()->height() : -shown->y;
    if (hidden <= 0) {
        return false;
    }
    const int step = std::min(hidden, pixels);
    scrollToPosition({row, std::max(0, -shown->y + (down ? step : -step))});
    return true;
}

void TableView::keyPressEvent(QKeyEvent* event) {
    struct Move {
        int key;
        CursorAction action;
    };
    static constexpr Move moves[] = {
        {Qt::Key_Up, MoveUp},         {Qt::Key_Down, MoveDown},         {Qt::Key_Left, MoveLeft},
        {Qt::Key_Right, MoveRight},   {Qt::Key_Home, MoveHome},         {Qt::Key_End, MoveEnd},
        {Qt::Key_PageUp, MovePageUp}, {Qt::Key_PageDown, MovePageDown},
    };
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier) {
        openFilter(startColumn());
    } else if (event->key() == Qt::Key_Space && event->modifiers() & Qt::ControlModifier) {
        selectionModel()->select(currentIndex(), QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    } else if (const auto* const move = std::ranges::find(moves, event->key(), &Move::key);
               move != std::end(moves)) {
        const bool isPage = move->action == MovePageUp || move->action == MovePageDown;
        const bool down = move->action == MoveDown || move->action == MovePageDown;
        if (isPage || move->action == MoveUp || move->action == MoveDown) {
            const int height = viewport()->height();
            if (scrollWithin(currentIndex().row(), down, std::max(1, isPage ? height : height / 4))) {
                return;
            }
        }
        const bool leavesSelection =
            event->modifiers() & Qt::ControlModifier && (move->action == MoveUp || move->action == MoveDown);
        makeCurrent(moveCursor(move->action, event->modifiers()),
                    event->modifiers() & (leavesSelection ? Qt::ControlModifier : Qt::ShiftModifier));
    } else {
        QAbstractItemView::keyPressEvent(event);
    }
}

// Typing does not search here; the search of the base class would walk through all rows.
void TableView::keyboardSearch(const QString&) {}

void TableView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) {
        return;
    }
    makeCurrent(index, event->modifiers());
    const bool toggles =
        event->modifiers() & Qt::ControlModifier && !(event->modifiers() & Qt::ShiftModifier);
    if (toggles) {
        selectionModel()->select(index, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    }
    dragging_ = !toggles;
}

void TableView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) {
        return;
    }
    const QPoint position = event->position().toPoint();
    if (viewport()->rect().contains(position)) {
        dragScroll_.stop();
        if (indexNear(position).row() != currentIndex().row()) {
            makeCurrent(indexNear(position), Qt::ShiftModifier);
        }
    } else if (!dragScroll_.isActive()) {
        dragScroll_.start(dragScrollInterval, this);
    }
}

void TableView::mouseReleaseEvent(QMouseEvent*) {
    dragging_ = false;
    dragScroll_.stop();
}

void TableView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != dragScroll_.timerId()) {
        QAbstractItemView::timerEvent(event);
        return;
    }
    const int y = viewport()->mapFromGlobal(QCursor::pos()).y();
    if (y < 0 || y >= viewport()->height()) {
        makeCurrent(moveCursor(y < 0 ? MoveUp : MoveDown, Qt::NoModifier), Qt::ShiftModifier);
    }
}

void TableView::wheelEvent(QWheelEvent* event) {
    if (const int rows = wheel_.take(*event); rows != 0) {
        scrollToPosition(layout_.moved(layout_.top(), rows));
    }
    event->accept();
}

void TableView::focusInEvent(QFocusEvent* event) {
    QAbstractItemView::focusInEvent(event);
    viewport()->update();
}

void TableView::focusOutEvent(QFocusEvent* event) {
    QAbstractItemView::focusOutEvent(event);
    viewport()->update();
}

} // namespace grid
