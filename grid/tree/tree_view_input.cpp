// SPDX-License-Identifier: MIT

#include "grid/tree/tree_view.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace grid {

namespace {

/// Milliseconds without a key after which typing begins anew.
constexpr int typingRest = 1500;

} // namespace

void TreeView::keyPressEvent(QKeyEvent* event) {
    if (!handleTyping(*event) && !handleBranchKey(*event)) {
        RowView::keyPressEvent(event);
    }
}

bool TreeView::handleTyping(const QKeyEvent& event) {
    const bool isPlain = !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (event.key() == Qt::Key_Backspace && isPlain) {
        typed_.chop(1);
        waitForTyping();
        return true;
    }
    if (event.key() == Qt::Key_Escape && !typed_.isEmpty()) {
        endTyping();
        return true;
    }
    const bool isCommand = event.key() == Qt::Key_Plus || event.key() == Qt::Key_Minus ||
                           event.key() == Qt::Key_Asterisk || event.key() == Qt::Key_Space;
    const QString text = event.text();
    const bool isText = !text.isEmpty() && std::ranges::all_of(text, [](QChar c) { return c.isPrint(); });
    if (!isPlain || !isText) {
        return false;
    }
    // Keys that command a branch begin a text only where a node begins with it, and never on the number pad.
    if (isCommand && typed_.isEmpty() &&
        (event.modifiers() & Qt::KeypadModifier ||
         model_.findStartingWith(text, focusColumn(), TreeStructure::root) == TreeStructure::root)) {
        return false;
    }
    keyboardSearch(text);
    return true;
}

bool TreeView::handleBranchKey(const QKeyEvent& event) {
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

void TreeView::keyboardSearch(const QString& typed) {
    // A new search goes on from the node in focus, so that the same letter leads from match to match; a
    // longer text first looks whether that node still matches.
    const int current = TreeModel::node(currentIndex());
    const int from = typed_.isEmpty() ? model_.structure().next(current) : current;
    const QString sought = typed_ + typed;
    if (const int found = model_.findStartingWith(sought, focusColumn(), from);
        found != TreeStructure::root) {
        goToRow(bringIn(found), Qt::NoModifier);
        typed_ = sought;
    }
    waitForTyping();
}

void TreeView::waitForTyping() {
    typingPause_.start(typingRest, this);
    viewport()->update();
}

void TreeView::endTyping() {
    typingPause_.stop();
    typed_.clear();
    viewport()->update();
}

void TreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    endTyping();
    RowView::currentChanged(current, previous);
    emit searchOutcomeChanged();
}

void TreeView::focusOutEvent(QFocusEvent* event) {
    endTyping();
    RowView::focusOutEvent(event);
}

void TreeView::timerEvent(QTimerEvent* event) {
    if (event->timerId() == typingPause_.timerId()) {
        endTyping();
    } else {
        RowView::timerEvent(event);
    }
}

void TreeView::mousePressEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    const int row = rowOf(indexAt(place));
    constexpr int margin = (indent - buttonSize) / 2;
    if (event->button() == Qt::LeftButton && row >= 0 && rows_.hasChildren(rows_.at(row).node) &&
        buttonRect(*rowLayout().shown(row)).adjusted(-margin, -margin, margin, margin).contains(place)) {
        endTyping();
        const int node = rows_.at(row).node;
        setExpanded(node, !rows_.isExpanded(node));
    } else {
        RowView::mousePressEvent(event);
    }
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    const int row = rowOf(indexAt(event->position().toPoint()));
    if (row < 0 || event->button() != Qt::LeftButton) {
        return;
    }
    const int node = rows_.at(row).node;
    if (textRect(*rowLayout().shown(row), treeColumn()).left() > event->position().x()) {
        // Quick clicks on the button of a branch open and close it each time.
        mousePressEvent(event);
    } else {
        setExpanded(node, !rows_.isExpanded(node));
    }
}

} // namespace grid
