#include "grid/rows/tree_model.h"
#include "grid/tree/tree_header.h"
#include "grid/tree/tree_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>

namespace grid {
namespace {

bool isPrintable(const QString& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
}

} // namespace

std::optional<int> TreeView::targetRow(CursorAction action) const {
    const int row = currentRow();
    const int last = rows_.count() - 1;
    if (last < 0) {
        return std::nullopt;
    }
    if (row < 0) {
        return 0;
    }
    switch (action) {
    case MoveUp:
    case MovePrevious:
        return std::max(0, row - 1);
    case MoveDown:
    case MoveNext:
        return std::min(last, row + 1);
    case MoveHome:
        return 0;
    case MoveEnd:
        return last;
    case MovePageUp:
        return layout_.rowOnePageFrom(row, false);
    case MovePageDown:
        return layout_.rowOnePageFrom(row, true);
    default:
        return row;
    }
}

QModelIndex TreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers /*modifiers*/) {
    const std::optional<int> row = targetRow(action);
    return row ? model_.indexOf(rows_.at(*row).node, focusColumn_) : QModelIndex();
}

void TreeView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (!handleTyping(*event) && !handleBranchKey(*event) && !handleNavigation(*event)) {
        QAbstractItemView::keyPressEvent(event);
    }
}

bool TreeView::handleTyping(const QKeyEvent& event) {
    const bool isPlain = !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (event.key() == Qt::Key_Backspace && isPlain) {
        typed_.chop(1);
        typingPause_.start(QApplication::keyboardInputInterval(), this);
        viewport()->update();
        return true;
    }
    const bool isBranchKey = event.key() == Qt::Key_Plus || event.key() == Qt::Key_Minus ||
                             event.key() == Qt::Key_Asterisk || event.key() == Qt::Key_Space;
    if (!isPlain || !isPrintable(event.text()) || (isBranchKey && typed_.isEmpty())) {
        return false;
    }
    keyboardSearch(event.text());
    return true;
}

bool TreeView::handleBranchKey(QKeyEvent& event) {
    const int row = currentRow();
    if (row < 0 || (event.modifiers() & ~Qt::KeypadModifier & ~Qt::ShiftModifier)) {
        return false;
    }
    const int node = rows_.at(row).node;
    const int parentRow = rows_.rowOf(model_.structure().parent(node));
    const bool isOpen = rows_.isExpanded(node) && rows_.hasChildren(node);
    switch (event.key()) {
    case Qt::Key_Plus:
        setExpanded(node, true);
        return true;
    case Qt::Key_Minus:
        setExpanded(node, false);
        return true;
    case Qt::Key_Asterisk:
        expandBranch(node);
        return true;
    case Qt::Key_Right:
        if (isOpen) {
            goToRow(row + 1, event.modifiers());
        } else {
            setExpanded(node, true);
        }
        return true;
    case Qt::Key_Left:
        if (isOpen) {
            setExpanded(node, false);
        } else if (parentRow >= 0) {
            goToRow(parentRow, event.modifiers());
        }
        return true;
    default:
        return false;
    }
}

bool TreeView::handleNavigation(QKeyEvent& event) {
    const bool isControl = event.modifiers().testFlag(Qt::ControlModifier);
    CursorAction action = MoveUp;
    switch (event.key()) {
    case Qt::Key_Space:
        toggleCurrentSelected();
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (isControl) {
            moveFocusColumn(event.key() == Qt::Key_Right ? 1 : -1);
        }
        return isControl;
    case Qt::Key_Up:
        break;
    case Qt::Key_Down:
        action = MoveDown;
        break;
    case Qt::Key_Home:
        action = MoveHome;
        break;
    case Qt::Key_End:
        action = MoveEnd;
        break;
    case Qt::Key_PageUp:
        action = MovePageUp;
        break;
    case Qt::Key_PageDown:
        action = MovePageDown;
        break;
    default:
        return false;
    }
    endTyping();
    const bool isDown = action == MoveDown || action == MovePageDown;
    const bool leavesRow = action == MoveHome || action == MoveEnd || !scrollWithinTallRow(isDown);
    if (const std::optional<int> row = targetRow(action); row && leavesRow) {
        goToRow(*row, event.modifiers());
    }
    return true;
}

void TreeView::moveFocusColumn(int step) {
    const std::vector<int> columns = header_->visibleColumns();
    const auto place = std::find(columns.begin(), columns.end(), focusColumn_) - columns.begin() + step;
    if (place < 0 || place >= std::ssize(columns) || !currentIndex().isValid()) {
        return;
    }
    focusColumn_ = columns[static_cast<std::size_t>(place)];
    endTyping();
    selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(focusColumn_),
                                      QItemSelectionModel::NoUpdate);
}

