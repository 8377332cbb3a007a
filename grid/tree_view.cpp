#include "grid/tree_view.h"

#include "db/data_set.h"
#include "grid/cell_text.h"
#include "grid/clipboard_text.h"
#include "grid/column.h"
#include "grid/cut_text_tip.h"
#include "grid/tree_accessibility.h"
#include "grid/tree_header.h"
#include "grid/tree_model.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace grid {

namespace {

constexpr int indent = 18;
constexpr int buttonSize = 9;
constexpr int gridLine = 1;
/// Indentation ends where the text would get less room than this.
constexpr int leastTextWidth = 120;
constexpr int dragScrollInterval = 50; // milliseconds

constexpr QRgb lineColor = qRgb(192, 192, 192);
constexpr QRgb selectedColor = qRgb(220, 232, 248);
constexpr QRgb selectedInactiveColor = qRgb(234, 236, 240);

bool isPrintable(const QString& text) {
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c.isPrint(); });
}

} // namespace

TreeView::TreeView(TreeModel& model, QWidget* parent)
    : QAbstractItemView(parent),
      model_(model),
      header_(new TreeHeader(model, this)),
      rows_(model.structure()),
      layout_([this](int row) { return measureRow(row); }) {
    installTreeAccessibility();
    setModel(&model);
    setAccessibleName(QStringLiteral("Дерево"));
    setTabKeyNavigation(false);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    focusColumn_ = treeColumn();

    connect(header_, &TreeHeader::layoutChanged, this, [this] {
        layout_.reset(rows_.count());
        updateGeometries();
        viewport()->update();
    });
    // After setModel(), so that rows and selection have been reset before.
    connect(&model_, &QAbstractItemModel::modelReset, this, &TreeView::followDataSet);
    connect(&model_, &QAbstractItemModel::layoutChanged, this, [this] {
        rows_.layout();
        rowsChanged();
        scrollTo(currentIndex());
    });
    connect(&model_.dataSet(), &db::DataSet::currentRowChanged, this, &TreeView::followDataSet);
    followDataSet();
}

// The rows

void TreeView::reset() {
    QAbstractItemView::reset();
    endTyping();
    anchorNode_ = TreeStructure::root;
    if (changingSearch_) {
        rows_.layout();
    } else {
        rows_.collapseAll();
        rows_.save();
        if (model_.isSearching()) {
            rows_.expandAll();
        }
    }
    rowsChanged();
    scrollToPosition({});
}

void TreeView::doItemsLayout() {
    rows_.layout();
    QAbstractItemView::doItemsLayout();
    rowsChanged();
}

void TreeView::rowsChanged() {
    layout_.reset(rows_.count());
    updateGeometries();
    viewport()->update();
}

