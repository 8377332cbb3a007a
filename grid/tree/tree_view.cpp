// SPDX-License-Identifier: MIT

#include "grid/tree/tree_view.h"

#include "db/data_set.h"
#include "grid/rows/column.h"
#include "grid/tree/tree_accessibility.h"
#include "grid/tree/tree_header.h"
#include "grid/view/menu.h"
#include "grid/view/search_texts.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <unordered_map>

namespace grid {

TreeView::TreeView(TreeModel& model, QWidget* parent)
    : RowView(parent), model_(model), rows_(model.structure()) {
    installTreeAccessibility();
    assemble(model, *new TreeHeader(model, this), nullptr, model.dataSet());
    connect(&model_, &QAbstractItemModel::layoutChanged, this, [this] {
        rows_.layout();
        rowsChanged();
        scrollTo(currentIndex());
        emit searchOutcomeChanged();
    });
    connect(&header(), &FittedHeader::hiddenColumnsChanged, this, &TreeView::searchVisibleColumns);
}

void TreeView::reset() {
    endTyping();
    if (!changingSearch_) {
        rows_.collapseAll();
        rows_.save();
    }
    if (model_.isSearching()) {
        rows_.expandAll();
    } else if (changingSearch_) {
        rows_.restore();
    }
    RowView::reset();
    scrollToPosition({});
    emit searchOutcomeChanged();
}

int TreeView::bringIn(int dataSetRow) {
    if (dataSetRow == TreeStructure::root || !model_.structure().isShown(dataSetRow)) {
        return -1;
    }
    if (rows_.reveal(dataSetRow)) {
        rowsChanged();
    }
    return rows_.rowOf(dataSetRow);
}

QItemSelection TreeView::selectionOf(int first, int last) const {
    struct Siblings {
        int first;
        int last;
    };
    // Whatever lies between two siblings hangs beneath one of them: those in the stretch are one range.
    std::unordered_map<int, Siblings> ranges;
    for (int row = first; row <= last; ++row) {
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

int TreeView::treeColumn() const {
    return header().visibleColumns().front();
}

int TreeView::indentation(int row, int column) const {
    if (column != treeColumn()) {
        return 0;
    }
    const int room = header().sectionSize(column) - leastTextWidth;
    return indent * std::clamp(room / indent, 1, rows_.at(row).depth + 1);
}

int TreeView::fullIndentation(int row, int column) const {
    return column == treeColumn() ? indent * (rows_.at(row).depth + 1) : 0;
}

int TreeView::fittingWidth(int row, int column) const {
    const int least = column == treeColumn() ? fullIndentation(row, column) + leastTextWidth : 0;
    return std::max(least, RowView::fittingWidth(row, column));
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

void TreeView::setSearch(const QString& words) {
    const TextMatcher matcher(words);
    if (!model_.isSearching()) {
        if (matcher.isEmpty()) {
            return;
        }
        rows_.save();
    }
    {
        const QScopedValueRollback changing(changingSearch_, true);
        model_.setSearch(matcher);
    }
    if (matcher.isEmpty()) {
        scrollTo(currentIndex());
    } else {
        scrollToPosition({});
    }
}

QString TreeView::searchOutcome() const {
    if (!model_.isSearching()) {
        return {};
    }
    const std::vector<int>& hits = model_.hits();
    const auto current = std::ranges::find(hits, TreeModel::node(currentIndex()));
    return grid::searchOutcome(
        current == hits.end() ? std::nullopt : std::optional(current - hits.begin() + 1), std::ssize(hits));
}

/// What is found in a column that is hidden now would stand there without a reason to be seen.
void TreeView::searchVisibleColumns() {
    if (model_.isSearching()) {
        const QScopedValueRollback changing(changingSearch_, true);
        model_.searchAgain();
    }
}

void TreeView::addCellEntries(QMenu& menu, const QModelIndex& cell) {
    const int node = TreeModel::node(cell);
    const bool isBranch = cell.isValid() && rows_.hasChildren(node);
    const bool isOpen = isBranch && rows_.isExpanded(node);
    addEntry(menu, QStringLiteral("Раскрыть"), Qt::Key_Plus, isBranch && !isOpen,
             [=, this] { setExpanded(node, true); });
    addEntry(menu, QStringLiteral("Свернуть"), Qt::Key_Minus, isOpen,
             [=, this] { setExpanded(node, false); });
    addEntry(menu, QStringLiteral("Раскрыть со всеми вложенными"), Qt::Key_Asterisk, isBranch,
             [=, this] { expandBranch(node); });
}

void TreeView::goToFound() {
    if (rowCount() == 0) {
        return; // the user goes on typing
    }
    const std::vector<int>& hits = model_.hits();
    const int current = TreeModel::node(currentIndex());
    if (!hits.empty() && std::ranges::find(hits, current) == hits.end()) {
        goToRow(bringIn(hits.front()), Qt::NoModifier);
    } else if (currentRow() >= 0) {
        goToRow(currentRow(), Qt::NoModifier);
    }
    // It may have been current before, but out of view.
    scrollTo(currentIndex());
    setFocus();
}

void TreeView::findNext() {
    goToHit(1);
}

void TreeView::findPrevious() {
    goToHit(-1);
}

void TreeView::goToHit(int step) {
    if (!model_.isSearching()) {
        emit findRequested();
    }
    const std::vector<int>& hits = model_.hits();
    if (hits.empty()) {
        return;
    }
    const int current = TreeModel::node(currentIndex());
    // Up to the first hit that is not before the node in focus, which may be itself no hit.
    std::ptrdiff_t place = 0;
    for (int node = model_.structure().next(TreeStructure::root);
         node != current && node != TreeStructure::root; node = model_.structure().next(node)) {
        place += place < std::ssize(hits) && hits[static_cast<std::size_t>(place)] == node ? 1 : 0;
    }
    const bool isOnHit = place < std::ssize(hits) && hits[static_cast<std::size_t>(place)] == current;
    if (step < 0 || isOnHit) {
        place += step;
    }
    const int hit = hits[static_cast<std::size_t>((place + std::ssize(hits)) % std::ssize(hits))];
    goToRow(bringIn(hit), Qt::NoModifier);
    scrollTo(currentIndex());
}

void TreeView::goToRow(int row, Qt::KeyboardModifiers modifiers) {
    makeCurrent(indexOf(row, focusColumn()), modifiers);
}

} // namespace grid
