#pragma once

#include "grid/rows/tree_rows.h"
#include "grid/rows/tree_structure.h"
#include "grid/view/row_layout.h"
#include "grid/view/row_scrolling.h"

#include <QAbstractItemView>
#include <QBasicTimer>

#include <optional>
#include <vector>

namespace grid {

class TreeHeader;
class TreeModel;

/// A read-only tree with columns. Columns fill the width, rows grow with their texts. The node in focus is
/// the dataset's current row, both ways.
class TreeView final : public QAbstractItemView {
    Q_OBJECT

public:
    TreeView(TreeModel& model, QWidget* parent);

    /// What the view shows: the nodes in order and under the search.
    [[nodiscard]] TreeModel& treeModel() const { return model_; }
    [[nodiscard]] TreeHeader& header() const { return *header_; }

    /// The rows from top to bottom.
    [[nodiscard]] const TreeRows& rows() const { return rows_; }
    /// The row in focus; -1 when there is none.
    [[nodiscard]] int currentRow() const;
    [[nodiscard]] bool isRowSelected(int row) const;
    /// Where a row is on screen, in the viewport; empty when it is out of view.
    [[nodiscard]] QRect rowRect(int row) const;

    /// When the node in focus would vanish, the collapsed node takes the focus.
    void setExpanded(int node, bool expanded);
    /// Expands a node with all that hangs beneath it.
    void expandBranch(int node);

    /// Narrows the tree to the nodes with the text and their ancestors, all expanded; an empty text brings
    /// back the whole tree as it was expanded before.
    void setSearch(const QString& text);
    /// Goes on to the node in focus, or to the first match of the search when none is.
    void goToFound();
    /// Puts the selected nodes (the current node if none is) on the clipboard, the visible columns separated
    /// by tabs.
    void copySelection() const;

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
    void doItemsLayout() override;
    void reset() override;
    void selectAll() override;
    /// Goes to the next node whose text in the focused column starts with what has been typed up to now.
    void keyboardSearch(const QString& typed) override;

protected:
    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] int horizontalOffset() const override { return 0; }
    [[nodiscard]] int verticalOffset() const override;
    [[nodiscard]] bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    static constexpr int indent = 18;    ///< pixels a level
    static constexpr int buttonSize = 9; ///< of the button that opens a branch, pixels
    static constexpr int gridLine = 1;   ///< pixels
    /// Indentation ends where the text would get less room than this, pixels.
    static constexpr int leastTextWidth = 120;

    void rowsChanged();
    void followDataSet();
    [[nodiscard]] int measureRow(int row) const;
    [[nodiscard]] int rowNear(int y) const;
    void scrollToPosition(ScrollPosition position);
    [[nodiscard]] bool scrollWithinTallRow(bool down);

    [[nodiscard]] int treeColumn() const;
    [[nodiscard]] QRect cellRect(const ShownRow& shown, int column) const;
    [[nodiscard]] QRect textRect(const ShownRow& shown, int column) const;
    [[nodiscard]] QRect buttonRect(const ShownRow& shown) const;
    [[nodiscard]] int indentation(int row) const;

    [[nodiscard]] QItemSelection selectionOfRows(int first, int last) const;
    [[nodiscard]] std::optional<int> targetRow(CursorAction action) const;
    void goToRow(int row, Qt::KeyboardModifiers modifiers);
    void selectUpTo(int row);
    bool handleNavigation(QKeyEvent& event);
    bool handleBranchKey(QKeyEvent& event);
    bool handleTyping(const QKeyEvent& event);
    void moveFocusColumn(int step);
    void toggleCurrentSelected();
    void endTyping();

    void drawRow(QPainter& painter, const ShownRow& shown) const;
    void drawCell(QPainter& painter, const ShownRow& shown, int column) const;
    void drawButton(QPainter& painter, const ShownRow& shown) const;

    TreeModel& model_;
    TreeHeader* header_;
    TreeRows rows_;
    RowLayout layout_;
    int focusColumn_ = 0;
    int anchorNode_ = TreeStructure::root;
    QString typed_;
    QBasicTimer typingPause_;
    QBasicTimer dragScroll_;
    bool dragging_ = false;
    bool changingSearch_ = false;
    bool replacingRows_ = false;
    bool updatingGeometries_ = false;
    WheelRows wheel_;
};

} // namespace grid