void TreeView::followDataSet() {
    const int node = model_.dataSet().currentRow();
    if (node == TreeModel::node(currentIndex())) {
        return;
    }
    const QModelIndex index = model_.indexOf(node, focusColumn_);
    if (!index.isValid()) {
        selectionModel()->clear();
        return;
    }
    if (rows_.reveal(node)) {
        rowsChanged();
    }
    anchorNode_ = node;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TreeView::setExpanded(int node, bool expanded) {
    if (!rows_.hasChildren(node) || rows_.isExpanded(node) == expanded) {
        return;
    }
    if (!expanded) {
        int ancestor = TreeModel::node(currentIndex());
        while (ancestor != TreeStructure::root && ancestor != node) {
            ancestor = model_.structure().parent(ancestor);
        }
        if (ancestor == node && node != TreeModel::node(currentIndex())) {
            goToRow(rows_.rowOf(node), Qt::NoModifier);
        }
    }
    rows_.setExpanded(node, expanded);
    rowsChanged();
}

void TreeView::expandBranch(int node) {
    rows_.expandBranch(node);
    rowsChanged();
}

void TreeView::setSearch(const QString& text) {
    if (text.isEmpty() && !model_.isSearching()) {
        return;
    }
    if (!model_.isSearching()) {
        rows_.save();
    }
    {
        const QScopedValueRollback changing(changingSearch_, true);
        model_.setSearch(text);
    }
    if (text.isEmpty()) {
        rows_.restore();
        rows_.reveal(TreeModel::node(currentIndex()));
        rowsChanged();
        scrollTo(currentIndex());
    } else {
        rows_.expandAll();
        rowsChanged();
        scrollToPosition({});
    }
}

int TreeView::currentRow() const {
    return rows_.rowOf(TreeModel::node(currentIndex()));
}

bool TreeView::isRowSelected(int row) const {
    return selectionModel()->isSelected(model_.indexOf(rows_.at(row).node, focusColumn_));
}

// Geometry

int TreeView::measureRow(int row) const {
    int height = 0;
    for (const int column : header_->visibleColumns()) {
        const int indented = column == treeColumn() ? indentation(row) : 0;
        const int width = header_->sectionSize(column) - indented - gridLine;
        height = std::max(height, cellText::height(model_.text(rows_.at(row).node, column), width, font()));
    }
    return height + gridLine;
}

int TreeView::rowNear(int y) const {
    const std::vector<ShownRow>& shown = layout_.shownRows();
    if (shown.empty()) {
        return -1;
    }
    if (y < 0) {
        return std::max(0, shown.front().row - 1);
    }
    const int row = layout_.rowAt(y);
    return row < 0 ? std::min(rows_.count() - 1, shown.back().row + 1) : row;
}

int TreeView::treeColumn() const {
    return header_->visibleColumns().front();
}

int TreeView::indentation(int row) const {
    const int room = header_->sectionSize(treeColumn()) - leastTextWidth;
    const int levels = std::clamp(room / indent, 1, rows_.at(row).depth + 1);
    return levels * indent;
}

QRect TreeView::cellRect(const ShownRow& shown, int column) const {
    return {header_->sectionViewportPosition(column), shown.y, header_->sectionSize(column) - gridLine,
            shown.height - gridLine};
}

QRect TreeView::textRect(const ShownRow& shown, int column) const {
    return cellRect(shown, column).adjusted(column == treeColumn() ? indentation(shown.row) : 0, 0, 0, 0);
}

QRect TreeView::buttonRect(const ShownRow& shown) const {
    const int lineHeight = fontMetrics().height() + 2 * cellText::verticalPadding;
    const int left = textRect(shown, treeColumn()).left() - indent;
    return {left + (indent - buttonSize) / 2 + 2, shown.y + (lineHeight - buttonSize) / 2, buttonSize,
            buttonSize};
}

QRect TreeView::rowRect(int row) const {
    const ShownRow* const shown = layout_.shown(row);
    return shown == nullptr ? QRect() : QRect(0, shown->y, viewport()->width(), shown->height);
}

bool TreeView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QAbstractItemView::viewportEvent(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QModelIndex index = indexAt(help.pos());
    const ShownRow* const shown = layout_.shown(rows_.rowOf(TreeModel::node(index)));
    const QRect cell = shown == nullptr ? QRect() : textRect(*shown, index.column());
    showCutTextTip(help, *viewport(), cell,
                   index.isValid() ? model_.text(TreeModel::node(index), index.column()) : QString());
    return true;
}

QRect TreeView::visualRect(const QModelIndex& index) const {
    const ShownRow* const shown = layout_.shown(rows_.rowOf(TreeModel::node(index)));
    return shown == nullptr ? QRect() : cellRect(*shown, index.column());
}

QModelIndex TreeView::indexAt(const QPoint& point) const {
    const int row = point.y() < 0 ? -1 : layout_.rowAt(point.y());
    const int column = header_->logicalIndexAt(point.x());
    return row < 0 || column < 0 ? QModelIndex() : model_.indexOf(rows_.at(row).node, column);
}

int TreeView::verticalOffset() const {
    return verticalScrollBar()->value();
}

bool TreeView::isIndexHidden(const QModelIndex& index) const {
    return rows_.rowOf(TreeModel::node(index)) < 0 || header_->isSectionHidden(index.column());
}

QRegion TreeView::visualRegionForSelection(const QItemSelection& /*selection*/) const {
    return viewport()->rect();
}

void TreeView::updateGeometries() {
    if (updatingGeometries_) {
        return;
    }
    const QScopedValueRollback updating(updatingGeometries_, true);
    int width = -1;
    // The scroll bar's coming narrows the columns, which heightens header and rows; its going does the
    // reverse.
    for (int pass = 0; pass < 3 && viewport()->width() != width; ++pass) {
        width = viewport()->width();
        if (header_->fitWidth(width)) {
            layout_.reset(rows_.count());
        }
        const int headerHeight = header_->fittedHeight();
        setViewportMargins(0, headerHeight, 0, 0);
        header_->setGeometry(viewport()->x(), viewport()->y() - headerHeight, width, headerHeight);
        layout_.setViewportHeight(viewport()->height());
        updateScrollBar();
    }
    QAbstractItemView::updateGeometries();
}

void TreeView::changeEvent(QEvent* event) {
    QAbstractItemView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        layout_.reset(rows_.count());
        updateGeometries();
    }
}

// Scrolling

// A last row that is taller than the viewport gets a value of its own, for its end.
int TreeView::scrollBarValue() const {
    const ScrollPosition top = layout_.top();
    return top.row + (top.offset > 0 && top == layout_.lastPosition() ? 1 : 0);
}

void TreeView::updateScrollBar() {
    const ScrollPosition last = layout_.lastPosition();
    verticalScrollBar()->setPageStep(std::max(1, static_cast<int>(layout_.shownRows().size()) - 1));
    verticalScrollBar()->setRange(0, last.row + (last.offset > 0 ? 1 : 0));
    verticalScrollBar()->setValue(scrollBarValue());
}

void TreeView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    const int value = verticalScrollBar()->value();
    if (value != scrollBarValue()) {
        const ScrollPosition last = layout_.lastPosition();
        layout_.setTop(value > last.row ? last : ScrollPosition{value, 0});
    }
    viewport()->update();
}

