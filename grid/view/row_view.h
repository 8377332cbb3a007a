// SPDX-License-Identifier: MIT

#pragma once

#include "grid/header/cell_text.h"
#include "grid/text/text_matcher.h"
#include "grid/view/row_layout.h"

#include <QAbstractItemView>
#include <QBasicTimer>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

class QMenu;

namespace db {
class DataSet;
}

namespace grid {

class FittedHeader;

/// A read-only view of rows of different heights, under a header whose columns fill the width. Whole rows are
/// selected; keys, mouse and clipboard work the same in whatever shows rows. The row in focus is the
/// dataset's current row, both ways.
///
/// Rows are measured when they come into view and laid out downwards from the top row, which is the value of
/// the vertical scroll bar: nothing depends on the number of rows. While the view is not visible it measures
/// none at all.
class RowView : public QAbstractItemView {
    Q_OBJECT

public:
    /// The columns' header.
    [[nodiscard]] FittedHeader& header() const { return *header_; }
    /// The row in focus; -1 when there is none.
    [[nodiscard]] int currentRow() const { return rowOf(currentIndex()); }
    [[nodiscard]] bool isRowSelected(int row) const;
    /// The selected rows from top to bottom.
    [[nodiscard]] std::vector<int> selectedRows() const;
    /// Where a row is on screen, in the viewport; empty when it is out of view.
    [[nodiscard]] QRect rowRect(int row) const;

    /// Makes the first row current and scrolls to it; nothing when there is none.
    void goToFirstRow();
    /// Puts the selected rows (the current row if none is) on the clipboard, as spreadsheets paste them;
    /// `withHeadings` puts the captions of the columns above them.
    void copySelection(bool withHeadings = false) const;
    /// Puts the current cell on the clipboard.
    void copyCell() const;
    /// Makes a column as wide as the widest of its texts.
    void fitColumn(int column);

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
    /// While the view is not visible, this happens as soon as it is.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void reset() override;
    void selectAll() override;
    /// Does nothing: the search of the base class would walk through all rows.
    void keyboardSearch(const QString& search) override;

signals:
    /// The user wants to look for a text.
    void findRequested();

protected:
    static constexpr int gridLine = 1; ///< between rows and between columns, pixels

    /// How a row is drawn; an invalid background is the view's.
    struct RowColors {
        QColor background;
        QColor text;
    };

    explicit RowView(QWidget* parent);

    /// Puts the view together; a subclass does so once, as soon as it can tell of its rows. Model, header and
    /// footer (or null) belong to the view.
    void assemble(QAbstractItemModel& model, FittedHeader& header, QWidget* footer, db::DataSet& dataSet);

    [[nodiscard]] virtual int rowCount() const = 0;
    /// The index of a cell.
    [[nodiscard]] virtual QModelIndex indexOf(int row, int column) const = 0;
    /// The row of an index, -1 when it has none.
    [[nodiscard]] virtual int rowOf(const QModelIndex& index) const = 0;
    [[nodiscard]] virtual int dataSetRow(int row) const = 0;
    /// The row that stands for a row of the dataset, brought among the others if need be; -1 when it cannot.
    [[nodiscard]] virtual int bringIn(int dataSetRow) = 0;
    /// All cells of these rows.
    [[nodiscard]] virtual QItemSelection selectionOf(int first, int last) const = 0;
    /// A cell as it is shown.
    [[nodiscard]] virtual QString textOf(int row, int column) const = 0;
    /// Pixels at the left of a cell that its text leaves free.
    [[nodiscard]] virtual int indentation(int row, int column) const;
    /// What indentation() is where the column has room for it.
    [[nodiscard]] virtual int fullIndentation(int row, int column) const;
    /// The width of a cell that shows its whole text in full indentation.
    [[nodiscard]] virtual int fittingWidth(int row, int column) const;
    /// The parts of a cell's text that a search marks.
    [[nodiscard]] virtual std::vector<TextRange> marksIn(int row, int column) const = 0;
    [[nodiscard]] virtual RowColors rowColors(int row) const = 0;
    /// What stands in the place of rows when there are none.
    [[nodiscard]] virtual QString emptyText() const = 0;
    /// Adds to the menu of a cell, which may be invalid, what this kind of view can do with it.
    virtual void addCellEntries(QMenu& menu, const QModelIndex& cell) = 0;
    /// The same for the menu of a column (-1 for none).
    virtual void addColumnEntries(QMenu& menu, int column) = 0;
    virtual void drawRow(QPainter& painter, const ShownRow& shown, const QRect& exposed) const;

    /// To be called when there are other rows, or the same need other heights.
    void rowsChanged();
    void scrollToPosition(ScrollPosition position);
    /// Makes a cell current: with Shift all rows from the anchor on are selected, with Control the selection
    /// stays, otherwise the row is selected.
    void makeCurrent(const QModelIndex& index, Qt::KeyboardModifiers modifiers);

    [[nodiscard]] const RowLayout& rowLayout() const { return layout_; }
    /// The column in focus, also while there is no row.
    [[nodiscard]] int focusColumn() const { return focusColumn_; }
    /// Where a cell's text stands.
    [[nodiscard]] QRect textRect(const ShownRow& shown, int column) const;

    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] int horizontalOffset() const override { return 0; }
    [[nodiscard]] int verticalOffset() const override { return 0; }
    [[nodiscard]] bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    /// Rows come only at the end, and beneath what is in view.
    void rowsInserted(const QModelIndex& parent, int first, int last) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    [[nodiscard]] CellKind cellKind(int column) const;
    [[nodiscard]] int measureRow(int row) const;
    void arrangeFor(int width);
    [[nodiscard]] int widestCell(int column, const std::vector<std::int32_t>& rows) const;
    void followDataSet();
    void reportFocus();
    [[nodiscard]] int rowNear(int y) const;
    [[nodiscard]] QModelIndex cellBeside(int step) const;
    bool scrollWithinTallRow(CursorAction action);
    void toggleCurrentRow();
    bool handleCommandKey(const QKeyEvent& event);
    void leaveHiddenColumn();
    void moveFocusTo(int column);
    void openCellMenuByKey();
    [[nodiscard]] QMenu& makeMenu(const QString& name);
    [[nodiscard]] QMenu& makeCellMenu(const QModelIndex& cell);
    void openColumnMenu(int column, const QPoint& place);
    void fillColumnMenu(QMenu& menu, int column);
    void addHiddenColumns(QMenu& menu);
    void dragTo(int y);

    FittedHeader* header_ = nullptr;
    QWidget* footer_ = nullptr;
    db::DataSet* dataSet_ = nullptr;
    RowLayout layout_;
    int focusColumn_ = -1;
    QPersistentModelIndex anchor_; ///< where a selection of several rows began
    std::optional<std::pair<QPersistentModelIndex, ScrollHint>> scrollOnShow_;
    QBasicTimer dragScroll_;
    int wheelRest_ = 0;     ///< eighths of a degree, times lines, that did not make a row yet
    bool dragging_ = false; ///< a press on a row goes on to others
    bool replacingRows_ = false;
    bool movingTogether_ = false; ///< the view follows the dataset, or leads it
    bool arranging_ = false;
    bool isStale_ = false; ///< to be arranged when the view is shown
};

} // namespace grid
