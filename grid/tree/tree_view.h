// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/tree_model.h"
#include "grid/rows/tree_rows.h"
#include "grid/view/row_view.h"

#include <QBasicTimer>

namespace grid {

/// A tree of a dataset's rows with columns; the first one holds the branches.
class TreeView final : public RowView {
    Q_OBJECT

public:
    TreeView(TreeModel& model, QWidget* parent);

    /// What the view shows: the nodes in order and under the search.
    [[nodiscard]] TreeModel& treeModel() const { return model_; }
    /// The rows from top to bottom.
    [[nodiscard]] const TreeRows& rows() const { return rows_; }

    /// When the node in focus would vanish, the collapsed node takes the focus.
    void setExpanded(int node, bool expanded);
    /// Expands a node with all that hangs beneath it.
    void expandBranch(int node);

    /// Narrows the tree to the nodes with all words and their ancestors, all expanded; no word brings back
    /// the whole tree as it was expanded before.
    void setSearch(const QString& words);
    /// What has become of the search; empty when there is none.
    [[nodiscard]] QString searchOutcome() const;
    /// Goes on to the node in focus; while there is a search, to its first hit unless that node is one,
    /// and nowhere where it has found nothing.
    void goToFound();
    /// Goes to the next or the previous hit of the search, and round the end; without a search asks for one.
    void findNext();
    void findPrevious();

    void reset() override;
    /// Goes to the next node whose text in the focused column starts with what has been typed up to now.
    void keyboardSearch(const QString& typed) override;

signals:
    /// There may be another outcome of the search.
    void searchOutcomeChanged();

protected:
    [[nodiscard]] int rowCount() const override { return rows_.count(); }
    [[nodiscard]] QModelIndex indexOf(int row, int column) const override {
        return model_.indexOf(rows_.at(row).node, column);
    }
    [[nodiscard]] int rowOf(const QModelIndex& index) const override {
        return rows_.rowOf(TreeModel::node(index));
    }
    [[nodiscard]] int dataSetRow(int row) const override { return rows_.at(row).node; }
    [[nodiscard]] int bringIn(int dataSetRow) override;
    [[nodiscard]] QItemSelection selectionOf(int first, int last) const override;
    [[nodiscard]] QString textOf(int row, int column) const override {
        return model_.text(rows_.at(row).node, column);
    }
    [[nodiscard]] int indentation(int row, int column) const override;
    [[nodiscard]] int fullIndentation(int row, int column) const override;
    [[nodiscard]] int fittingWidth(int row, int column) const override;
    [[nodiscard]] std::vector<TextRange> marksIn(int row, int column) const override;
    [[nodiscard]] RowColors rowColors(int row) const override;
    [[nodiscard]] QString emptyText() const override;
    void addCellEntries(QMenu& menu, const QModelIndex& cell) override;
    void addColumnEntries(QMenu&, int) override {}
    void drawRow(QPainter& painter, const ShownRow& shown, const QRect& exposed) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    static constexpr int indent = 18;    ///< pixels a level
    static constexpr int buttonSize = 9; ///< of the button that opens a branch, pixels
    /// Indentation ends where the text would get less room than this, pixels.
    static constexpr int leastTextWidth = 120;

    [[nodiscard]] int treeColumn() const;
    void searchVisibleColumns();
    void goToHit(int step);
    [[nodiscard]] QRect buttonRect(const ShownRow& shown) const;
    void drawButton(QPainter& painter, const ShownRow& shown) const;
    void goToRow(int row, Qt::KeyboardModifiers modifiers);
    bool handleBranchKey(const QKeyEvent& event);
    bool handleTyping(const QKeyEvent& event);
    void waitForTyping();
    void endTyping();

    TreeModel& model_;
    TreeRows rows_;
    QString typed_;
    QBasicTimer typingPause_;
    bool changingSearch_ = false;
};

} // namespace grid