void TreeView::scrollToPosition(ScrollPosition position) {
    layout_.setTop(position);
    verticalScrollBar()->setValue(scrollBarValue());
    viewport()->update();
}

void TreeView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int row = rows_.rowOf(TreeModel::node(index));
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
    constexpr int notch = 120;
    wheelRest_ += event->angleDelta().y() * QApplication::wheelScrollLines();
    scrollToPosition(layout_.moved(layout_.top(), -(wheelRest_ / notch)));
    wheelRest_ %= notch;
    event->accept();
}

// Focus and selection

void TreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QAbstractItemView::currentChanged(current, previous);
    viewport()->update();
    if (!current.isValid()) {
        return;
    }
    model_.dataSet().moveTo(TreeModel::node(current));
    if (QAccessible::isActive()) {
        QAccessibleEvent focused(this, QAccessible::Focus);
        focused.setChild(currentRow());
        QAccessible::updateAccessibility(&focused);
    }
}

QItemSelection TreeView::selectionOfRows(int first, int last) const {
    struct Siblings {
        int first;
        int last;
    };
    // Whatever lies between two siblings hangs beneath one of them: those in the stretch are one range.
    std::unordered_map<int, Siblings> ranges;
    for (int row = std::max(0, first); row <= last; ++row) {
        const int node = rows_.at(row).node;
        ranges.try_emplace(model_.structure().parent(node), Siblings{node, node}).first->second.last = node;
    }
    QItemSelection selection;
    selection.reserve(static_cast<qsizetype>(ranges.size()));
    for (const auto& [parent, siblings] : ranges) {
        selection.append(QItemSelectionRange(model_.indexOf(siblings.first),
                                             model_.indexOf(siblings.last, model_.columnCount() - 1)));
    }
    return selection;
}

void TreeView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
    int first = -1;
    int last = -1;
    for (const ShownRow& shown : layout_.shownRows()) {
        if (shown.y <= rect.bottom() && shown.y + shown.height > rect.top()) {
            first = first < 0 ? shown.row : first;
            last = shown.row;
        }
    }
    selectionModel()->select(first < 0 ? QItemSelection() : selectionOfRows(first, last), command);
}

void TreeView::selectAll() {
    selectionModel()->select(selectionOfRows(0, rows_.count() - 1), QItemSelectionModel::ClearAndSelect);
}

void TreeView::selectUpTo(int row) {
    const int anchor = rows_.rowOf(anchorNode_);
    const auto [first, last] = std::minmax(anchor < 0 ? row : anchor, row);
    selectionModel()->select(selectionOfRows(first, last), QItemSelectionModel::ClearAndSelect);
}

void TreeView::goToRow(int row, Qt::KeyboardModifiers modifiers) {
    const QModelIndex index = model_.indexOf(rows_.at(row).node, focusColumn_);
    if (modifiers & Qt::ShiftModifier) {
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        selectUpTo(row);
        return;
    }
    anchorNode_ = rows_.at(row).node;
    const bool keepSelection = modifiers.testFlag(Qt::ControlModifier);
    selectionModel()->setCurrentIndex(
        index, keepSelection ? QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate)
                             : QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TreeView::toggleCurrentSelected() {
    selectionModel()->select(currentIndex(), QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
}

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

void TreeView::copySelection() const {
    // Asking the selection row by row would go through all its ranges each time.
    std::vector<bool> selected(static_cast<std::size_t>(model_.structure().rowCount()));
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        const std::span<const int> siblings = model_.structure().children(TreeModel::node(range.parent()));
        for (int place = range.top(); place <= range.bottom(); ++place) {
            selected[static_cast<std::size_t>(siblings[static_cast<std::size_t>(place)])] = true;
        }
    }
    const std::vector<int> columns = header_->visibleColumns();
    QStringList lines;
    for (int row = 0; row < rows_.count(); ++row) {
        if (!selected[static_cast<std::size_t>(rows_.at(row).node)]) {
            continue;
        }
        QStringList cells;
        for (const int column : columns) {
            cells.append(clipboardCell(model_.text(rows_.at(row).node, column)));
        }
        lines.append(cells.join(u'\t'));
    }
    if (!lines.isEmpty()) {
        QApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
    }
}

// Keyboard

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

// Mouse

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

// Painting

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
    painter.fillRect(0, shown.y + shown.height - gridLine, viewport()->width(), gridLine, QColor(lineColor));
    for (const int column : header_->visibleColumns()) {
        drawCell(painter, shown, column);
    }
    if (rows_.hasChildren(rows_.at(shown.row).node)) {
        drawButton(painter, shown);
    }
}

void TreeView::drawCell(QPainter& painter, const ShownRow& shown, int column) const {
    const QRect cell = cellRect(shown, column);
    painter.fillRect(cell.right() + 1, shown.y, gridLine, shown.height, QColor(lineColor));

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