void TreeView::keyboardSearch(const QString& typed) {
    // A new search goes on from the node in focus, so that the same letter leads from match to match; a
    // longer text first looks whether that node still matches.
    const int current = TreeModel::node(currentIndex());
    const int from = typed_.isEmpty() ? model_.structure().next(current) : current;
    const int found = model_.findStartingWith(typed_ + typed, focusColumn_, from);
    typingPause_.start(QApplication::keyboardInputInterval(), this);
    if (found == TreeStructure::root) {
        return;
    }
    typed_ += typed;
    if (rows_.reveal(found)) {
        rowsChanged();
    }
    goToRow(rows_.rowOf(found), Qt::NoModifier);
    viewport()->update();
}

void TreeView::endTyping() {
    typingPause_.stop();
    typed_.clear();
    viewport()->update();
}

void TreeView::goToFound() {
    int node = TreeModel::node(currentIndex());
    const auto isMatch = [this](int candidate) {
        const std::vector<int> columns = header_->visibleColumns();
        return std::any_of(columns.begin(), columns.end(), [&](int column) {
            const TreeModel::Range match = model_.match(candidate, column);
            return match.end > match.start;
        });
    };
    if (model_.isSearching() && rows_.rowOf(node) < 0) {
        node = model_.structure().next(TreeStructure::root);
        while (node != TreeStructure::root && !isMatch(node)) {
            node = model_.structure().next(node);
        }
    }
    if (rows_.rowOf(node) >= 0) {
        goToRow(rows_.rowOf(node), Qt::NoModifier);
    }
    setFocus();
}

void TreeView::focusInEvent(QFocusEvent* event) {
    QAbstractItemView::focusInEvent(event);
    viewport()->update();
}

void TreeView::focusOutEvent(QFocusEvent* event) {
    QAbstractItemView::focusOutEvent(event);
    endTyping();
}

void TreeView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == typingPause_.timerId()) {
        endTyping();
    } else if (event->timerId() == dragScroll_.timerId()) {
        if (const int row = rowNear(viewport()->mapFromGlobal(QCursor::pos()).y()); row >= 0) {
            goToRow(row, Qt::ShiftModifier);
        }
    } else {
        QAbstractItemView::timerEvent(event);
    }
}

void TreeView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || event->button() != Qt::LeftButton) {
        return;
    }
    endTyping();
    const int node = TreeModel::node(index);
    const ShownRow* const shown = layout_.shown(rows_.rowOf(node));
    const int margin = (indent - buttonSize) / 2;
    if (rows_.hasChildren(node) &&
        buttonRect(*shown).adjusted(-margin, -margin, margin, margin).contains(event->position().toPoint())) {
        setExpanded(node, !rows_.isExpanded(node));
        return;
    }
    focusColumn_ = index.column();
    goToRow(rows_.rowOf(node), event->modifiers());
    if (event->modifiers() == Qt::ControlModifier) {
        toggleCurrentSelected();
    } else {
        dragging_ = true;
    }
}

void TreeView::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_) {
        return;
    }
    const int y = event->position().toPoint().y();
    const bool isOutside = y < 0 || y >= viewport()->height();
    if (!isOutside) {
        dragScroll_.stop();
    } else if (!dragScroll_.isActive()) {
        dragScroll_.start(dragScrollInterval, this);
    }
    if (const int row = rowNear(y); row >= 0 && row != currentRow()) {
        goToRow(row, Qt::ShiftModifier);
    }
}

void TreeView::mouseReleaseEvent(QMouseEvent* /*event*/) {
    dragging_ = false;
    dragScroll_.stop();
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || event->button() != Qt::LeftButton) {
        return;
    }
    const int node = TreeModel::node(index);
    if (textRect(*layout_.shown(rows_.rowOf(node)), treeColumn()).left() > event->position().x()) {
        // Quick clicks on the button of a branch open and close it each time.
        mousePressEvent(event);
    } else {
        setExpanded(node, !rows_.isExpanded(node));
    }
}

bool TreeView::scrollWithinTallRow(bool down) {
    const ShownRow* const shown = layout_.shown(currentRow());
    const bool isCut = shown != nullptr && shown->height > viewport()->height() &&
                       (down ? shown->y + shown->height > viewport()->height() : shown->y < 0);
    if (isCut) {
        scrollToPosition(layout_.moved(layout_.top(), down ? 1 : -1));
    }
    return isCut;
}

void TreeView::wheelEvent(QWheelEvent* event) {
    scrollToPosition(layout_.moved(layout_.top(), wheel_.take(*event)));
    event->accept();
}

} // namespace grid
