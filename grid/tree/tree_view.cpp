#include "grid/tree/tree_view.h"

#include "db/data_set.h"
#include "grid/rows/clipboard_text.h"
#include "grid/rows/tree_model.h"
#include "grid/tree/tree_accessibility.h"
#include "grid/tree/tree_header.h"
#include "grid/view/cell_text.h"
#include "grid/view/cut_text_tip.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace grid {

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
    connect(&model_, &QAbstractItemModel::modelReset, this, [this] {
        replacingRows_ = false;
        followDataSet();
    });
    connect(&model_, &QAbstractItemModel::modelAboutToBeReset, this, [this] { replacingRows_ = true; });
    connect(&model_, &QAbstractItemModel::layoutChanged, this, [this] {
        rows_.layout();
        rowsChanged();
        scrollTo(currentIndex());
    });
    connect(&model_.dataSet(), &db::DataSet::currentRowChanged, this, &TreeView::followDataSet);
    followDataSet();
}

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
    // Another view may move the dataset on before this one's rows are there.
    if (replacingRows_ || node == TreeModel::node(currentIndex())) {
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
    arrangeForWidth(*viewport(), [this](int width) {
        header_->fitWidth(width);
        const int headerHeight = header_->fittedHeight();
        setViewportMargins(0, headerHeight, 0, 0);
        header_->setGeometry(viewport()->x(), viewport()->y() - headerHeight, width, headerHeight);
        layout_.setViewportHeight(viewport()->height());
        adjustScrollBar(*verticalScrollBar(), layout_);
    });
    QAbstractItemView::updateGeometries();
}

void TreeView::changeEvent(QEvent* event) {
    QAbstractItemView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        layout_.reset(rows_.count());
        updateGeometries();
    }
}

void TreeView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    const int value = verticalScrollBar()->value();
    if (value != layout_.scrollValue()) {
        layout_.setTop(layout_.positionAt(value));
    }
    viewport()->update();
}

void TreeView::scrollToPosition(ScrollPosition position) {
    layout_.setTop(position);
    verticalScrollBar()->setValue(layout_.scrollValue());
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

void TreeView::copySelection() const {
    // Asking the selection row by row would go through all its ranges each time.
    std::vector<bool> selected(static_cast<std::size_t>(model_.structure().rowCount()));
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        const std::span<const int> siblings = model_.structure().children(TreeModel::node(range.parent()));
        for (int place = range.top(); place <= range.bottom(); ++place) {
            selected[static_cast<std::size_t>(siblings[static_cast<std::size_t>(place)])] = true;
        }
    }
    const int current = TreeModel::node(currentIndex());
    if (!selectionModel()->hasSelection() && current != TreeStructure::root) {
        selected[static_cast<std::size_t>(current)] = true;
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

} // namespace grid
